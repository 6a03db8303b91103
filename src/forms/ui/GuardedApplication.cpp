#include "forms/ui/GuardedApplication.h"

#include <QTimer>

#include <cstdio>
#include <exception>

namespace velmorak {

bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& e) {
        report(QString::fromLocal8Bit(e.what()));
    } catch (...) {
        report(QStringLiteral("an unknown error"));
    }
    return false;
}

void GuardedApplication::report(const QString& what) {
    std::fprintf(stderr, "velmorak: %s\n", qPrintable(what));
    std::fflush(stderr);
    if (reporter_) QTimer::singleShot(0, this, [this, what] { reporter_(what); });
}

} // namespace velmorak
