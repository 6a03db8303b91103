#include "link/ValueHelpers.h"

#include "link/ParamBlock.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace velmorak {

namespace {

const QRegularExpression& decimalPattern() {
    static const QRegularExpression re(
        QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d+)?$"));
    return re;
}

const QRegularExpression& radixPattern() {
    static const QRegularExpression re(QStringLiteral("^&([hH][0-9a-fA-F]+|[oO]?[0-7]+)$"));
    return re;
}

// Four digits: "000" before one character, "00" before two, "0" before three.
QString fillFour(const QString& element) {
    const int len = static_cast<int>(element.size());
    return (len < 4 ? QString(4 - len, QLatin1Char('0')) : QString()) + element;
}

int digitValue(QChar c) {
    if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) return c.unicode() - '0';
    if (c >= QLatin1Char('a') && c <= QLatin1Char('f')) return c.unicode() - 'a' + 10;
    if (c >= QLatin1Char('A') && c <= QLatin1Char('F')) return c.unicode() - 'A' + 10;
    return -1;
}

double roundHalfEven(double v) {
    return v - std::floor(v) == 0.5 ? 2.0 * std::round(v / 2.0) : std::round(v);
}

template <class T> T toInteger(double v, OnOverflow how) {
    constexpr double lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    // Rounded first: 32767.5 goes to 32768 and overflows, -32768.5 to -32768 and does not.
    const double r = roundHalfEven(v);
    if (r >= lo && r <= hi) return static_cast<T>(r);
    if (how == OnOverflow::Error) throw OverflowError();
    return std::isnan(r) ? T(0)
                         : (r < lo ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max());
}

} // namespace

qint16 ToInt16(double v, OnOverflow how) {
    return toInteger<qint16>(v, how);
}

qint32 ToInt32(double v, OnOverflow how) {
    return toInteger<qint32>(v, how);
}

bool IsNumeric(const QString& s) {
    const QString t = s.trimmed();
    if (t.isEmpty()) return false;
    return decimalPattern().match(t).hasMatch() || radixPattern().match(t).hasMatch();
}

double Val(const QString& s) {
    QString t = s;
    t.remove(QLatin1Char(' '));
    t.remove(QLatin1Char('\t'));
    if (t.startsWith(QLatin1Char('&'))) {
        int radix = 8;
        qsizetype i = 1;
        if (i < t.size() && (t.at(i) == QLatin1Char('h') || t.at(i) == QLatin1Char('H')))
            radix = 16, ++i;
        else if (i < t.size() && (t.at(i) == QLatin1Char('o') || t.at(i) == QLatin1Char('O')))
            ++i;
        double v = 0;
        for (; i < t.size(); ++i) {
            const int d = digitValue(t.at(i));
            if (d < 0 || d >= radix) break;
            v = v * radix + d;
        }
        return v;
    }
    static const QRegularExpression lead(
        QStringLiteral("^[+-]?(\\d+\\.?\\d*|\\.\\d+)([eEdD][+-]?\\d+)?"));
    const auto m = lead.match(t);
    if (!m.hasMatch()) return 0.0;
    QString num = m.captured(0);
    num.replace(QLatin1Char('d'), QLatin1Char('e')).replace(QLatin1Char('D'), QLatin1Char('e'));
    return num.toDouble();
}

QString NormalizeRez(const QString& sName) {
    const QString name = sName.toLower();
    QString out;
    qsizetype pos = 0;
    for (int round = 0; round < 2; ++round) {
        const qsizetype x = name.indexOf(QLatin1Char('x'), pos);
        if (x < 0 || x == pos) return out + name.mid(pos).trimmed();
        const QString element = name.mid(pos, x - pos).trimmed();
        if (!IsNumeric(element)) return out + name.mid(pos).trimmed();
        out += fillFour(element) + QLatin1Char('x');
        pos = x + 1;
    }
    const QString rest = name.mid(pos).trimmed();
    return out + (IsNumeric(rest) ? fillFour(rest) : rest);
}

qint16 RezHeight(const QString& sName) {
    const QString name = sName.toLower();
    const qsizetype x = name.lastIndexOf(QLatin1Char('x'));
    if (x < 0 || x == name.size() - 1) return 0;
    const QString rest = name.mid(x + 1).trimmed();
    if (!IsNumeric(rest)) return 0;
    return ToInt16(Val(rest));
}

QString PadCode(const QString& s) {
    const qsizetype len = s.size();
    return QString(len < 2 ? 4 : (len == 2 ? 3 : 2), QLatin1Char(' ')) + s;
}

QString BytesToLong(const QByteArray& s) {
    double sum = 0;
    for (qsizetype i = 0; i < s.size(); ++i) {
        sum = roundHalfEven(sum + double(quint8(s.at(i))) * std::pow(256.0, double(i)));
        if (sum > std::numeric_limits<qint32>::max()) throw OverflowError();
    }
    return Str(static_cast<qint64>(sum));
}

QByteArray HexListToText(const QString& sList) {
    QByteArray out;
    for (qsizetype pos = 1; pos <= sList.size() - 1; pos += 3)
        out.append(static_cast<char>(
            static_cast<int>(Val(QStringLiteral("&H") + sList.mid(pos - 1, 2))) & 0xFF));
    return out;
}

qint16 ReverseBits(qint16 nValue, qint16 nTop) {
    if (nTop < 0 || nTop > 30) return 0;
    int result = 0;
    for (int i = 0; i <= nTop && i < 16; ++i)
        if (nValue & (1 << i)) result |= 1 << (nTop - i);
    return static_cast<qint16>(static_cast<quint16>(result));
}

} // namespace velmorak
