#pragma once

#include "platform/Freeze.h"

#include <QString>

#include <functional>
#include <utility>

namespace velmorak {

// Counts the window handlers on the stack of the one UI thread. Unloaded windows are freed only
// when none is, so a handler whose window was unloaded under it goes on safely.
class HandlerScope {
  public:
    HandlerScope() { ++depth_; }
    ~HandlerScope() { --depth_; }
    HandlerScope(const HandlerScope&) = delete;
    HandlerScope& operator=(const HandlerScope&) = delete;
    static int depth() { return depth_; }

  private:
    static inline thread_local int depth_ = 0;
};

// Where the event loop calls into window logic. An error thrown by the handler stops here: it
// is printed and handed to the reporter after the event, and the program goes on.
void atBoundary(const std::function<void()>& handler);
// What is shown of such an error (a message box in the tool); nothing set: printed only.
void setBoundaryReporter(std::function<void(const QString&)> reporter);
// Reports an error caught elsewhere (the application's last resort) the same way.
void reportHandlerError(const QString& what);

// Wraps a slot so that it runs at the boundary; it takes the same arguments as the slot.
// Reached during a card pause, it runs after the pause with copies of its arguments.
template <class F> struct Guarded {
    F fn;
    template <class... A> auto operator()(A&&... a) -> decltype(fn(std::forward<A>(a)...), void()) {
        if (Freeze::active()) {
            Freeze::run([f = fn, ... args = std::decay_t<A>(a)]() mutable {
                atBoundary([&] { f(args...); });
            });
            return;
        }
        atBoundary([&] { fn(std::forward<A>(a)...); });
    }
};
template <class F> Guarded<std::decay_t<F>> guarded(F&& fn) {
    return {std::forward<F>(fn)};
}

} // namespace velmorak
