#pragma once

#include <QByteArray>
#include <QString>

namespace velmorak::CardMemory {

constexpr int kDevice = 166;
// Addresses of the production record in the card's data memory.
constexpr int kCounters = 0x0000;
constexpr int kPartNumber = 0x0040;
constexpr int kSerialNumber = 0x0060;
constexpr int kDate = 0x0200;
constexpr int kSalesOrder = 0x0220;
constexpr int kTechCode = 0x0240;
constexpr int kRepairs = 0x0500;
constexpr int kRepairRecord = 96;
// The table ends with page 14.
constexpr int kLastPage = 14;

// The counters shown from the first bytes of the counter block.
struct Counters {
    QString days;
    QString temperature;
    QString duration;
};
Counters decodeCounters(const QByteArray& block);

// Byte texts of the memory as window text and back, one character a byte.
QString text(const QByteArray& bytes);
QByteArray bytes(const QString& text);
// Blanks on the right up to n characters; a longer text stays whole.
QString padded(const QString& s, int n);
// Blanks off both ends (only blanks, as the card stores them).
QString trimmed(const QString& s);
// An erased or foreign block: its character is outside 30..127.
bool foreign(QChar c);

// The counter block that Clear writes: a day of running time, the zero temperature code.
QByteArray clearedCounters();

} // namespace velmorak::CardMemory
