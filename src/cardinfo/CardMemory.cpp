#include "cardinfo/CardMemory.h"

#include "link/ValueHelpers.h"

#include <cmath>

namespace velmorak::CardMemory {

Counters decodeCounters(const QByteArray& block) {
    const double v = Val(BytesToLong(block.mid(4, 1)));
    return {BytesToLong(block.mid(1, 3)), QString::number(qint64(std::floor((v - 42) * 0.6))),
            BytesToLong(block.mid(5, 2))};
}

QString text(const QByteArray& bytes) {
    return QString::fromLatin1(bytes);
}

QByteArray bytes(const QString& text) {
    return text.toLatin1();
}

QString padded(const QString& s, int n) {
    return s.size() >= n ? s : s + QString(n - s.size(), QLatin1Char(' '));
}

QString trimmed(const QString& s) {
    qsizetype a = 0, b = s.size();
    while (a < b && s[a] == QLatin1Char(' '))
        ++a;
    while (b > a && s[b - 1] == QLatin1Char(' '))
        --b;
    return s.mid(a, b - a);
}

bool foreign(QChar c) {
    return c.unicode() < 30 || c.unicode() > 127;
}

QByteArray clearedCounters() {
    QByteArray b(32, '\0');
    b[1] = 1;
    b[4] = 42;
    return b;
}

} // namespace velmorak::CardMemory
