#pragma once

#include <QByteArray>
#include <QString>

namespace velmorak {

// Small value and text helpers of ModFunctions. They hold no state.

// Sort form of a resolution name: up to three "x"-separated elements, numeric ones left-filled
// with "0" to four digits ("800x600x75" -> "0800x0600x0075", "800x600" -> "0800x600").
QString NormalizeRez(const QString& sName);

// The number behind the last "x" of the name, rounded half to even; 0 when there is none or it is
// not numeric. Throws OverflowError when it leaves the 16-bit range.
qint16 RezHeight(const QString& sName);

// Blanks before the text for print lists: four below length 2, three at 2, two from 3 on.
QString PadCode(const QString& s);

// Str of the bytes' value, first byte lowest, summed in 32 bits (leading blank when not negative).
// Throws OverflowError when the sum leaves the 32-bit range.
QString BytesToLong(const QByteArray& s);

// "00,FF,38" -> the byte text 00 FF 38.
QByteArray HexListToText(const QString& sList);

// Mirrors bits 0 to nTop of nValue; bits above nTop are dropped.
qint16 ReverseBits(qint16 nValue, qint16 nTop);

// The numeric test the helpers use: an optional sign, digits with an optional fraction and
// exponent, or "&H"/"&O" followed by digits; blanks around are allowed.
bool IsNumeric(const QString& s);
// Leading number of a text, 0 when there is none; "&H" means hexadecimal, "&O" octal.
double Val(const QString& s);

// What a number out of the target's range does: run-time error 6 (OverflowError), or the
// nearest end of the range (NaN gives 0).
enum class OnOverflow { Error, Clamp };
// A number (a Val result, a stored value) as a 16- or 32-bit integer, rounded half to even.
qint16 ToInt16(double v, OnOverflow how = OnOverflow::Error);
qint32 ToInt32(double v, OnOverflow how = OnOverflow::Error);

} // namespace velmorak
