#pragma once

#include "forms/Control.h"

#include <QByteArray>
#include <QString>

namespace velmorak {

// A numeric result that leaves its range: run-time error 6.
struct OverflowError : RunTimeError {
    OverflowError() : RunTimeError(6, QStringLiteral("Overflow")) {}
};

// Reading the card's parameter block (the "PARR" reply) by position, counted from 1.
namespace ParamBlock {

// Byte at position pos, or -1 when the block is shorter.
int at(const QByteArray& block, int pos);

// Card word of positions 21 and 22; throws OverflowError for a high byte of 128 or more.
qint16 cardWord(const QByteArray& block);
inline bool isReceiver(qint16 cardWord) {
    return (cardWord & 1) != 0;
}

// Position 9, status byte 1.
bool isRgb(const QByteArray& block); // bit 7 set
bool isShv(const QByteArray& block); // bit 6 set, else SOG
int fibres(const QByteArray& block); // bit 2 set: one fibre, else two
int syncV(const QByteArray& block);  // positions 15, 16
int syncH(const QByteArray& block);  // positions 17, 18
int firmwareMajor(const QByteArray& block);
// The firmware text of the main window: Str(major) & "." & Format(minor).
QString firmwareText(const QByteArray& block);

} // namespace ParamBlock

// Decimal text of a number with a leading blank when it is not negative.
QString Str(qint64 n);
// Str of a double: up to 15 significant digits, no leading zero before the point (" .5"),
// exponent form for large and small values (" 1E+16").
QString StrDbl(double v);

// The system's version name and patch level; off Windows these fall under "other Windows".
struct OsVersion {
    QString name;
    QString patch;
};
OsVersion GetVersionInfo();

} // namespace velmorak
