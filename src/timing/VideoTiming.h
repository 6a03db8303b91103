#pragma once

#include <QString>

#include <optional>

namespace velmorak {

// A video source as the card sees it: active size and nominal frame rate.
struct VideoMode {
    int width = 0;
    int height = 0;
    int rate = 0;
    bool operator==(const VideoMode&) const = default;
};

// One row of the VESA timing table (data/vesa_timings.inc).
struct VesaTiming {
    int width, height, rate;
    int pixelClockKHz;
    int hFront, hSync, hBack;
    int vFront, vSync, vBack;
    int hPositive, vPositive;
    int hTotal() const { return width + hFront + hSync + hBack; }
    int vTotal() const { return height + vFront + vSync + vBack; }
    double frameRate() const { return pixelClockKHz * 1000.0 / (double(hTotal()) * vTotal()); }
};

// The line timing a mode is sent with.
struct LineTiming {
    int hTotal = 0;
    int vTotal = 0;
    double pixelClockHz = 0;
    bool hPositive = true;
    bool vPositive = true;
    bool fromTable = false; // false: the approximation for modes the table lacks
    double frameRate() const { return pixelClockHz / (double(hTotal) * vTotal); }
    double lineRate() const { return pixelClockHz / hTotal; }
};

// The card's sync counters, as they stand in the parameter block.
struct SyncCounts {
    int syncV = 0;
    int syncH = 0;
    bool operator==(const SyncCounts&) const = default;
};

// The exact row for width, height and rate, if the table has it.
std::optional<VesaTiming> findVesaTiming(const VideoMode& mode);
// The table row, or hTotal = W*1.32, vTotal = H*1.045, clock = hTotal*vTotal*rate.
LineTiming lineTiming(const VideoMode& mode);
// The counters the card's firmware of the given major number reports for the mode:
// major 2 and later: SyncV = round(195312 / Vf), SyncH = 2 * vTotal;
// major 1: SyncV = round(3125000 / Vf), SyncH = round(1.6e9 / Hf).
SyncCounts measure(const VideoMode& mode, int firmwareMajor);

// "1024x768x75"; nullopt for anything else.
std::optional<VideoMode> parseVideoMode(const QString& text);
QString videoModeName(const VideoMode& mode);

} // namespace velmorak
