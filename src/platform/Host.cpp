#include "platform/Host.h"
#include "platform/Freeze.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>

#include <algorithm>

namespace velmorak {

namespace {
qint64 monotonicMs() {
    static QElapsedTimer clock = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return clock.elapsed();
}
} // namespace

RealHost::RealHost() : start_(monotonicMs()) {}

qint64 RealHost::now() const {
    return monotonicMs() - start_;
}

void RealHost::sleep(int ms) {
    if (ms > 0) Freeze::pumpFor(ms);
}

void RealHost::pump() {
    if (QCoreApplication::instance()) QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void VirtualHost::sleep(int ms) {
    if (ms < 0) ms = 0;
    slept_ += ms;
    advanceTo(now_ + ms);
}

void VirtualHost::pump() {
    ++pumps_;
    advanceTo(now_ + 1);
    for (std::size_t i = 0; i < pumpHooks_.size(); ++i)
        pumpHooks_[i]();
}

void VirtualHost::schedule(qint64 at, std::function<void()> fn) {
    jobs_.push_back({at, std::move(fn)});
}

void VirtualHost::advanceTo(qint64 t) {
    // Run due jobs in time order; a job may schedule more.
    for (;;) {
        auto due = std::min_element(jobs_.begin(), jobs_.end(),
                                    [](const Job& a, const Job& b) { return a.at < b.at; });
        if (due == jobs_.end() || due->at > t) break;
        now_ = std::max(now_, due->at);
        auto fn = std::move(due->fn);
        jobs_.erase(due);
        fn();
    }
    now_ = std::max(now_, t);
}

} // namespace velmorak
