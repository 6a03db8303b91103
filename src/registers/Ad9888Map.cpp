#include "registers/Ad9888Map.h"

namespace velmorak {

namespace {

constexpr auto R = RegisterRow::Register;
constexpr auto F = RegisterRow::Field;
constexpr quint16 W = RegisterRow::kWhole;
constexpr quint32 kRed = 0xFF0000, kGreen = 0x007F00, kBlue = 0x0000FF;

// clang-format off
constexpr RegisterRow kRows[] = {
//   address name                        reg   kind shown edit  status dflt control                cell text                  word for 1                word for 0                 img mask keep list mask name colour
    {"00", "Chip Revision",              0x00, R, 0xFF, 0x00, 0x00,  -1, nullptr,              nullptr,                   nullptr,                  nullptr,                    1,  W, true,   0,  W, 0},
    {"01", "PLL Divisor(MSB)",           0x01, R, 0xFF, 0xFF, 0x00, 105, "HScrlPLL",           nullptr,                   nullptr,                  nullptr,                    2,  W, false,  1,  W, 0},
    {"02", "PLL Divisor(LSB)",           0x02, R, 0xFF, 0xF0, 0x00, 208, "txtPLLc",            nullptr,                   nullptr,                  nullptr,                    3, 240, false, 2,  W, 0},
    {"03", "VCO Range",                  0x03, R, 0xFF, 0xC0, 0x00,  72, "cbo03_1",            nullptr,                   nullptr,                  nullptr,                    4, 248, false, 3, 248, 0},
    {"",   "Charge Pump",                0x03, F, 0x38, 0x38, 0x00,  -1, "cbo03_2",            nullptr,                   nullptr,                  nullptr,                    4,  56, false, 3,  56, 0},
    {"04", "Phase Adjust",               0x04, R, 0xFF, 0xF8, 0x00, 128, "HScrlPhA,txtPhAdj",  nullptr,                   nullptr,                  nullptr,                    5,  W, false,  4,  W, 0},
    {"05", "Clamp Placement",            0x05, R, 0xFF, 0xFF, 0x00,   8, "HScrlClPl",          nullptr,                   nullptr,                  nullptr,                    6,  W, false,  5,  W, 0},
    {"06", "Clamp Duration",             0x06, R, 0xFF, 0xFF, 0x00,  20, "HScrlClDur",         nullptr,                   nullptr,                  nullptr,                    7,  W, false,  6,  W, 0},
    {"07", "Hsync Out Width",            0x07, R, 0xFF, 0xFF, 0x00,  32, "HScrlHsync",         nullptr,                   nullptr,                  nullptr,                    8,  W, false,  7,  W, 0},
    {"08", "Red Gain",                   0x08, R, 0xFF, 0xFF, 0x00, 128, "HScrlCR,txtRedC",    nullptr,                   nullptr,                  nullptr,                    9,  W, false,  8,  W, kRed},
    {"09", "Green Gain",                 0x09, R, 0xFF, 0xFF, 0x00, 128, "HScrlCG,txtGreenC",  nullptr,                   nullptr,                  nullptr,                   10,  W, false,  9,  W, kGreen},
    {"0A", "Blue Gain",                  0x0A, R, 0xFF, 0xFF, 0x00, 128, "HScrlCB,txtBlueC",   nullptr,                   nullptr,                  nullptr,                   11,  W, false, 10,  W, kBlue},
    {"0B", "Red Offset",                 0x0B, R, 0xFF, 0xFE, 0x00, 128, "HScrlBrR,txtRed",    nullptr,                   nullptr,                  nullptr,                   12, 254, false, 11, W, kRed},
    {"0C", "Green Offset",               0x0C, R, 0xFF, 0xFE, 0x00, 128, "HScrlBrG,txtGreen",  nullptr,                   nullptr,                  nullptr,                   13, 254, false, 12, W, kGreen},
    {"0D", "Blue Offset",                0x0D, R, 0xFF, 0xFE, 0x00, 128, "HScrlBrB,txtBlue",   nullptr,                   nullptr,                  nullptr,                   14, 254, false, 13, W, kBlue},
    {"0E", "Hsync Pol Override",         0x0E, R, 0xFF, 0x80, 0x00,  64, "txt0E_7",            nullptr, "Pol set by next bit",      "Chip Selects Hsync Pol",  15,  W, false, 14,  W, 0},
    {" ",  "Hsync Input Pol",            0x0E, F, 0x40, 0x40, 0x00,  -1, "txt0E_6",            nullptr, "Active High",              "Active Low",              15,  64, false, 14, 64, 0},
    {" ",  "Hsync Output Pol",           0x0E, F, 0x20, 0x20, 0x00,  -1, "txt0E_5",            nullptr, "Active Low",               "Active High",             15,  32, false, 14, 32, 0},
    {" ",  "Act Hsync Override",         0x0E, F, 0x10, 0x10, 0x00,  -1, "txt0E_4",            nullptr, "Hsync set by next bit",    "Chip Selects Hsync",      15,  16, false, 14, 16, 0},
    {" ",  "Act Hsync Select",           0x0E, F, 0x08, 0x08, 0x00,  -1, "txt0E_3",            nullptr, "Sync On Green(SOG)",       "Raw Hsync",               15,   8, false, 14,  8, 0},
    {" ",  "Vsync Output Pol",           0x0E, F, 0x04, 0x04, 0x00,  -1, "txt0E_2",            nullptr, "Same as Vsync In",         "Inverse of Vsync In",     15,   4, false, 14,  4, 0},
    {" ",  "Act Vsync Override",         0x0E, F, 0x02, 0x02, 0x00,  -1, "txt0E_1",            nullptr, "Vsync set by next bit",    "Chip Selects Vsync",      15,   2, false, 14,  2, 0},
    {" ",  "Act Vsync Select",           0x0E, F, 0x01, 0x01, 0x00,  -1, "txt0E_0",            nullptr, "Sync On Green(SOG)",       "Raw Vsync",               15,   1, false, 14,  1, 0},
    {"0F", "Clamp Function",             0x0F, R, 0xFF, 0x80, 0x00,  78, "txt0F_7",            nullptr, "Clamp",                    "Hsync",                   16, 254, false, 15,  W, 0},
    {" ",  "Clamp Polarity",             0x0F, F, 0x40, 0x40, 0x00,  -1, "txt0F_6",            nullptr, "Active Low",               "Active High",             16,  64, false, 15, 64, 0},
    {" ",  "Coast Select",               0x0F, F, 0x20, 0x20, 0x00,  -1, "txt0F_5",            nullptr, "Vsync",                    "Coast",                   16,  32, false, 15, 32, 0},
    {" ",  "Coast Override",             0x0F, F, 0x10, 0x10, 0x00,  -1, "txt0F_4",            nullptr, "Use Next Bit",             "Chip Selects Polarity",   16,  16, false, 15, 16, 0},
    {" ",  "Coast Polarity",             0x0F, F, 0x08, 0x08, 0x00,  -1, "txt0F_3",            nullptr, "Active High",              "Active Low",              16,   8, false, 15,  8, 0},
    {" ",  "Power Mode",                 0x0F, F, 0x04, 0x04, 0x00,  -1, "txt0F_2",            nullptr, "Enable",                   "Disable",                 16,   4, false, 15,  4, 0},
    {" ",  "PWRDN",                      0x0F, F, 0x02, 0x02, 0x00,  -1, "txt0F_1",            nullptr, "Normal Operation",         "Powered Down",            16,   2, false, 15,  2, 0},
    {"10", "SOG Threshold",              0x10, R, 0xFF, 0xF8, 0x00, 120, "HScrl10,txt10",      nullptr,                   nullptr,                  nullptr,                   17, 254, false, 16, W, 0},
    {" ",  "Red Clamp Select",           0x10, F, 0x04, 0x04, 0x00,  -1, "txt10_2",            nullptr, "Midscale",                 "Ground",                  17,   4, false, 16,  4, 0},
    {" ",  "Blue Clamp Select",          0x10, F, 0x02, 0x02, 0x00,  -1, "txt10_1",            nullptr, "Midscale",                 "Ground",                  17,   2, false, 16,  2, 0},
    {" ",  "Test",                       0x10, F, 0x01, 0x01, 0x00,  -1, nullptr,              nullptr,                   nullptr,                  nullptr,                   17,   1, false, 16,  1, 0},
    {"11", "Sync Separator Threshold",   0x11, R, 0xFF, 0xFF, 0x00,  32, "HScrl11",            nullptr,                   nullptr,                  nullptr,                   18,  W, false, 17,  W, 0},
    {"12", "Pre-Coast",                  0x12, R, 0xFF, 0xFF, 0x00,   0, "HScrl12",            nullptr,                   nullptr,                  nullptr,                   19,  W, false, 18,  W, 0},
    {"13", "Post-Coast",                 0x13, R, 0xFF, 0xFF, 0x00,   0, "HScrl13",            nullptr,                   nullptr,                  nullptr,                   20,  W, false, 19,  W, 0},
    {"14", "Hsync Detect",               0x14, R, 0xFF, 0x00, 0x80,  37, "txt14_7",            nullptr, "Present",                  "Absent",                  21,  W, false, 20,  W, 0},
    {" ",  "Active Hsync ",              0x14, F, 0x40, 0x00, 0x40,  -1, "txt14_6",            nullptr, "From sync-on-green",       "External Hsync",          21,  64, false, 20, 64, 0},
    {" ",  "Hsync Polarity",             0x14, F, 0x20, 0x00, 0x20,  -1, "txt14_5",            nullptr, "Active High",              "Active Low",              21,  32, false, 20, 32, 0},
    {" ",  "Vsync Detect",               0x14, F, 0x10, 0x00, 0x10,  -1, "txt14_4",            nullptr, "Present",                  "Absent",                  21,  16, false, 20, 16, 0},
    {" ",  "Active Vsync",               0x14, F, 0x08, 0x00, 0x08,  -1, "txt14_3",            nullptr, "From Sync separator",      "External Vsync",          21,   8, false, 20,  8, 0},
    {" ",  "Vsync Polarity",             0x14, F, 0x04, 0x00, 0x04,  -1, "txt14_2",            nullptr, "Active Low",               "Active High",             21,   4, false, 20,  4, 0},
    {" ",  "SOG Detect",                 0x14, F, 0x02, 0x00, 0x02,  -1, "txt14_1",            nullptr, "Detected",                 "Not Detected",            21,   2, false, 20,  2, 0},
    {" ",  "Detected COAST Polarity",    0x14, F, 0x01, 0x00, 0x01,  -1, "txt14_0",            nullptr, "Active High",              "Active Low",              21,   1, false, 20,  1, 0},
    {"15", "Channel Mode",               0x15, R, 0xFF, 0x80, 0x00,  70, "txt15_7",            nullptr, "Dual Channel (48 bit)",    "Single Channel (24 bit)", 22,  W, false, 21,  W, 0},
    {" ",  "Output Mode",                0x15, F, 0x40, 0x40, 0x00,  -1, "txt15_6",            nullptr, "Parallel",                 "Interleaved",             22,  64, false, 21, 64, 0},
    {" ",  "Output Port Phase",          0x15, F, 0x20, 0x20, 0x00,  -1, "txt15_5",            nullptr, "First pixel to Port B",    "First pixel to Port A",   22,  32, false, 21, 32, 0},
    {" ",  " 4:2:2 Output Mode",         0x15, F, 0x10, 0x10, 0x00,  -1, "txt15_4",            nullptr, "4:2:2",                    "4:4:4",                   22,  16, false, 21, 16, 0},
    {" ",  "Input Mux Select",           0x15, F, 0x08, 0x08, 0x00,  -1, "txt15_3",            nullptr, "Channel 1",                "Channel 0",               22,   8, false, 21,  8, 0},
    {" ",  "Input Bandwidth",            0x15, F, 0x06, 0x06, 0x00,  -1, "cbo15_2",            nullptr,                   nullptr,                  nullptr,                   22,   6, false, 21,  6, 0},
    {" ",  "External Clock",             0x15, F, 0x01, 0x01, 0x00,  -1, "txt15_0",            nullptr, "Use External Clock",       "Use Internal PLL",        22,   1, false, 21,  1, 0},
    {"16", "Test Register 1",            0x16, R, 0xFF, 0xFF, 0x00,  -1, nullptr, "Must be set to 11111110",     nullptr,                  nullptr,                   23,  W, false,  0,  W, 0},
    {"17", "Test Register 2",            0x17, R, 0xFF, 0xFF, 0x00,  -1, nullptr, "Must be set to 00000000",     nullptr,                  nullptr,                   24,  W, false,  0,  W, 0},
    {"18", "Test Register 3",            0x18, R, 0xFF, 0x00, 0xFF,  -1, nullptr, "Read only",                   nullptr,                  nullptr,                   25,  W, false,  0,  W, 0},
    {"19", "Test Register 4",            0x19, R, 0xFF, 0x00, 0xFF,  -1, nullptr, "Read only",                   nullptr,                  nullptr,                   26,  W, false,  0,  W, 0},
};
// clang-format on
static_assert(std::size(kRows) == 56);

constexpr RegisterGrid kGrids[] = {
    {"00 - 0DH", "fraT1", "FlexGr1", 0, 14},
    {"0EH - OFH", "fraT2", "FlexGr2", 15, 29},
    {"10H - 14H", "fraT3", "FlexGr3", 30, 44},
    {"15H - 19H", "fraT4", "FlexGr4", 45, 55},
};

// Registers 01H to 17H.
constexpr int kLoadOrder[] = {1,  2,  3,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                              14, 15, 23, 30, 34, 35, 36, 37, 45, 52, 53};

constexpr const char* kSxga1280 =
    "105,112,160,96,20,20,38,128,128,128,128,128,128,64,78,184,32,4,4,183,100,";

} // namespace

const RegisterMap kAd9888Map{32, "ucBitsField1", kRows, kGrids, "Addresses", kLoadOrder, 26, 21};

namespace {
constexpr SaveColumn kColumns[] = {{"01", 1},   {"02", 2},   {"03", 3},   {"04", 5},   {"05", 6},
                                   {"06", 7},   {"07", 8},   {"08", 9},   {"09", 10},  {"0AH", 11},
                                   {"0BH", 12}, {"0CH", 13}, {"0DH", 14}, {"0EH", 15}, {"0FH", 23},
                                   {"10H", 30}, {"11H", 34}, {"12H", 35}, {"13H", 36}, {"15H", 45},
                                   {"16H", 52}, {"17H", 53}};
} // namespace

const std::span<const SaveColumn> kAd9888Columns{kColumns};

const RegisterList kAd9888Default{
    "cmdDefault", "&Default Settings",
    "105,208,72,128,8,20,32,128,128,128,128,128,128,64,78,120,32,0,0,37,70,"};

// The 1280x1024 timings at 75 Hz load the same numbers as at 60 Hz.
const std::array<RegisterList, 6> kAd9888Presets{{
    {"mnuPreset1", "&1   VGA  640x480x60",
     "49,240,16,128,20,20,38,128,128,128,128,128,128,64,78,184,32,4,4,147,64,"},
    {"mnuPreset2", "&2  SVGA 800x600x60",
     "64,240,40,128,20,20,38,128,128,128,128,128,128,64,78,184,32,4,4,147,64,"},
    {"mnuPreset3", "&3   XGA 1024x768x60",
     "83,240,96,112,20,20,38,128,128,128,128,128,128,64,78,184,32,4,4,147,68,"},
    {"mnuPreset4", "&4  SXGA 1280x1024x60", kSxga1280},
    {"mnuPreset5", "&5  SXGA 1280x1024x75", kSxga1280},
    {"mnuPreset6", "&6  SXGA 1600x1200x60",
     "134,240,224,96,20,20,38,128,128,128,128,128,128,64,78,184,32,4,4,183,102,"},
}};

} // namespace velmorak
