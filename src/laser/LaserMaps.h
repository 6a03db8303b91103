#pragma once

#include "registers/RegisterMap.h"

#include <QByteArray>
#include <QString>

#include <span>

namespace velmorak {

// Where the card keeps the laser's register image and its serial number.
inline constexpr int kLaserBase = 64;
inline constexpr int kLaserSerialBase = 88;
inline constexpr int kLaserReadLength = 28;
inline constexpr int kLaserSerialLength = 5;

// --- OLD laser: eight registers, 23 rows (ucBitsField2), one grid.
extern const RegisterMap kOldLaserMap;

// A paired scroll bar: its field lies in `row` at `shift`, and the carrier keeps `keep`.
struct OldLaserSlider {
    const char* bar;
    const char* text;
    int max;
    int row;
    int carrier;
    int shift;
    int keep;
    int table; // 0: plain number, 1: bias table, 2: modulation table
};
extern const std::span<const OldLaserSlider> kOldLaserSliders;
// The scroll bar paired with a row, or nullptr.
const OldLaserSlider* oldLaserSliderOfRow(int row);

inline constexpr quint32 kPaleGreen = 0xCDFFCD;
inline constexpr quint32 kFullGreen = 0x00FF00;
// Rows whose "Control" cell turns pale green when their bit is set.
bool oldLaserGreenRow(int row);

// The current in mA of a six-bit code; empty outside 0 to 63.
QString TextTable1(int n);
QString TextTable2(int n, double offset);

// --- NEW laser: a 98-bit stream in 13 bytes, 52 rows (ucBitsField1) on five pages.
extern const RegisterMap kNewLaserMap;
inline constexpr int kNewLaserBytes = 13;
// The default image as stored: each byte a number ended by a comma.
extern const char* const kNewLaserDefault;

// In both maps a register (a byte of the stream) is `reg`, and its carrier is the one register
// row of it (registerRowOf); a field row merges its shown bits into the carrier.

// Six-bit currents of the four channels, most significant bit on the lowest stream bit.
enum class Current { IMAX, IMIN };
int currentCode(const QByteArray& image, int channel, Current which);
// Packs the code into the image (13 bytes), keeping every other bit.
void setCurrentCode(QByteArray& image, int channel, Current which, int code);
// The rows that hold pieces of a current, one or two.
std::span<const int> currentRows(int channel, Current which);
// The small fields of page 0.
int tcMax(const QByteArray& image);
int tcMin(const QByteArray& image);
int iwf(const QByteArray& image);

} // namespace velmorak
