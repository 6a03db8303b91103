#include "forms/ui/GuardedApplication.h"

#include "forms/Boundary.h"

#include <exception>

namespace velmorak {

void GuardedApplication::setReporter(Reporter r) {
    setBoundaryReporter(std::move(r));
}

// The last resort: handlers catch at their own boundary, before Qt's frames.
bool GuardedApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& e) {
        reportHandlerError(QString::fromLocal8Bit(e.what()));
    } catch (...) {
        reportHandlerError(QStringLiteral("an unknown error"));
    }
    return false;
}

} // namespace velmorak
