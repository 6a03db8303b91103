#pragma once

#include "forms/Boundary.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace velmorak {

// A handle to one handler of an Event; disconnecting after the event is gone is harmless.
class Connection {
  public:
    Connection() = default;
    explicit Connection(std::function<void()> disconnect) : disconnect_(std::move(disconnect)) {}
    void disconnect() {
        if (disconnect_) disconnect_();
        disconnect_ = nullptr;
    }

  private:
    std::function<void()> disconnect_;
};

// Disconnects when it goes out of scope.
class ScopedConnection {
  public:
    ScopedConnection() = default;
    ScopedConnection(Connection c) : c_(std::move(c)) {}
    ScopedConnection(ScopedConnection&& o) noexcept : c_(std::exchange(o.c_, Connection())) {}
    ScopedConnection& operator=(ScopedConnection&& o) noexcept {
        if (this != &o) {
            c_.disconnect();
            c_ = std::exchange(o.c_, Connection());
        }
        return *this;
    }
    ScopedConnection(const ScopedConnection&) = delete;
    ScopedConnection& operator=(const ScopedConnection&) = delete;
    ~ScopedConnection() { c_.disconnect(); }

  private:
    Connection c_;
};

// A synchronous event: handlers run in connection order, inside the call that fires it, and
// count as handlers on the stack (HandlerScope).
// Handlers may connect or disconnect handlers while it fires.
template <class... Args> class Event {
  public:
    using Handler = std::function<void(Args...)>;

    Event() = default;
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;

    Connection connect(Handler fn) {
        int id = ++slots_->next;
        slots_->list.push_back({id, std::move(fn)});
        std::weak_ptr<Slots> weak = slots_;
        return Connection([weak, id] {
            if (auto s = weak.lock())
                std::erase_if(s->list, [id](const Slot& x) { return x.id == id; });
        });
    }
    Connection operator+=(Handler fn) { return connect(std::move(fn)); }

    void operator()(Args... args) const {
        const HandlerScope running;
        auto keep = slots_;
        auto snapshot = keep->list;
        for (const auto& slot : snapshot) {
            bool live = std::any_of(keep->list.begin(), keep->list.end(),
                                    [&](const Slot& x) { return x.id == slot.id; });
            if (live) slot.fn(args...);
        }
    }

    bool empty() const { return slots_->list.empty(); }
    int handlerCount() const { return int(slots_->list.size()); }

  private:
    struct Slot {
        int id;
        Handler fn;
    };
    struct Slots {
        int next = 0;
        std::vector<Slot> list;
    };
    std::shared_ptr<Slots> slots_ = std::make_shared<Slots>();
};

} // namespace velmorak
