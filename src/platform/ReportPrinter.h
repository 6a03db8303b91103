#pragma once

#include <QString>

#include <stdexcept>

namespace velmorak {

// A printer error with its number: 482 when the printer cannot take the document.
class PrinterError : public std::runtime_error {
  public:
    PrinterError(int number, const QString& message)
        : std::runtime_error(message.toStdString()), number_(number) {}
    int number() const { return number_; }

  private:
    int number_;
};

// A page printer addressed as the reports address it: the position across the line in twips
// (1440 to the inch) from the left of the printable area, text printed line by line.
class ReportPrinter {
  public:
    enum class Orientation { Portrait = 1, Landscape = 2 };
    virtual ~ReportPrinter() = default;

    virtual void setOrientation(Orientation o) = 0;
    virtual int currentX() const = 0;
    virtual void setCurrentX(int twips) = 0;
    // Prints text at the current position; lineEnd then starts the next line at the left.
    virtual void print(const QString& text, bool lineEnd) = 0;
    // Moves to print column n (from 1, columns one average character wide); when the line is
    // already past it, to that column of the next line.
    virtual void tab(int column) = 0;
    // The page being printed, from 1.
    virtual int page() const = 0;
    virtual void newPage() = 0;
    // Ends the document and sends it; nothing is sent when nothing was printed.
    virtual void endDoc() = 0;
    // Drops the document begun, sending nothing.
    virtual void killDoc() = 0;
};

} // namespace velmorak
