#include "platform/Freeze.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QThread>

#include <algorithm>
#include <deque>
#include <memory>
#include <set>
#include <utility>

namespace velmorak {

namespace {

// Longest stretch the thread sleeps between two rounds of painting.
constexpr int kSliceMs = 5;

thread_local int depth = 0;

struct Waiting {
    std::deque<std::function<void()>> work;
    std::set<std::pair<QObject*, int>> owedTimers;
    bool flushPosted = false;
};

Waiting& waiting() {
    static thread_local Waiting w;
    return w;
}

void flush();

void postFlush() {
    Waiting& w = waiting();
    QCoreApplication* app = QCoreApplication::instance();
    if (w.flushPosted || w.work.empty() || !app) return;
    w.flushPosted = true;
    QMetaObject::invokeMethod(app, &flush, Qt::QueuedConnection);
}

// Runs what waited, in order, unless another pause has begun meanwhile.
void flush() {
    Waiting& w = waiting();
    w.flushPosted = false;
    while (!Freeze::active() && !w.work.empty()) {
        auto fn = std::move(w.work.front());
        w.work.pop_front();
        fn();
    }
}

// Holds timer ticks while a pause lasts; a window's own update timer still runs, since it is
// what paints. A held timer fires once when the pause ends, as an overdue timer does.
class TickKeeper : public QObject {
  public:
    bool eventFilter(QObject* receiver, QEvent* event) override {
        if (event->type() != QEvent::Timer || receiver->inherits("QWindow")) return false;
        const int id = static_cast<QTimerEvent*>(event)->timerId();
        if (waiting().owedTimers.insert({receiver, id}).second) {
            QPointer<QObject> alive(receiver);
            waiting().work.push_back([alive, receiver, id] {
                waiting().owedTimers.erase({receiver, id});
                QTimerEvent tick(id);
                if (alive) QCoreApplication::sendEvent(alive, &tick);
            });
        }
        return true;
    }
};

QPointer<TickKeeper>& keeper() {
    static QPointer<TickKeeper> k;
    return k;
}

} // namespace

Freeze::Freeze() {
    if (depth++ > 0) return;
    QCoreApplication* app = QCoreApplication::instance();
    if (!app) return;
    if (!keeper()) keeper() = new TickKeeper;
    keeper()->setParent(app);
    app->installEventFilter(keeper());
}

Freeze::~Freeze() {
    if (--depth > 0) return;
    if (QCoreApplication* app = QCoreApplication::instance(); app && keeper())
        app->removeEventFilter(keeper());
    postFlush();
}

bool Freeze::active() {
    return depth > 0;
}

void Freeze::run(std::function<void()> fn, QObject* context) {
    if (!active()) {
        fn();
        return;
    }
    if (context) {
        // A context that dies before the pause ends takes its work with it.
        QPointer<QObject> alive(context);
        waiting().work.push_back([alive, fn = std::move(fn)] {
            if (alive) fn();
        });
    } else {
        waiting().work.push_back(std::move(fn));
    }
}

void Freeze::repost(QObject* receiver, QEvent* event) {
    std::shared_ptr<QEvent> held(event);
    QPointer<QObject> alive(receiver);
    run([alive, held] {
        if (alive) QCoreApplication::postEvent(alive, held->clone());
    });
}

void Freeze::pumpFor(int ms) {
    Freeze pause;
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        if (QCoreApplication::instance())
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                            QEventLoop::ExcludeSocketNotifiers);
        const qint64 left = ms - clock.elapsed();
        if (left <= 0) break;
        QThread::msleep(static_cast<unsigned long>(std::min<qint64>(left, kSliceMs)));
    }
}

} // namespace velmorak
