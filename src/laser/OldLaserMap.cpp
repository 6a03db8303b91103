#include "laser/LaserMaps.h"

#include <QStringList>

#include <array>

namespace velmorak {

namespace {

constexpr auto R = RegisterRow::Register;
constexpr auto F = RegisterRow::Field;
constexpr quint16 W = RegisterRow::kWhole;

// A carrier shows all eight bits; a field row only its own. Masks are those a read applies.
// clang-format off
constexpr RegisterRow kRows[] = {
//   address name                                 reg kind shown edit status dflt control              cell  word for 1                              word for 0                               img mask keep list mask colour
    {"1", "VCSEL Bias Output Current",             1, R, 0xFF, 0x3F, 0x00,   9, "HScrl1,txt1",       nullptr, nullptr,                              nullptr,                                  1,   W, false, 0, W, 0},
    {"2", "Range",                                 2, F, 0x40, 0x40, 0x00,   0, nullptr,             nullptr, "High Range(5-15mA)",                 "Low Range(2-12mA)",                      2,  64, false, 0, W, 0},
    {" ", "VCSEL Modulation Output Current",       2, R, 0xFF, 0x3F, 0x00,  13, "HScrl2,txt2",       nullptr, nullptr,                              nullptr,                                  2, 127, false, 0, W, 0},
    {"3", "VCSEL Modulation Current Tempco",       3, R, 0xFF, 0x3F, 0x00,  24, "HScrl3,txt3",       nullptr, nullptr,                              nullptr,                                  3,   W, false, 0, W, 0},
    {"4", "Activity Over Ride",                    4, F, 0x80, 0x80, 0x00,   0, nullptr,             nullptr, "Can disable output current driver",  "Can't disable output current driver",    4, 128, false, 0, W, 0},
    {" ", "Force Control",                         4, F, 0x40, 0x40, 0x00,   0, nullptr,             nullptr, "Disabled",                           "Enabled",                                4,  64, false, 0, W, 0},
    {" ", "Zero or One Output",                    4, F, 0x20, 0x20, 0x00,   0, nullptr,             nullptr, "Modulation Output Current",          "Bias Output Current",                    4,  32, false, 0, W, 0},
    {" ", "Clear Registers",                       4, F, 0x10, 0x10, 0x00,   0, nullptr,             nullptr, "Clear Registers",                    "Disabled",                               4,  16, false, 0, W, 0},
    {" ", "Channel 1 Duty Cycle Adjust",           4, R, 0xFF, 0x0F, 0x00,  15, "HScrl4,txt4",       nullptr, nullptr,                              nullptr,                                  4, 255, false, 0, W, 0},
    {"5", "Test",                                  5, F, 0x80, 0x00, 0x00,   0, nullptr,             nullptr, "Read only",                          "Read only",                              5, 128, false, 0, W, 0},
    {" ", "Boost Level Adjust",                    5, F, 0x38, 0x38, 0x00,  16, "HScrl5,txt5",       nullptr, nullptr,                              nullptr,                                  5,  56, false, 0, W, 0},
    {" ", "Damping Control",                       5, F, 0x04, 0x04, 0x00,   0, nullptr,             nullptr, "Enable",                             "Disable",                                5,   4, false, 0, W, 0},
    {" ", "Positive Control",                      5, R, 0xFF, 0x03, 0x00,  16, "HScrl5_1,txt5_1",   nullptr, nullptr,                              nullptr,                                  5, 255, false, 0, W, 0},
    {"6", "Channel 3 Duty Cycle  Adjust",          6, F, 0xF0, 0xF0, 0x00, 240, "HScrl6_1,txt6_1",   nullptr, nullptr,                              nullptr,                                  6, 240, false, 0, W, 0},
    {" ", "Channel 2 Duty Cycle Adjust",           6, R, 0xFF, 0x0F, 0x00, 255, "HScrl6_2,txt6_2",   nullptr, nullptr,                              nullptr,                                  6, 255, false, 0, W, 0},
    {"7", "Channel 4 Duty Cycle Adjust",           7, R, 0xFF, 0x0F, 0x00,  15, "HScrl7,txt7",       nullptr, nullptr,                              nullptr,                                  7,  15, false, 0, W, 0},
    {"8", "Enable Laser",                          8, F, 0x80, 0x00, 0x00, 128, nullptr,             nullptr, "Enabled",                            "Disabled",                               8, 128, false, 0, W, 0},
    {" ", "Power On Reset Lanched",                8, F, 0x20, 0x20, 0x00,   0, nullptr,             nullptr, "",                                   "Clear",                                  8,  32, false, 0, W, 0},
    {" ", "Enable Channel 4",                      8, F, 0x10, 0x10, 0x00,  16, nullptr,             nullptr, "Channel 4 Enabled",                  "Channel 4 Disabled",                     8,  16, false, 0, W, 0},
    {" ", "Enable Channel 3",                      8, F, 0x08, 0x08, 0x00,   8, nullptr,             nullptr, "Channel 3 Enabled",                  "Channel 3 Disabled",                     8,   8, false, 0, W, 0},
    {" ", "Enable Channel 2",                      8, F, 0x04, 0x04, 0x00,   4, nullptr,             nullptr, "Channel 2 Enabled",                  "Channel 2 Disabled",                     8,   4, false, 0, W, 0},
    {" ", "Enable Channel 1",                      8, F, 0x02, 0x02, 0x00,   2, nullptr,             nullptr, "Channel 1 Enabled",                  "Channel 1 Disabled",                     8,   2, false, 0, W, 0},
    {" ", "Enable Remainder",                      8, R, 0xFF, 0x01, 0x00, 159, nullptr,             nullptr, "Enable All",                         "Disabled",                               8, 255, false, 0, W, 0},
};
// clang-format on
static_assert(std::size(kRows) == 23);

constexpr RegisterGrid kGrids[] = {{"Registers", "fraReg", "FlexGrP", 0, 22}};
constexpr int kLoadOrder[] = {0, 2, 3, 8, 12, 14, 15, 22};

constexpr OldLaserSlider kSliders[] = {
    {"HScrl1", "txt1", 63, 0, 0, 0, 0, 1},        {"HScrl2", "txt2", 63, 2, 2, 0, 192, 2},
    {"HScrl3", "txt3", 63, 3, 3, 0, 0, 0},        {"HScrl4", "txt4", 15, 8, 8, 0, 240, 0},
    {"HScrl5", "txt5", 7, 10, 12, 3, 199, 0},     {"HScrl5_1", "txt5_1", 3, 12, 12, 0, 252, 0},
    {"HScrl6_1", "txt6_1", 15, 13, 14, 4, 15, 0}, {"HScrl6_2", "txt6_2", 15, 14, 14, 0, 240, 0},
    {"HScrl7", "txt7", 15, 15, 15, 0, 0, 0},
};

// The bias currents are stored texts: the last step is not one formula.
constexpr const char* kBias[64] = {
    "1.95", "2.05", "2.14", "2.24", "2.34", "2.44", "2.53", "2.63", "2.73", "2.83", "2.92",
    "3.02", "3.12", "3.22", "3.31", "3.41", "3.51", "3.61", "3.70", "3.80", "3.90", "4.00",
    "4.09", "4.19", "4.29", "4.39", "4.48", "4.58", "4.68", "4.78", "4.87", "4.97", "5.07",
    "5.17", "5.26", "5.36", "5.46", "5.56", "5.65", "5.75", "5.85", "5.95", "6.04", "6.14",
    "6.24", "6.34", "6.43", "6.53", "6.63", "6.73", "6.82", "6.92", "7.02", "7.12", "7.21",
    "7.31", "7.41", "7.51", "7.60", "7.70", "7.80", "7.90", "7.99", "8.09"};

constexpr double kModulation[64] = {
    2.05,  2.21,  2.36,  2.52,  2.68,  2.84,  2.99,  3.15,  3.31,  3.47,  3.62,  3.78, 3.94,
    4.10,  4.25,  4.41,  4.57,  4.73,  4.88,  5.04,  5.20,  5.36,  5.51,  5.67,  5.83, 5.99,
    6.14,  6.30,  6.46,  6.62,  6.77,  6.93,  7.09,  7.25,  7.40,  7.56,  7.72,  7.88, 8.03,
    8.19,  8.35,  8.51,  8.66,  8.82,  8.98,  9.14,  9.29,  9.45,  9.61,  9.77,  9.92, 10.08,
    10.24, 10.40, 10.55, 10.71, 10.87, 11.03, 11.18, 11.34, 11.50, 11.66, 11.81, 11.97};

} // namespace

const RegisterMap kOldLaserMap{kLaserBase, "ucBitsField2", kRows, kGrids, "", kLoadOrder, 8, 0};
const std::span<const OldLaserSlider> kOldLaserSliders{kSliders};

const OldLaserSlider* oldLaserSliderOfRow(int row) {
    for (const OldLaserSlider& s : kSliders)
        if (s.row == row) return &s;
    return nullptr;
}

bool oldLaserGreenRow(int row) {
    return row == 16 || (row >= 18 && row <= 21);
}

QString TextTable1(int n) {
    return n >= 0 && n < 64 ? QString::fromLatin1(kBias[n]) : QString();
}

QString TextTable2(int n, double offset) {
    return n >= 0 && n < 64 ? QString::number(kModulation[n] + offset, 'f', 2) : QString();
}

} // namespace velmorak
