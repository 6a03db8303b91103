#include "forms/ui/QtDialogs.h"

#include "platform/print/ReportCanvas.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace velmorak {

QtDialogs::QtDialogs(QWidget* parent, QPrinter* printer) : parent_(parent), printer_(printer) {}

// The window the user is working in asked: the dialog stays over it and raises no other.
QWidget* QtDialogs::owner() const {
    if (QWidget* modal = QApplication::activeModalWidget(); modal && modal->isVisible())
        return modal;
    if (QWidget* active = QApplication::activeWindow(); active && active->isVisible())
        return active;
    return parent_;
}

QtDialogs::~QtDialogs() = default;

QString QtDialogs::defaultTitle() {
    QString name = QGuiApplication::applicationDisplayName();
    // Unset, the display name falls back to the executable name.
    if (name.isEmpty() || name == QCoreApplication::applicationName())
        return QStringLiteral("Velmorak");
    return name;
}

MsgResult QtDialogs::messageBox(const QString& text, MsgButtons buttons, const QString& title,
                                MsgIcon icon) {
    static const QMessageBox::Icon icons[] = {QMessageBox::NoIcon, QMessageBox::Information,
                                              QMessageBox::Question, QMessageBox::Warning,
                                              QMessageBox::Critical};
    QMessageBox::StandardButtons std;
    QMessageBox::StandardButton escape = QMessageBox::NoButton;
    switch (buttons) {
    case MsgButtons::OK:
        std = QMessageBox::Ok;
        escape = QMessageBox::Ok;
        break;
    case MsgButtons::OKCancel:
        std = QMessageBox::Ok | QMessageBox::Cancel;
        escape = QMessageBox::Cancel;
        break;
    case MsgButtons::YesNo:
        std = QMessageBox::Yes | QMessageBox::No;
        escape = QMessageBox::No;
        break;
    case MsgButtons::YesNoCancel:
        std = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        escape = QMessageBox::Cancel;
        break;
    }
    QMessageBox box(icons[int(icon)], titleOr(title), text, std, owner());
    box.setEscapeButton(escape);
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    case QMessageBox::Ok:
        return MsgResult::OK;
    default:
        return buttons == MsgButtons::YesNo ? MsgResult::No
               : buttons == MsgButtons::OK  ? MsgResult::OK
                                            : MsgResult::Cancel;
    }
}

std::optional<QString> QtDialogs::inputBox(const QString& prompt, const QString& title,
                                           const QString& defaultText) {
    bool ok = false;
    QString t =
        QInputDialog::getText(owner(), titleOr(title), prompt, QLineEdit::Normal, defaultText, &ok);
    if (!ok) return std::nullopt;
    return t;
}

std::optional<QString> QtDialogs::openFileName(const QString& title, const QString& filter) {
    QString f = QFileDialog::getOpenFileName(owner(), titleOr(title), QString(), filter);
    if (f.isEmpty()) return std::nullopt;
    return f;
}

std::optional<QString> QtDialogs::saveFileName(const QString& title, const QString& filter,
                                               const QString& suggested) {
    QString f = QFileDialog::getSaveFileName(owner(), titleOr(title), suggested, filter);
    if (f.isEmpty()) return std::nullopt;
    return f;
}

QPrinter* QtDialogs::printer() {
    if (printer_) return printer_;
    if (!ownPrinter_) ownPrinter_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return ownPrinter_.get();
}

bool QtDialogs::printerDialog() {
    QPrintDialog dlg(printer(), owner());
    return dlg.exec() == QDialog::Accepted;
}

} // namespace velmorak

namespace velmorak {

ReportPrinter* QtDialogs::reportPrinter() {
    if (!canvas_) canvas_ = std::make_unique<ReportCanvas>(*printer());
    return canvas_.get();
}

int QtDialogs::printerCount() {
    return int(QPrinterInfo::availablePrinters().size()) + 1;
}

} // namespace velmorak
