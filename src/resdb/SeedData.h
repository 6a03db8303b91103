#pragma once

#include "resdb/Schema.h"
#include "timing/VideoTiming.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace velmorak {

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
