#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>
#include <vector>

namespace velmorak {

// A text of a printed page: its line (from 0), where it starts in twips from the left margin,
// or centred across the page.
struct PrintText {
    int line;
    int x;
    QString text;
    bool centred = false;
};

// A printer failure with its number (482: the printer cannot print) and description.
class PrintFailure : public std::runtime_error {
  public:
    PrintFailure(int number, const QString& description)
        : std::runtime_error(description.toStdString()), number(number) {}
    int number;
};

constexpr int kPrintColumnTwips = 400;

// A byte (or an address) in two upper-case hexadecimal digits.
QString hex2(int v);

// The raw EDID report: the title centred under a blank line, a header of column numbers, then
// one line a 16-byte row: the address, ":", and each byte in two hexadecimal digits at its
// column times 400 twips.
std::vector<PrintText> rawEdidPrintout(const QByteArray& edid);

} // namespace velmorak
