#pragma once

#include <QString>
#include <QtGlobal>

namespace velmorak::StatusRules {

// LED colours, 0xRRGGBB. The two reds differ by one step of green on purpose.
constexpr quint32 kGrey = 0xE0E0E0;
constexpr quint32 kGreen = 0x01FF01;
constexpr quint32 kRedDiagnostics = 0xFF0000;
constexpr quint32 kRedError = 0xFF0100;
constexpr quint32 kLightGreen = 0x80FF80;

// LED 1 from status byte 2 (bits 5 and 4).
quint32 diagnosticsColour(int status10);
// Error LEDs from a pair of bits, high bit good and low bit fault: both or neither grey.
quint32 errorColour(int status10, int lowBit);
// The mode LEDs of status byte 3, active low.
quint32 activeLowColour(int status11, int bit);

// A double as the ordinary decimal text of the grid, cut (not rounded) to five characters.
QString gridNumber(double v);
QString temperatureText(int rawTemp);
QString voltageText(int raw, int divisor);

// Major code 48 and above is a digit stored as text; below, a plain number. Minor as "00".
QString FirmwareVer(qint16 major, qint16 minor);

// State of switch k (0 to 9) of the ten-position switch.
bool switchState(int k, int status9, int status10);

} // namespace velmorak::StatusRules
