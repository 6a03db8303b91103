#pragma once

#include <QPointer>

#include <functional>

class QEvent;
class QObject;

namespace velmorak {

// A pause of the card protocol. The windows go on painting (expose, resize, updates posted
// before the pause) while nothing of the program runs: user input stays queued in the window
// system, timer ticks are held, and handlers reached in the meantime wait. When the pause
// ends, what waited is posted to the event queue in arrival order and runs at the next event
// round (the end of the handler, or a pump), as a frozen window's message queue would.
class Freeze {
  public:
    Freeze();
    ~Freeze();
    Freeze(const Freeze&) = delete;
    Freeze& operator=(const Freeze&) = delete;

    static bool active();
    // Runs fn now, or after the pause while one lasts. With a context, only if it still lives.
    static void run(std::function<void()> fn, QObject* context = nullptr);
    // Holds an event for `receiver` until the pause ends, then posts it (takes ownership).
    static void repost(QObject* receiver, QEvent* event);
    // Pumps the event loop for `ms` milliseconds of wall time under a Freeze.
    static void pumpFor(int ms);
};

} // namespace velmorak
