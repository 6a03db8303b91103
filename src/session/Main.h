#pragma once

#include <QtGlobal>

namespace velmorak {

class Session;

// Start-up and the loop of the tool. The loop is a timer pass (kPollPeriodMs) that does the
// work of one work pass; it stays out of any exchange in progress and out of itself.
class Main {
  public:
    static constexpr int kPollPeriodMs = 50;

    explicit Main(Session& s) : s_(s) {}

    // The start-up steps up to showing the main window. False when the start failed (the
    // resolution database could not be opened); the reason was shown to the user.
    bool start();
    // One timer pass of the loop.
    void pollPass();
    // The loop has ended: ExitRequested is set.
    bool finished() const;
    // After the loop: every window unloaded.
    void end();

    // Averaging memories of the Check Sync step.
    int PrevV = 0;
    int PrevH = 0;

  private:
    void workPass();
    void idleStep();
    void checkSync();
    Session& s_;
    bool inPass_ = false;
};

} // namespace velmorak
