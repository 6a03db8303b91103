#include "link/ParamBlock.h"

namespace velmorak {

namespace ParamBlock {

int at(const QByteArray& block, int pos) {
    if (pos < 1 || pos > block.size()) return -1;
    return static_cast<unsigned char>(block.at(pos - 1));
}

static int byteOr0(const QByteArray& block, int pos) {
    return qMax(0, at(block, pos));
}

qint16 cardWord(const QByteArray& block) {
    const int hi = byteOr0(block, 21);
    if (hi >= 128) throw OverflowError();
    return static_cast<qint16>(hi * 256 + byteOr0(block, 22));
}

bool isRgb(const QByteArray& block) {
    return (byteOr0(block, 9) & 0x80) != 0;
}
bool isShv(const QByteArray& block) {
    return (byteOr0(block, 9) & 0x40) != 0;
}
int fibres(const QByteArray& block) {
    return (byteOr0(block, 9) & 0x04) ? 1 : 2;
}
int syncV(const QByteArray& block) {
    return byteOr0(block, 15) * 256 + byteOr0(block, 16);
}
int syncH(const QByteArray& block) {
    return byteOr0(block, 17) * 256 + byteOr0(block, 18);
}
int firmwareMajor(const QByteArray& block) {
    return byteOr0(block, 23);
}

QString firmwareText(const QByteArray& block) {
    return Str(byteOr0(block, 23)) + "." + QString::number(byteOr0(block, 24));
}

} // namespace ParamBlock

QString Str(qint64 n) {
    return (n >= 0 ? QStringLiteral(" ") : QString()) + QString::number(n);
}

QString StrDbl(double v) {
    QString t = QString::number(v, 'g', 15).toUpper();
    if (t.startsWith(QLatin1String("0.")))
        t.remove(0, 1);
    else if (t.startsWith(QLatin1String("-0.")))
        t.remove(1, 1);
    return v >= 0 ? QStringLiteral(" ") + t : t;
}

OsVersion GetVersionInfo() {
    // Later systems than those the version table names count as "Windows NT".
    return {QStringLiteral("Windows NT"), QString()};
}

} // namespace velmorak
