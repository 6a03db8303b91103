#include "timing/VideoTiming.h"

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace velmorak {

namespace {

const VesaTiming kVesa[] = {
#include "data/vesa_timings.inc"
};

int clampCount(double v) {
    const double r = std::nearbyint(v);
    return static_cast<int>(std::clamp(r, 0.0, 65535.0));
}

} // namespace

std::optional<VesaTiming> findVesaTiming(const VideoMode& m) {
    for (const VesaTiming& t : kVesa)
        if (t.width == m.width && t.height == m.height && t.rate == m.rate) return t;
    return std::nullopt;
}

LineTiming lineTiming(const VideoMode& m) {
    LineTiming lt;
    if (const auto t = findVesaTiming(m)) {
        lt.hTotal = t->hTotal();
        lt.vTotal = t->vTotal();
        lt.pixelClockHz = t->pixelClockKHz * 1000.0;
        lt.hPositive = t->hPositive != 0;
        lt.vPositive = t->vPositive != 0;
        lt.fromTable = true;
        return lt;
    }
    lt.hTotal = static_cast<int>(std::lround(m.width * 1.32));
    lt.vTotal = static_cast<int>(std::lround(m.height * 1.045));
    lt.pixelClockHz = double(lt.hTotal) * lt.vTotal * m.rate;
    return lt;
}

SyncCounts measure(const VideoMode& m, int firmwareMajor) {
    if (m.width <= 0 || m.height <= 0 || m.rate <= 0) return {};
    const LineTiming lt = lineTiming(m);
    const double vf = lt.frameRate();
    const double hf = lt.lineRate();
    if (firmwareMajor == 1) return {clampCount(3125000.0 / vf), clampCount(1.6e9 / hf)};
    return {clampCount(195312.0 / vf), clampCount(2.0 * lt.vTotal)};
}

std::optional<VideoMode> parseVideoMode(const QString& text) {
    const QStringList p = text.trimmed().toLower().split('x');
    if (p.size() != 3) return std::nullopt;
    VideoMode m;
    bool ok[3];
    m.width = p[0].toInt(&ok[0]);
    m.height = p[1].toInt(&ok[1]);
    m.rate = p[2].toInt(&ok[2]);
    if (!ok[0] || !ok[1] || !ok[2] || m.width <= 0 || m.height <= 0 || m.rate <= 0)
        return std::nullopt;
    return m;
}

QString videoModeName(const VideoMode& m) {
    return QStringLiteral("%1x%2x%3").arg(m.width).arg(m.height).arg(m.rate);
}

} // namespace velmorak
