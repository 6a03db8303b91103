#include "registers/UcBitsField.h"
#include "link/ParamBlock.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

using namespace velmorak;
using Back = UcBitsField::CellBack;

namespace {

std::string testName(const char* s) {
    std::string out;
    for (const char* p = s; *p; ++p)
        if (std::isalnum(static_cast<unsigned char>(*p)))
            out += *p;
        else if (!out.empty() && out.back() != '_')
            out += '_';
    while (!out.empty() && out.back() == '_')
        out.pop_back();
    return out;
}

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
    int shown;
    int value;
    const char* cells;
    qint16 read;
    const char* hex;
};

void PrintTo(const WriteCase& c, std::ostream* os) {
    *os << c.what;
}

class WriteByteTest : public testing::TestWithParam<WriteCase> {};

TEST_P(WriteByteTest, SpreadsOverVisibleCellsOnly) {
    const WriteCase& c = GetParam();
    UcBitsField f("ucBitsField1", 0);
    if (c.shown >= 0) showBits(f, c.shown);
    f.setBitIndex(5);
    f.WriteByte(qint16(c.value));
    EXPECT_EQ(cells(f), c.cells);
    EXPECT_EQ(f.ReadByte(), c.read);
    EXPECT_EQ(f.lastByte(), c.read);
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
                    WriteCase{"1000 is all ones", 0xFF, 1000, "11111111", 255, "FFh"},
                    WriteCase{"negative clears", 0xFF, -1, "00000000", 0, "0h"},
                    WriteCase{"most negative clears", 0xFF, -32768, "00000000", 0, "0h"},
                    WriteCase{"no bit made visible", -1, 255, "00000000", 0, "0h"}),
    [](const auto& info) { return testName(info.param.what); });

TEST(UcBitsField, WriteLeavesHiddenCellsAsTheyWere) {
    UcBitsField f("ucBitsField1", 0);
    f.setTxtBit(7, QStringLiteral("1")); // flag still False
    showBits(f, 0x0F);
    f.setBitIndex(7);
    EXPECT_EQ(f.txtBit(7), QString()); // hidden empties
    f.setTxtBit(7, QStringLiteral("1"));
    f.WriteByte(0);
    EXPECT_EQ(cells(f), "1---0000");
    EXPECT_EQ(f.ReadByte(), 128);
}

// Operations on bit 2, in order: V visible, E enable, R read back, each followed by 1 or 0.
struct StateCase {
    const char* ops;
    Back back;
    bool enabled;
};

void PrintTo(const StateCase& c, std::ostream* os) {
    *os << c.ops;
}

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
    EXPECT_EQ(f.txtBitEnabled(2), c.enabled) << c.ops;
    EXPECT_EQ(f.BitEnable(), c.enabled) << c.ops;
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CellStateTest,
    testing::Values(StateCase{"V0 ", Back::Hidden, false},
                    StateCase{"V0 E1 ", Back::Hidden, false}, // enable on a hidden bit
                    StateCase{"V0 R1 ", Back::Hidden, false},
                    StateCase{"V1 ", Back::ButtonFace, true}, // enabled state kept
                    StateCase{"V1 E1 ", Back::Window, true},
                    StateCase{"V1 E0 ", Back::ButtonFace, false},
                    StateCase{"V1 E0 R1 ", Back::ReadBack, false},   // a status bit
                    StateCase{"V1 R1 E0 ", Back::ButtonFace, false}, // wrong order: no yellow
                    StateCase{"V1 E1 R1 R0 ", Back::Window, true},
                    StateCase{"V1 E0 R1 R0 ", Back::ButtonFace, false},
                    StateCase{"V1 E0 V0 V1 E1 ", Back::Window, true}),
    [](const auto& info) { return testName(info.param.ops); });

TEST(UcBitsField, HidingEmptiesTheCell) {
    UcBitsField f("ucBitsField1", 0);
    f.setBitIndex(3);
    f.setBitVisible(true);
    f.WriteByte(8);
    f.setBitIndex(3);
    f.setBitVisible(false);
    EXPECT_EQ(f.txtBit(3), QString());
    EXPECT_FALSE(f.BitVisible());
}

TEST(UcBitsField, BitIndexBounds) {
    UcBitsField f("ucBitsField1", 0);
    f.setBitIndex(8); // a flag without a cell
    EXPECT_FALSE(f.BitVisible());
    EXPECT_NO_THROW(f.setBitEnable(true));
    EXPECT_NO_THROW(f.setBitRead(true));
    for (qint16 i : {qint16(8), qint16(9), qint16(-1)}) {
        f.setBitIndex(i);
        try {
            f.setBitVisible(true);
            ADD_FAILURE() << i;
        } catch (const RunTimeError& e) {
            EXPECT_EQ(e.number(), 340) << i;
        }
    }
    for (qint16 i : {qint16(9), qint16(-1)}) {
        f.setBitIndex(i);
        try {
            f.setBitEnable(true);
            ADD_FAILURE() << i;
        } catch (const RunTimeError& e) {
            EXPECT_EQ(e.number(), 9) << i;
        }
    }
}

TEST(UcBitsField, ClickTogglesByTextAndFiresClickBit) {
    UcBitsField f("ucBitsField1", 0);
    showBits(f, 0xFF);
    for (int i = 0; i < 8; ++i) {
        f.setBitIndex(qint16(i));
        f.setBitEnable(i != 6);
    }
    std::vector<std::pair<int, QString>> seen;
    f.onClickBit += [&] { seen.emplace_back(f.BitIndex(), f.lblHex()); };

    f.WriteByte(0x81);
    EXPECT_TRUE(seen.empty()); // code writes fire nothing
    f.click(0);
    f.click(4);
    f.click(6); // disabled cell
    f.setTxtBit(3, QString());
    f.click(3); // empty text is not "1"
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_EQ(seen[0], std::make_pair(0, QStringLiteral("80h")));
    EXPECT_EQ(seen[1], std::make_pair(4, QStringLiteral("90h")));
    EXPECT_EQ(seen[2], std::make_pair(3, QStringLiteral("98h")));
    EXPECT_EQ(f.lblFSum(), QStringLiteral("152"));

    f.setEnabled(false);
    f.click(0);
    EXPECT_EQ(seen.size(), 3u);
}

TEST(UcBitsField, LabelsOnShowAndSumSwitch) {
    UcBitsField f("ucBitsField1", 0);
    EXPECT_EQ(f.lblFSum(), QString());
    f.show();
    EXPECT_EQ(f.lblFSum(), QStringLiteral("0"));
    EXPECT_EQ(f.lblHex(), QStringLiteral("0h"));
    EXPECT_TRUE(f.FSum_Visible());
    f.setFSum_Visible(false);
    EXPECT_FALSE(f.FSum_Visible());
}

TEST(UcBitsField, ReadByteBeyondSixteenBitsOverflows) {
    UcBitsField f("ucBitsField1", 0);
    f.setTxtBit(7, QStringLiteral("255"));
    EXPECT_EQ(f.ReadByte(), 255 * 128);
    f.setTxtBit(7, QStringLiteral("256"));
    EXPECT_THROW(f.ReadByte(), OverflowError);
}

} // namespace
