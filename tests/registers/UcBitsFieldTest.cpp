#include "registers/UcBitsField.h"

#include <gtest/gtest.h>

using namespace velmorak;
using Back = UcBitsField::CellBack;

namespace {

// Cells as a text, bit 7 first; '-' for an empty cell.
std::string cells(const UcBitsField& f) {
    std::string s;
    for (int i = 7; i >= 0; --i)
        s += f.txtBit(i).isEmpty() ? '-' : f.txtBit(i).toStdString()[0];
    return s;
}

void showBits(UcBitsField& f, int mask) {
    for (int i = 0; i < 8; ++i) {
        f.setBitIndex(qint16(i));
        f.setBitVisible(mask & (1 << i));
    }
}

struct WriteCase {
    const char* what;
    int shown; // -1: no flag ever set
    int value;
    const char* cells;
    qint16 read;
    const char* hex;
};

class WriteByteTest : public testing::TestWithParam<WriteCase> {};

TEST_P(WriteByteTest, SpreadsOverVisibleCellsOnly) {
    const WriteCase& c = GetParam();
    UcBitsField f("ucBitsField1", 0);
    if (c.shown >= 0) showBits(f, c.shown);
    f.setBitIndex(5);
    f.WriteByte(qint16(c.value));
    EXPECT_EQ(cells(f), c.cells) << c.what;
    EXPECT_EQ(f.ReadByte(), c.read);
    EXPECT_EQ(f.lblFSum(), QString::number(c.read));
    EXPECT_EQ(f.lblHex(), QString::fromLatin1(c.hex));
    EXPECT_EQ(f.BitIndex(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WriteByteTest,
    testing::Values(WriteCase{"whole byte", 0xFF, 127, "01111111", 127, "7Fh"},
                    WriteCase{"bit 7 hidden takes its weight", 0x7F, 255, "-1111111", 127, "7Fh"},
                    WriteCase{"hidden weight leaves nothing", 0x7F, 128, "-0000000", 0, "0h"},
                    WriteCase{"field in place", 0x38, 0xFF, "--111---", 56, "38h"},
                    WriteCase{"256 is all ones", 0xFF, 256, "11111111", 255, "FFh"},
                    WriteCase{"negative clears", 0xFF, -1, "00000000", 0, "0h"},
                    WriteCase{"no bit made visible", -1, 255, "00000000", 0, "0h"}));

// Calls on bit 2, in order: V visible, E enable, R read back, each with 1 or 0.
struct StateCase {
    const char* ops;
    Back back;
    bool enabled;
};

class CellStateTest : public testing::TestWithParam<StateCase> {};

TEST_P(CellStateTest, FollowsTheOrderOfCalls) {
    const StateCase& c = GetParam();
    UcBitsField f("ucBitsField1", 0);
    f.setBitIndex(2);
    for (const char* p = c.ops; *p; p += 3) {
        const bool on = p[1] == '1';
        if (p[0] == 'V') f.setBitVisible(on);
        if (p[0] == 'E') f.setBitEnable(on);
        if (p[0] == 'R') f.setBitRead(on);
    }
    EXPECT_EQ(f.txtBitBack(2), c.back) << c.ops;
    EXPECT_EQ(f.BitEnable(), c.enabled);
    if (c.back == Back::Hidden) {
        EXPECT_EQ(f.txtBit(2), QString());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CellStateTest,
    testing::Values(StateCase{"V0 ", Back::Hidden, false},
                    StateCase{"V0 E1 ", Back::Hidden, false}, // enable on a hidden bit
                    StateCase{"V1 ", Back::ButtonFace, true}, // enabled state kept
                    StateCase{"V1 E1 ", Back::Window, true},
                    StateCase{"V1 E0 R1 ", Back::ReadBack, false},   // a status bit
                    StateCase{"V1 R1 E0 ", Back::ButtonFace, false}, // wrong order: no yellow
                    StateCase{"V1 E1 R1 R0 ", Back::Window, true},
                    StateCase{"V1 E0 R1 R0 ", Back::ButtonFace, false},
                    StateCase{"V1 E0 V0 V1 E1 ", Back::Window, true}));

TEST(UcBitsField, BitIndexBounds) {
    UcBitsField f("ucBitsField1", 0);
    f.setBitIndex(8); // a flag without a cell
    EXPECT_NO_THROW(f.setBitEnable(true));
    EXPECT_THROW(f.setBitVisible(true), RunTimeError);
    f.setBitIndex(9);
    EXPECT_THROW(f.setBitRead(true), RunTimeError);
}

TEST(UcBitsField, ClickTogglesByTextAndFiresClickBit) {
    UcBitsField f("ucBitsField1", 0);
    f.show();
    EXPECT_EQ(f.lblHex(), QStringLiteral("0h"));
    showBits(f, 0xFF);
    for (int i = 0; i < 8; ++i) {
        f.setBitIndex(qint16(i));
        f.setBitEnable(i != 6);
    }
    std::vector<std::pair<int, QString>> seen;
    f.onClickBit += [&] { seen.emplace_back(f.BitIndex(), f.lblHex()); };

    f.WriteByte(0x81); // code writes fire nothing
    f.click(0);
    f.click(4);
    f.click(6); // disabled cell
    f.setTxtBit(3, QString());
    f.click(3); // an empty text is not "1"
    const std::vector<std::pair<int, QString>> expected = {
        {0, QStringLiteral("80h")}, {4, QStringLiteral("90h")}, {3, QStringLiteral("98h")}};
    EXPECT_EQ(seen, expected);
    EXPECT_EQ(f.lblFSum(), QStringLiteral("152"));
    f.setEnabled(false);
    f.click(0);
    EXPECT_EQ(seen.size(), 3u);
}

} // namespace
