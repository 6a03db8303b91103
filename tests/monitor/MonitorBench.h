#pragma once

#include "SessionBench.h"

#include "monitor/FrmReadEEMon.h"

#include <utility>
#include <vector>

namespace velmorak::test {

// A session on the virtual card with a stand-in for the shared progress window, which records
// what its bar is set to, and helpers for the monitor frames.
class MonitorBench : public SessionBench {
  public:
    explicit MonitorBench(const SimLink::Card& card = {});

    // Bar settings as "max:value", in order; and whether a progress window is open now.
    std::vector<QString> progress;
    bool waitOpen() const;

    // Connects at start and opens Monitor Info from the main menu.
    FrmReadEEMon& open();
    FrmReadEEMon* window() const;

    // Frames to the card beginning with `keyword`, with the virtual time each was sent.
    std::vector<std::pair<qint64, QByteArray>> frames(const QByteArray& keyword) const;
    // The offsets (byte 4) of the monitor reads sent.
    std::vector<int> readOffsets() const;
};

} // namespace velmorak::test
