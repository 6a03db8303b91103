#include "forms/Boundary.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <exception>

namespace velmorak {

namespace {
std::function<void(const QString&)>& reporter() {
    static std::function<void(const QString&)> r;
    return r;
}
} // namespace

void setBoundaryReporter(std::function<void(const QString&)> r) {
    reporter() = std::move(r);
}

void reportHandlerError(const QString& what) {
    std::fprintf(stderr, "velmorak: %s\n", qPrintable(what));
    std::fflush(stderr);
    // After the event, so a message box does not open inside another handler.
    if (reporter() && QCoreApplication::instance())
        QTimer::singleShot(0, QCoreApplication::instance(), [what] {
            Freeze::run([what] {
                if (reporter()) reporter()(what);
            });
        });
}

void atBoundary(const std::function<void()>& handler) {
    HandlerScope scope;
    try {
        handler();
    } catch (const std::exception& e) {
        reportHandlerError(QString::fromLocal8Bit(e.what()));
    } catch (...) {
        reportHandlerError(QStringLiteral("an unknown error"));
    }
}

} // namespace velmorak
