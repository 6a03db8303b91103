#include "cardinfo/CapturePrint.h"

#include "forms/Control.h"
#include "forms/Dialogs.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace velmorak {

namespace {
WindowPrinter& printerHook() {
    static WindowPrinter hook;
    return hook;
}
} // namespace

void setWindowPrinter(WindowPrinter printer) {
    printerHook() = std::move(printer);
}

void printWindowCapture(Dialogs& dialogs, Form& form) {
    try {
        if (!dialogs.printerDialog())
            throw RunTimeError(32755, QStringLiteral("Cancel was selected."));
        if (!printerHook()) throw RunTimeError(482, QStringLiteral("Printer error"));
        printerHook()(form);
    } catch (const RunTimeError& e) {
        if (e.number() == 482)
            dialogs.messageBox(QStringLiteral("Printer is unabled"));
        else
            dialogs.messageBox(QStringLiteral("Error number %1 occurred %2")
                                   .arg(e.number())
                                   .arg(QString::fromStdString(e.what())));
    }
}

QString cardPicture(const QString& appPath, const QString& name) {
    const QString file = name + QStringLiteral(".svg");
    const QString beside = appPath + QLatin1Char('/') + file;
    if (QFileInfo::exists(beside) || !QCoreApplication::instance()) return beside;
    const QString installed =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/velmorak/") + file;
    return QFileInfo::exists(installed) ? QFileInfo(installed).absoluteFilePath() : beside;
}

} // namespace velmorak
