#include "cardinfo/ui/PrintWindow.h"

#include "forms/Control.h"
#include "forms/ui/FormWindow.h"

#include <QDir>
#include <QPainter>
#include <QPixmap>
#include <QPrinter>
#include <QStandardPaths>

namespace velmorak {

void printWindowImage(QPrinter& printer, QWidget* window) {
    if (!window) throw RunTimeError(482, QStringLiteral("Printer error"));
    const QPixmap shot = window->grab();
    if (printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty()) {
        QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
        if (folder.isEmpty() || !QDir(folder).exists()) folder = QDir::homePath();
        printer.setOutputFileName(folder + QLatin1Char('/') + window->windowTitle() +
                                  QStringLiteral(".pdf"));
    }
    QPainter p;
    if (!p.begin(&printer)) throw RunTimeError(482, QStringLiteral("Printer error"));
    // The window's size on paper: its pixels at the screen's resolution.
    const double scale = double(printer.logicalDpiX()) / window->logicalDpiX();
    double w = window->width() * scale;
    double h = window->height() * scale;
    const double pageWidth = printer.width();
    if (pageWidth < w) {
        h = h * pageWidth / w;
        w = pageWidth;
    }
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawPixmap(QRectF(0, 0, w, h), shot, QRectF(shot.rect()));
    p.end();
}

std::function<void(Form&)> formWindowPrinter(std::function<QPrinter*()> printer) {
    return [printer](Form& form) {
        auto* view = dynamic_cast<FormWindow*>(form.view());
        QPrinter* target = printer();
        if (!view || !target) throw RunTimeError(482, QStringLiteral("Printer error"));
        printWindowImage(*target, view->window());
    };
}

} // namespace velmorak
