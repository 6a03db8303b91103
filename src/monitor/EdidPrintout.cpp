#include "monitor/EdidPrintout.h"

namespace velmorak {

QString hex2(int v) {
    return QStringLiteral("%1").arg(v, 2, 16, QLatin1Char('0')).toUpper();
}

std::vector<PrintText> rawEdidPrintout(const QByteArray& edid) {
    std::vector<PrintText> out;
    out.push_back({1, 0, QStringLiteral("    Raw EDID   "), true});
    constexpr int kHeader = 3;
    out.push_back({kHeader, 0, QStringLiteral("00") + QStringLiteral(":") + QStringLiteral("   ")});
    for (int c = 1; c <= 16; ++c)
        out.push_back({kHeader, c * kPrintColumnTwips, hex2(c - 1)});
    for (int row = 0; row * 16 < edid.size(); ++row) {
        const int line = kHeader + 1 + row;
        out.push_back({line, 0, hex2(row * 16) + QStringLiteral(":")});
        for (int c = 1; c <= 16 && row * 16 + c <= edid.size(); ++c)
            out.push_back({line, c * kPrintColumnTwips,
                           hex2(quint8(edid[row * 16 + c - 1])) + QStringLiteral("  ")});
    }
    return out;
}

} // namespace velmorak
