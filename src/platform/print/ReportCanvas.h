#pragma once

#include "platform/ReportPrinter.h"

#include <QFont>

#include <memory>

class QPainter;
class QPrinter;

namespace velmorak {

// A report printer over a QPrinter: twips map onto the printable area of the page at the
// printer's resolution, lines are one line of the report font apart, and a line that would run
// below the page starts a new one. The painter begins with the first thing printed.
class ReportCanvas : public ReportPrinter {
  public:
    explicit ReportCanvas(QPrinter& printer);
    ~ReportCanvas() override;
    ReportCanvas(const ReportCanvas&) = delete;
    ReportCanvas& operator=(const ReportCanvas&) = delete;

    // The font of the text; 8 point sans by default (the tables need 46 lines a page).
    void setFont(const QFont& f) { font_ = f; }

    void setOrientation(Orientation o) override;
    int currentX() const override { return x_; }
    void setCurrentX(int twips) override { x_ = twips; }
    void print(const QString& text, bool lineEnd) override;
    void tab(int column) override;
    int page() const override { return page_; }
    void newPage() override;
    void endDoc() override;
    void killDoc() override;

  private:
    void begin();
    void lineFeed();
    double toDevice(int twips) const;
    int toTwips(double device) const;
    QPrinter& printer_;
    std::unique_ptr<QPainter> painter_;
    QFont font_;
    int x_ = 0;
    int y_ = 0;
    int page_ = 1;
    int lineHeight_ = 0; // twips
    int columnWidth_ = 0;
};

} // namespace velmorak
