#include "registers/TransmitterMap.h"

namespace velmorak {

namespace {

constexpr auto R = RegisterRow::Register;
constexpr auto F = RegisterRow::Field;
constexpr quint16 W = RegisterRow::kWhole;

// Field rows of the first two tables are indented by eleven blanks, of the third by thirteen.
// A word row's cell holds the word for 0 when built; MDI's is spelt "Remains same" there.
// clang-format off
constexpr RegisterRow kRows[] = {
//   address name                                  reg   kind shown edit  status dflt control               cell text                              word for 1                            word for 0                            img mask keep list mask colour
    {"00", "VEN_ID [7:0]",                         0x00, R, 0xFF, 0x00, 0xFF, -1, "txt1",               "Read only",                           nullptr,                              nullptr,                               1,  W, false,  1,  W, 0},
    {"01", "VEN_ID [15:8]",                        0x01, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               2,  W, false,  2,  W, 0},
    {"02", "DEV_ID [7:0]",                         0x02, R, 0xFF, 0x00, 0xFF, -1, "txt3",               "Read only",                           nullptr,                              nullptr,                               3,  W, false,  3,  W, 0},
    {"03", "DEV_ID [15:8]",                        0x03, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               4,  W, false,  4,  W, 0},
    {"04", "REV_ID [7:0]",                         0x04, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               5,  W, false,  5,  W, 0},
    {"05", "RESERVED",                             0x05, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               6,  W, false,  6,  W, 0},
    {"06", "RESERVED",                             0x06, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               7,  W, false,  7,  W, 0},
    {"07", "RESERVED",                             0x07, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                               8,  W, false,  8,  W, 0},
    {"08", "CTL_1_MODE : TDIS",                    0x08, R, 0xFF, 0x40, 0x00, -1, nullptr,              "T.M.D.S. circuitry enabled",          "T.M.D.S. circuitry disabled",        "T.M.D.S. circuitry enabled",          9,  W, false,  9,  W, 0},
    {" ",  "           : VEN",                     0x08, F, 0x20, 0x20, 0x00, -1, nullptr,              "VSYNC input as a fixed low",          "VSYNC input in original state",      "VSYNC input as a fixed low",          9, 32, false,  9, 32, 0},
    {" ",  "           : HEN",                     0x08, F, 0x10, 0x10, 0x00, -1, nullptr,              "HSYNC input as a fixed low",          "HSYNC input in original state",      "HSYNC input as a fixed low",          9, 16, false,  9, 16, 0},
    {" ",  "           : DSEL",                    0x08, F, 0x08, 0x08, 0x00, -1, nullptr,              "Differential input",                  "Single-ended",                       "Differential input",                  9,  8, false,  9,  8, 0},
    {" ",  "           : BSEL",                    0x08, F, 0x04, 0x04, 0x00, -1, nullptr,              " 12-bit w/dual-edge clock",           " 24-bit w/single-edge clock",        " 12-bit w/dual-edge clock",           9,  4, false,  9,  4, 0},
    {" ",  "           : EDGE",                    0x08, F, 0x02, 0x02, 0x00, -1, nullptr,              "Falling edge of IDCK+",               "Rising edge of IDCK+",               "Falling edge of IDCK+",               9,  2, false,  9,  2, 0},
    {" ",  "           : PD",                      0x08, F, 0x01, 0x01, 0x00, -1, nullptr,              "Power down",                          "Normal operation",                   "Power down",                          9,  1, false,  9,  1, 0},
    {"09", "CTL_2_MODE : VLOW",                    0x09, R, 0xFF, 0x80, 0x00, -1, nullptr,              "High-swing VREF analog input",        "Low-swing VREF analog input",        "High-swing VREF analog input",       10,  W, false, 10,  W, 0},
    {" ",  "           : MSEL",                    0x09, F, 0x70, 0x70, 0x00, -1, "cbo09",              "Disabled. MSEN output high",          nullptr,                              nullptr,                              10, 112, false, 10, 112, 0},
    {" ",  "           : TSEL",                    0x09, F, 0x08, 0x08, 0x00, -1, nullptr,              "MDI by monitoring RSEN",              "MDI by monitoring HTPLG",            "MDI by monitoring RSEN",             10,  8, false, 10,  8, 0},
    {" ",  "           : RSEN",                    0x09, F, 0x04, 0x00, 0x04, -1, nullptr,              "Powered-on receiver not detected",    "Powered-on receiver detected",       "Powered-on receiver not detected",   10,  4, false, 10,  4, 0},
    {" ",  "           : HTPLG",                   0x09, F, 0x02, 0x00, 0x02, -1, nullptr,              "Logic level on EDGE/HTPLG (pin 9)",   "High level on EDGE/HTPLG (pin 9)",   "Logic level on EDGE/HTPLG (pin 9)",  10,  2, false, 10,  2, 0},
    {" ",  "           : MDI",                     0x09, F, 0x01, 0x01, 0x00, -1, nullptr,              "Remains same",                        "Level change",                       "Remain same",                        10,  1, false, 10,  1, 0},
    {"0A", "CTL_3_MODE :  DK",                     0x0A, R, 0xFF, 0xE0, 0x00, -1, "HScrl0A_1,txt0A_1",  nullptr,                               nullptr,                              nullptr,                              11, 254, false, 11, 254, 0},
    {" ",  "           :  DKEN",                   0x0A, F, 0x10, 0x10, 0x00, -1, nullptr,              "Data de-skew disabled",               "Data de-skew enabled",               "Data de-skew disabled",              11, 16, false, 11, 16, 0},
    {" ",  "           :  CTL",                    0x0A, F, 0x0E, 0x0E, 0x00, -1, "HScrl0A_2,txt0A_2",  nullptr,                               nullptr,                              nullptr,                              11, 14, false, 11, 14, 0},
    {"0B", "CFG",                                  0x0B, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                              12,  W, false, 12,  W, 0},
    {"0C", "RESERVED",                             0x0C, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                              13,  W, false, 13,  W, 0},
    {"0D", "RESERVED",                             0x0D, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                              14,  W, false, 14,  W, 0},
    {"0E", "RESERVED",                             0x0E, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                              15,  W, false, 15,  W, 0},
    {"32", "DE_DLY [7:0]",                         0x32, R, 0xFF, 0xFF, 0x00, -1, "HScrl32,txt33",      nullptr,                               nullptr,                              nullptr,                              16,  W, false, 16,  W, 0},
    {"33", "DE_CTL : DE_DLY [8]",                  0x33, F, 0x01, 0x01, 0x00, -1, nullptr,              "DE_DLY [8:0]",                        nullptr,                              nullptr,                              17,  1, false, 17,  1, 0},
    {" ",  "             : HS_POL",                0x33, F, 0x10, 0x10, 0x00, -1, nullptr,              "HSYNC active low",                    "HSYNC active high",                  "HSYNC active low",                   17, 16, false, 17, 16, 0},
    {" ",  "             : VS_POL",                0x33, F, 0x20, 0x20, 0x00, -1, nullptr,              "VSYNC active low",                    "VSYNC active high",                  "VSYNC active low",                   17, 32, false, 17, 32, 0},
    {" ",  "             : DE_GEN",                0x33, R, 0xF1, 0x40, 0x00, -1, nullptr,              "DE generator disabled",               "DE generator enabled",               "DE generator disabled",              17,  W, false, 17,  W, 0},
    {"34", "DE_TOP",                               0x34, R, 0xFF, 0x7F, 0x00, -1, "HScrl34",            nullptr,                               nullptr,                              nullptr,                              18,  W, false, 18,  W, 0},
    {"35", "RESERVED",                             0x35, R, 0xFF, 0x00, 0xFF, -1, nullptr,              "Read only",                           nullptr,                              nullptr,                              19,  W, false, 19,  W, 0},
    {"36", "DE_CNT [7:0]",                         0x36, R, 0xFF, 0xFF, 0x00, -1, "HScrl36,txt37",      nullptr,                               nullptr,                              nullptr,                              20,  W, false, 20,  W, 0},
    {"37", "DE_CNT [10:8]",                        0x37, R, 0x07, 0x07, 0x00, -1, nullptr,              nullptr,                               nullptr,                              nullptr,                              21,  W, false, 21,  W, 0},
    {"38", "DE_LIN [7:0]",                         0x38, R, 0xFF, 0xFF, 0x00, -1, "HScrl38,txt39",      nullptr,                               nullptr,                              nullptr,                              22,  W, false, 22,  W, 0},
    {"39", "DE_LIN [10:8]",                        0x39, R, 0x07, 0x07, 0x00, -1, nullptr,              nullptr,                               nullptr,                              nullptr,                              23,  W, false, 23,  W, 0},
    {"3A", "H_RES [7:0]",                          0x3A, R, 0xFF, 0x00, 0xFF, -1, "txt3B",              "Read only",                           nullptr,                              nullptr,                              24,  W, false, 24,  W, 0},
    {"3B", "H_RES [10:8]",                         0x3B, R, 0xFF, 0x00, 0xFF, -1, nullptr,              nullptr,                               nullptr,                              nullptr,                              25,  W, false, 25,  W, 0},
    {"3C", "V_RES [7:0]",                          0x3C, R, 0xFF, 0x00, 0xFF, -1, "txt3D",              "Read only",                           nullptr,                              nullptr,                              26,  W, false, 26,  W, 0},
    {"3D", "V_RES [10:8]",                         0x3D, R, 0xFF, 0x00, 0xFF, -1, nullptr,              nullptr,                               nullptr,                              nullptr,                              27,  W, false, 27,  W, 0},
};
// clang-format on
static_assert(std::size(kRows) == 43);

constexpr RegisterGrid kGrids[] = {
    {"00 - 07", "fraT0", "FlexGr0", 0, 7},
    {"08 - 0EH", "fraT1", "FlexGr1", 8, 27},
    {"32H -3DH", "fraT2", "FlexGr2", 28, 42},
};

// Registers 08H, 09H, 0AH, 32H to 39H.
constexpr int kLoadOrder[] = {8, 15, 21, 28, 32, 33, 34, 35, 36, 37, 38};

constexpr SaveColumn kColumns[] = {{"08T", 8},  {"09T", 15}, {"0AHT", 21}, {"32H", 28},
                                   {"33H", 32}, {"34H", 33}, {"36H", 35},  {"37H", 36},
                                   {"38H", 37}, {"39H", 38}};

} // namespace

const RegisterMap kTransmitterMap{
    96, "ucBitsField1", kRows, kGrids, "Addresses (Hex)", kLoadOrder, 27, 26};

const RegisterList kTransmitterDefault{"cmdDefault", "&Default Settings",
                                       "0,0,0,0,0,0,0,0,190,0,128,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,"};

const std::span<const SaveColumn> kTransmitterColumns{kColumns};

} // namespace velmorak
