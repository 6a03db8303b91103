#include "cardinfo/StatusRules.h"

namespace velmorak::StatusRules {

quint32 diagnosticsColour(int status10) {
    const int v = status10 & 48;
    if (v == 48) return kGrey;
    if (v == 32) return kGreen;
    return kRedDiagnostics;
}

quint32 errorColour(int status10, int lowBit) {
    const bool high = status10 & (2 << lowBit);
    const bool low = status10 & (1 << lowBit);
    if (high && !low) return kGreen;
    if (low && !high) return kRedError;
    return kGrey;
}

quint32 activeLowColour(int status11, int bit) {
    return (status11 & (1 << bit)) ? kGrey : kGreen;
}

QString gridNumber(double v) {
    // Fifteen significant digits, as a double turns into text in the grid.
    QString t = QString::number(v, 'g', 15);
    if (t == QLatin1String("-0")) t = QStringLiteral("0");
    return t.left(5);
}

QString temperatureText(int rawTemp) {
    const double d = rawTemp - 42;
    return gridNumber(d * 0.04 + d);
}

QString voltageText(int raw, int divisor) {
    return gridNumber(double(raw) / divisor);
}

QString FirmwareVer(qint16 major, qint16 minor) {
    const QString head =
        major >= 48 ? QString(QChar(ushort(major & 0xFF))) : QString::number(major);
    return head + QLatin1Char('.') + QStringLiteral("%1").arg(minor, 2, 10, QLatin1Char('0'));
}

bool switchState(int k, int status9, int status10) {
    if (k < 8) return status9 & (1 << (7 - k));
    return status10 & (1 << (15 - k));
}

} // namespace velmorak::StatusRules
