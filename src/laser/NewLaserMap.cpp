#include "laser/LaserMaps.h"

#include "link/ValueHelpers.h"

#include <array>

namespace velmorak {

namespace {

constexpr auto R = RegisterRow::Register;
constexpr auto F = RegisterRow::Field;
constexpr quint16 W = RegisterRow::kWhole;

// Address: the stream bits of the row. Register: the byte of the stream. A carrier shows its
// whole byte and edits only its own field.
// clang-format off
constexpr RegisterRow kRows[] = {
//   address   name                  byte kind shown edit status dflt control                 cell text, words         img mask keep list mask colour
    {"0-3",   "PREAMBLE",             0, R, 0xFF, 0x00, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr,  1,   W, false,  1,   W, 0},
    {"4",     "CLR_FAULT",            0, F, 0x10, 0x10, 0x00, -1, nullptr,                     "Clears LATCH_FLT_HIGH and LATCH_FLT_LOW", nullptr, nullptr,  1,  16, false,  1,  16, 0},
    {"5,6",   "TC_IMAX [0:1]",        0, F, 0x60, 0x60, 0x00, -1, "txtTC_MAX",                 "           Imax temperature     compensation", nullptr, nullptr,  1,  96, false,  1,  96, 0},
    {"7",     "TC_MIN [1]",           0, F, 0x80, 0x80, 0x00, -1, "txtTC_MIN",                 "  Imin temperature", nullptr, nullptr,  1, 128, false,  1, 128, 0},
    {"8",     "TC_MIN [0]",           1, R, 0xFF, 0x01, 0x00, -1, nullptr,                     "compensation", nullptr, nullptr,  2,   W, false,  2,   W, 0},
    {"9-11",  "IWF [0:1:2]",          1, F, 0x0E, 0x0E, 0x00, -1, "txtIWF",                    "          Waveform control for VCSEL driver output", nullptr, nullptr,  2,  14, false,  2,  14, 0},
    {"12",    "FLT_EN_HIGH",          1, F, 0x10, 0x10, 0x00, -1, nullptr,                     "Enables overcurrent fault detection", nullptr, nullptr,  2,  16, false,  2,  16, 0},
    {"13",    "FLT_EN_LOW",           1, F, 0x20, 0x20, 0x00, -1, nullptr,                     "Enables undervoltage fault detection", nullptr, nullptr,  2,  32, false,  2,  32, 0},
    {"14",    "IBOOST",               1, F, 0x40, 0x40, 0x00, -1, nullptr,                     "Reserved", nullptr, nullptr,  2,  64, false,  2,  64, 0},
    {"15",    "LOAD_BAL",             1, F, 0x80, 0x80, 0x00, -1, nullptr,                     "Reserved", nullptr, nullptr,  2, 128, false,  2, 128, 0},
    {"16",    "DATA_INVERT",          2, F, 0x01, 0x01, 0x00, -1, nullptr,                     "Inverts all TX_OUT outputs", nullptr, nullptr,  3,   1, false,  3,   1, 0},
    {"17",    "TX_FLT_INVERT",        2, F, 0x02, 0x02, 0x00, -1, nullptr,                     "Inverts TX_FLT output", nullptr, nullptr,  3,   2, false,  3,   2, 0},
    {"18-23", "IMAX[0:1:2:3:4:5]",    2, R, 0xFF, 0xFC, 0x00, -1, "HScrlIMAX0,txtIMAX0",       "VCSEL logic-high current", nullptr, nullptr,  3,   W, false,  3,   W, 0},
    {"24-29", "IMIN[0:1:2:3:4:5]",    3, R, 0xFF, 0x3F, 0x00, -1, "HScrlIMIN0,txtIMIN0",       "VCSEL logic-low current", nullptr, nullptr,  4,   W, false,  4,   W, 0},
    {"30",    "CH_EN",                3, F, 0x40, 0x40, 0x00, -1, nullptr,                     "Channel enable", nullptr, nullptr,  4,  64, false,  4,  64, 0},
    {"31",    "CH_EN_N",              3, F, 0x80, 0x80, 0x00, -1, nullptr,                     "Channel disable", nullptr, nullptr,  4, 128, false,  4, 128, 0},
    {"32",    "OUTPUT_HIGH",          4, F, 0x01, 0x01, 0x00, -1, nullptr,                     "Burn-in mode forces outputs to a logic high with open circuit inputs", nullptr, nullptr,  5,   1, false,  5,   1, 0},
    {"33",    "Reserve",              4, F, 0x02, 0x02, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr,  5,   2, false,  5,   2, 0},
    {"34",    "LATCHED_FLT_HIGH",     4, F, 0x04, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL overcurrent fault", nullptr, nullptr,  5,   4, false,  5,   4, 0},
    {"35",    "LATCHED_FLT_LOW",      4, F, 0x08, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL undervoltage fault", nullptr, nullptr,  5,   8, false,  5,   8, 0},
    {"36,37", "Reserved",             4, F, 0x30, 0x00, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr,  5,  48, false,  5,  48, 0},
    {"38,39", "IMAX[4:5]",            4, R, 0xFF, 0xC0, 0x00, -1, "HScrlIMAX1,txtIMAX1",       "VCSEL logic-high current", nullptr, nullptr,  5,   W, false,  5,   W, 0},
    {"40-43", "IMAX[0:1:2:3]",        5, R, 0xFF, 0x0F, 0x00, -1, nullptr,                     "VCSEL logic-high current", nullptr, nullptr,  6,   W, false,  6,   W, 0},
    {"44-47", "IMIN[2:3:4:5]",        5, F, 0xF0, 0xF0, 0x00, -1, "HScrlIMIN1,txtIMIN1",       "VCSEL logic-low current", nullptr, nullptr,  6, 240, false,  6, 240, 0},
    {"48,49", "IMIN[0:1]",            6, R, 0xFF, 0x03, 0x00, -1, nullptr,                     "VCSEL logic-low current", nullptr, nullptr,  7,   W, false,  7,   W, 0},
    {"50",    "CH_EN",                6, F, 0x04, 0x04, 0x00, -1, nullptr,                     "Channel enable", nullptr, nullptr,  7,   4, false,  7,   4, 0},
    {"51",    "CH_EN_N",              6, F, 0x08, 0x08, 0x00, -1, nullptr,                     "Channel disable", nullptr, nullptr,  7,   8, false,  7,   8, 0},
    {"52",    "OUTPUT_HIGH",          6, F, 0x10, 0x10, 0x00, -1, nullptr,                     "Burn-in mode forces outputs to a logic high with open circuit inputs", nullptr, nullptr,  7,  16, false,  7,  16, 0},
    {"53",    "Reserve",              6, F, 0x20, 0x20, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr,  7,  32, false,  7,  32, 0},
    {"54",    "LATCHED_FLT_HIGH",     6, F, 0x40, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL overcurrent fault", nullptr, nullptr,  7,  64, false,  7,  64, 0},
    {"55",    "LATCHED_FLT_LOW",      6, F, 0x80, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL undervoltage fault", nullptr, nullptr,  7, 128, false,  7, 128, 0},
    {"56,57", "Reserved",             7, F, 0x03, 0x00, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr,  8,   3, false,  8,   3, 0},
    {"58-63", "IMAX[0:1:2:3:4:5]",    7, R, 0xFF, 0xFC, 0x00, -1, "HScrlIMAX2,txtIMAX2",       "VCSEL logic-high current", nullptr, nullptr,  8,   W, false,  8,   W, 0},
    {"64-69", "IMIN[0:1:2:3:4:5]",    8, R, 0xFF, 0x3F, 0x00, -1, "HScrlIMIN2,txtIMIN2",       "VCSEL logic-low current", nullptr, nullptr,  9,   W, false,  9,   W, 0},
    {"70",    "CH_EN",                8, F, 0x40, 0x40, 0x00, -1, nullptr,                     "Channel enable", nullptr, nullptr,  9,  64, false,  9,  64, 0},
    {"71",    "CH_EN_N",              8, F, 0x80, 0x80, 0x00, -1, nullptr,                     "Channel disable", nullptr, nullptr,  9, 128, false,  9, 128, 0},
    {"72",    "OUTPUT_HIGH",          9, F, 0x01, 0x01, 0x00, -1, nullptr,                     "Burn-in mode forces outputs to a logic high with open circuit inputs", nullptr, nullptr, 10,   1, false, 10,   1, 0},
    {"73",    "Reserve",              9, F, 0x02, 0x02, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr, 10,   2, false, 10,   2, 0},
    {"74",    "LATCHED_FLT_HIGH",     9, F, 0x04, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL overcurrent fault", nullptr, nullptr, 10,   4, false, 10,   4, 0},
    {"75",    "LATCHED_FLT_LOW",      9, F, 0x08, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL undervoltage fault", nullptr, nullptr, 10,   8, false, 10,   8, 0},
    {"76,77", "Reserved",             9, F, 0x30, 0x00, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr, 10,  48, false, 10,  48, 0},
    {"78,79", "IMAX[4:5]",            9, R, 0xFF, 0xC0, 0x00, -1, "HScrlIMAX3,txtIMAX3",       "VCSEL logic-high current", nullptr, nullptr, 10,   W, false, 10,   W, 0},
    {"80-83", "IMAX[0:1:2:3]",       10, R, 0xFF, 0x0F, 0x00, -1, nullptr,                     "VCSEL logic-high current", nullptr, nullptr, 11,   W, false, 11,   W, 0},
    {"84-87", "IMIN[2:3:4:5]",       10, F, 0xF0, 0xF0, 0x00, -1, "HScrlIMIN3,txtIMIN3",       "VCSEL logic-low current", nullptr, nullptr, 11, 240, false, 11, 240, 0},
    {"88,89", "IMIN[0:1]",           11, R, 0xFF, 0x03, 0x00, -1, nullptr,                     "VCSEL logic-low current", nullptr, nullptr, 12,   W, false, 12,   W, 0},
    {"90",    "CH_EN",               11, F, 0x04, 0x04, 0x00, -1, nullptr,                     "Channel enable", nullptr, nullptr, 12,   4, false, 12,   4, 0},
    {"91",    "CH_EN_N",             11, F, 0x08, 0x08, 0x00, -1, nullptr,                     "Channel disable", nullptr, nullptr, 12,   8, false, 12,   8, 0},
    {"92",    "OUTPUT_HIGH",         11, F, 0x10, 0x10, 0x00, -1, nullptr,                     "Burn-in mode forces outputs to a logic high with open circuit inputs", nullptr, nullptr, 12,  16, false, 12,  16, 0},
    {"93",    "Reserve",             11, F, 0x20, 0x20, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr, 12,  32, false, 12,  32, 0},
    {"94",    "LATCHED_FLT_HIGH",    11, F, 0x40, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL overcurrent fault", nullptr, nullptr, 12,  64, false, 12,  64, 0},
    {"95",    "LATCHED_FLT_LOW",     11, F, 0x80, 0x00, 0x00, -1, nullptr,                     "Reports VCSEL undervoltage fault", nullptr, nullptr, 12, 128, false, 12, 128, 0},
    {"96,97", "Reserved",            12, R, 0x03, 0x00, 0x00, -1, nullptr,                     nullptr, nullptr, nullptr, 13,   W, false, 13,   W, 0},
};
// clang-format on
static_assert(std::size(kRows) == 52);

constexpr RegisterGrid kGrids[] = {
    {"00 - 17", "fraT0", "FlexGr0", 0, 11},         {"18 - 37 - Ch.0", "fraT1", "FlexGr1", 12, 20},
    {"38 - 57 - Ch.1", "fraT2", "FlexGr2", 21, 31}, {"58 - 77 - Ch.2", "fraT3", "FlexGr3", 32, 40},
    {"78 - 97 - Ch.3", "fraT4", "FlexGr4", 41, 51},
};
constexpr int kLoadOrder[] = {0, 4, 12, 13, 21, 22, 24, 32, 33, 41, 42, 44, 51};

int at(const QByteArray& image, int i) {
    return i < image.size() ? quint8(image[i]) : 0;
}

void put(QByteArray& image, int i, int v) {
    if (image.size() <= i) image.append(QByteArray(i + 1 - image.size(), '\0'));
    image[i] = char(v & 0xFF);
}

int rb(int v, int top) {
    return ReverseBits(qint16(v), qint16(top));
}

// Channels 0 and 2 keep each current in one byte; 1 and 3 split them over two.
constexpr int kFirstByte[4] = {2, 4, 7, 9};
constexpr int kPieces[4][2][2] = {
    {{12, -1}, {13, -1}}, {{21, 22}, {23, 24}}, {{32, -1}, {33, -1}}, {{41, 42}, {43, 44}}};

} // namespace

const RegisterMap kNewLaserMap{kLaserBase,   "ucBitsField1", kRows,          kGrids,
                               "Addresses ", kLoadOrder,     kNewLaserBytes, kNewLaserBytes};

const char* const kNewLaserDefault =
    "165,61,101,69,64,86,4,100,69,64,86,4,0,0,0,0,0,0,0,0,0,0,0,0,";

int currentCode(const QByteArray& image, int channel, Current which) {
    const int b = kFirstByte[channel & 3];
    const bool imax = which == Current::IMAX;
    if (channel % 2 == 0)
        return imax ? rb((at(image, b) & 252) / 4, 5) : rb(at(image, b + 1) & 63, 5);
    if (imax) return rb((at(image, b) & 192) / 64, 1) * 16 + rb(at(image, b + 1) & 15, 3);
    return rb((at(image, b + 1) & 240) / 16, 3) * 4 + rb(at(image, b + 2) & 3, 1);
}

void setCurrentCode(QByteArray& image, int channel, Current which, int code) {
    const int b = kFirstByte[channel & 3];
    const bool imax = which == Current::IMAX;
    code &= 63;
    if (channel % 2 == 0) {
        if (imax)
            put(image, b, (at(image, b) & 3) + rb(code, 5) * 4);
        else
            put(image, b + 1, (at(image, b + 1) & 192) + rb(code, 5));
    } else if (imax) {
        put(image, b, (at(image, b) & 63) + rb(code / 16, 1) * 64);
        put(image, b + 1, (at(image, b + 1) & 240) + rb(code & 15, 3));
    } else {
        put(image, b + 1, (at(image, b + 1) & 15) + rb(code / 4, 3) * 16);
        put(image, b + 2, (at(image, b + 2) & 252) + rb(code & 3, 1));
    }
}

std::span<const int> currentRows(int channel, Current which) {
    const int* p = kPieces[channel & 3][which == Current::IMAX ? 0 : 1];
    return {p, size_t(p[1] < 0 ? 1 : 2)};
}

int tcMax(const QByteArray& image) {
    return rb((at(image, 0) & 96) / 32, 1);
}

// Stream bit 7 weighs 2 and bit 8 weighs 1: no reversal here.
int tcMin(const QByteArray& image) {
    return ((at(image, 0) / 64) & 2) + (at(image, 1) & 1);
}

int iwf(const QByteArray& image) {
    return rb((at(image, 1) & 14) / 2, 2);
}

} // namespace velmorak
