#include "platform/print/ReportCanvas.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPrinter>

#include <cmath>

namespace velmorak {

namespace {
constexpr double kTwipsPerInch = 1440.0;
}

ReportCanvas::ReportCanvas(QPrinter& printer)
    : printer_(printer), font_(QStringLiteral("DejaVu Sans"), 8) {
    font_.setStyleHint(QFont::SansSerif);
}

ReportCanvas::~ReportCanvas() {
    if (painter_ && painter_->isActive()) painter_->end();
}

void ReportCanvas::setOrientation(Orientation o) {
    printer_.setPageOrientation(o == Orientation::Landscape ? QPageLayout::Landscape
                                                            : QPageLayout::Portrait);
}

double ReportCanvas::toDevice(int twips) const {
    return twips * printer_.resolution() / kTwipsPerInch;
}

int ReportCanvas::toTwips(double device) const {
    return int(std::lround(device * kTwipsPerInch / printer_.resolution()));
}

void ReportCanvas::begin() {
    if (painter_) return;
    auto p = std::make_unique<QPainter>();
    if (!p->begin(&printer_))
        throw PrinterError(482, QStringLiteral("The printer cannot start the document."));
    p->setFont(font_);
    const QFontMetricsF m(font_, &printer_);
    lineHeight_ = toTwips(m.lineSpacing());
    columnWidth_ = toTwips(m.averageCharWidth());
    painter_ = std::move(p);
    x_ = 0;
    y_ = 0;
}

void ReportCanvas::lineFeed() {
    x_ = 0;
    y_ += lineHeight_;
    // A line that would not fit goes on the next page, as a printer feeds on.
    const int pageHeight =
        toTwips(printer_.pageLayout().paintRectPixels(printer_.resolution()).height());
    if (y_ + lineHeight_ > pageHeight) newPage();
}

void ReportCanvas::print(const QString& text, bool lineEnd) {
    begin();
    if (!text.isEmpty()) {
        const QFontMetricsF m(font_, &printer_);
        painter_->drawText(QPointF(toDevice(x_), toDevice(y_) + m.ascent()), text);
        x_ += toTwips(m.horizontalAdvance(text));
    }
    if (lineEnd) lineFeed();
}

void ReportCanvas::tab(int column) {
    begin();
    const int at = (column - 1) * columnWidth_;
    if (x_ > at) lineFeed();
    x_ = at;
}

void ReportCanvas::newPage() {
    begin();
    if (!printer_.newPage())
        throw PrinterError(482, QStringLiteral("The printer cannot start a new page."));
    ++page_;
    x_ = 0;
    y_ = 0;
}

void ReportCanvas::endDoc() {
    if (painter_) {
        const bool ok = painter_->end();
        painter_.reset();
        if (!ok) throw PrinterError(482, QStringLiteral("The printer did not take the document."));
    }
    page_ = 1;
    x_ = 0;
    y_ = 0;
}

void ReportCanvas::killDoc() {
    if (painter_) {
        printer_.abort();
        if (painter_->isActive()) painter_->end();
        painter_.reset();
    }
    page_ = 1;
    x_ = 0;
    y_ = 0;
}

} // namespace velmorak
