#pragma once

#include "resdb/Schema.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmorak {

// One row of data/vesa_timings.inc.
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
std::optional<VesaTiming> FindVesaTiming(int width, int height, int rate);

// The card's sync counters for a timing (the measurement model of its firmware):
// major 2 and later: SyncV = round(195312 / Vf), SyncH = 2 * vTotal;
// major 1: SyncV = round(3125000 / Vf), SyncH = round(1.6e9 / Hf).
struct SyncCounts {
    int syncV = 0;
    int syncH = 0;
};
SyncCounts MeasureSyncCounts(const VesaTiming& t, int firmwareMajor);
// A 24-byte parameter block carrying those counts (big-endian at 15-16 and 17-18) and the major.
QByteArray ParamBlockWithCounts(const SyncCounts& c, int firmwareMajor);

// The readable seed source (data/resolutions.txt).
struct SeedMode {
    QString name;
    QString description;
    int width = 0, height = 0, rate = 0;
};
struct SeedSource {
    std::vector<std::pair<int, int>> vValues; // tblVValues rows: Val_V, Border
    std::vector<int> hBorders;                // tblHValues rows
    std::vector<SeedMode> modes;
};
// Throws std::runtime_error naming the line of a malformed entry.
SeedSource ParseSeedSource(const QString& text);
SeedSource ReadSeedSource(const QString& path);

// The full register image of a resolution, computed from its timing.
RezRow ComputeRezRow(const VesaTiming& t, const QString& name, const QString& description);

// Problems that would keep a mode from being named or placed; empty when the source is sound.
QStringList ValidateSeed(const SeedSource& src);
// Validates, then writes the database to path (through a temporary file, replaced at the end).
// Throws std::runtime_error listing the problems.
void BuildSeedDatabase(const SeedSource& src, const QString& path);

} // namespace velmorak
