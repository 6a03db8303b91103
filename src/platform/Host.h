#pragma once

#include <QtGlobal>

#include <functional>
#include <vector>

namespace velmorak {

// Clock, sleep and event pump of the one UI thread. Every pause the card needs goes through
// sleep(), so a virtual clock can replay the whole timeline of an exchange in microseconds.
class Host {
  public:
    virtual ~Host() = default;
    // Milliseconds since the host started.
    virtual qint64 now() const = 0;
    // Blocks the program for ms: nothing of it runs and input waits, as with a plain Sleep,
    // while the windows still paint.
    virtual void sleep(int ms) = 0;
    // One round of the event queue (DoEvents).
    virtual void pump() = 0;
};

// Wall clock and the Qt event loop.
class RealHost : public Host {
  public:
    RealHost();
    qint64 now() const override;
    void sleep(int ms) override;
    void pump() override;

  private:
    qint64 start_;
};

// Virtual milliseconds for tests. sleep() advances the clock; pump() advances it by one
// millisecond and runs whatever was scheduled up to then, so a wait loop always progresses.
class VirtualHost : public Host {
  public:
    qint64 now() const override { return now_; }
    void sleep(int ms) override;
    void pump() override;

    // Runs fn at virtual time `at` (during the sleep or pump that reaches it).
    void schedule(qint64 at, std::function<void()> fn);
    // Called on every pump, after scheduled work (stands in for user events in tests).
    void onPump(std::function<void()> fn) { pumpHooks_.push_back(std::move(fn)); }
    int pumpCount() const { return pumps_; }
    qint64 sleptMs() const { return slept_; }

  private:
    void advanceTo(qint64 t);
    struct Job {
        qint64 at;
        std::function<void()> fn;
    };
    qint64 now_ = 0;
    qint64 slept_ = 0;
    int pumps_ = 0;
    std::vector<Job> jobs_;
    std::vector<std::function<void()>> pumpHooks_;
};

} // namespace velmorak
