#include "MapForm.h"

#include "registers/TransmitterMap.h"

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

std::vector<int> bytesOf(MapForm& form) {
    std::vector<int> out;
    for (auto& m : form.rows())
        out.push_back(m.ReadByte());
    return out;
}

} // namespace

TEST(TransmitterMap, RowsAndGridsAreBuiltFromTheTable) {
    MapForm form(kTransmitterMap);
    ASSERT_EQ(form.rows().count(), 43);
    const std::pair<int, const char*> cells[] = {
        {0, "YYYYYYYY"},  {8, "FWFFFFFF"},  {9, "HHWHHHHH"},  {16, "HWWWHHHH"}, {18, "HHHHHYHH"},
        {21, "WWWFFFFF"}, {23, "HHHHWWWH"}, {27, "YYYYYYYY"}, {29, "HHHHHHHW"}, {32, "FWFFHHHF"},
        {33, "FWWWWWWW"}, {36, "HHHHHWWW"}, {40, "YYYYYYYY"},
    };
    for (auto [m, expected] : cells)
        EXPECT_EQ(backs(form.rows()(m)), expected) << "member " << m;
    // Sums on register rows only: member 32 is the register of 33H, 29 a field of it.
    for (auto [m, sums] : {std::pair{8, true}, {9, false}, {29, false}, {32, true}, {36, true}})
        EXPECT_EQ(form.rows()(m).FSum_Visible(), sums) << "member " << m;

    const QString b11(11, u' '), b13(13, u' ');
    struct Cell {
        int grid, row, col;
        QString text;
    };
    const Cell texts[] = {
        {0, 0, 0, "Address"},
        {0, 0, 3, "Control"},
        {0, 1, 1, "VEN_ID [7:0]"},
        {0, 8, 3, "Read only"},
        {1, 1, 1, "CTL_1_MODE : TDIS"},
        {1, 2, 0, " "},
        {1, 2, 1, b11 + ": VEN"},
        {1, 9, 3, "Disabled. MSEN output high"},
        {1, 13, 3, "Remains same"}, // member 20 as built
        {1, 15, 1, b11 + ":  DKEN"},
        {1, 20, 3, "Read only"},
        {2, 2, 1, "DE_CTL : DE_DLY [8]"},
        {2, 2, 3, "DE_DLY [8:0]"},
        {2, 5, 0, " "},
        {2, 5, 1, b13 + ": DE_GEN"},
        {2, 15, 1, "V_RES [10:8]"},
    };
    for (const Cell& c : texts)
        EXPECT_EQ(form.grid(c.grid).textMatrix(c.row, c.col), c.text)
            << c.grid << ":" << c.row << "," << c.col;
    EXPECT_EQ(form.grid(1).rows(), 21);
    EXPECT_EQ(form.grid(2).rows(), 16);

    // Chip-driven rows take no clicks.
    int clicks = 0;
    for (auto& m : form.rows())
        m.onClickBit += [&] { ++clicks; };
    for (int m : {0, 3, 7, 18, 19, 24, 27, 34, 39, 42})
        for (int bit = 0; bit < 8; ++bit)
            form.rows()(m).click(bit);
    EXPECT_EQ(clicks, 0);
}

// The 27 bytes of two replies: 00H to 0EH, then 32H to 3DH.
TEST(TransmitterMap, ImageSpreadsOverMembersWithMasks) {
    MapForm form(kTransmitterMap);
    const ImageSpread full = spreadImage(form.rows(), kTransmitterMap, QByteArray(27, char(0xFF)));
    EXPECT_TRUE(full.complete);
    EXPECT_EQ(full.taken, 27);
    EXPECT_EQ(full.sum, 27 * 255);
    // clang-format off
    const std::vector<int> expected = {
        255, 255, 255, 255, 255, 255, 255, 255,          // 00H-07H
        255, 32, 16, 8, 4, 2, 1,                          // 08H and its fields
        255, 112, 8, 4, 2, 1,                             // 09H
        254, 16, 14,                                      // 0AH, bit 0 dropped
        255, 255, 255, 255,                               // 0BH-0EH
        255,                                              // 32H
        1, 16, 32, 241,                                   // 33H: fields, register without bits 3-1
        255, 255, 255, 7, 255, 7, 255, 255, 255, 255,     // 34H-3DH
    };
    // clang-format on
    EXPECT_EQ(bytesOf(form), expected);

    // A reply of 16 bytes stops after 32H: 33H and beyond keep what they had.
    MapForm fresh(kTransmitterMap);
    QByteArray shortImage(16, '\0');
    shortImage[15] = char(0x5A);
    shortImage[8] = char(0x21);
    const ImageSpread part = spreadImage(fresh.rows(), kTransmitterMap, shortImage);
    EXPECT_FALSE(part.complete);
    EXPECT_EQ(part.taken, 16);
    EXPECT_EQ(part.sum, 0x5A + 0x21);
    EXPECT_EQ(fresh.rows()(28).ReadByte(), 0x5A);
    EXPECT_EQ(fresh.rows()(8).ReadByte(), 0x21);
    EXPECT_EQ(fresh.rows()(9).ReadByte(), 32);
    EXPECT_EQ(fresh.rows()(14).ReadByte(), 1);
}

// The load block: 08H, 09H, 0AH, 32H to 39H, from bytes numbered by their place in the image.
TEST(TransmitterMap, LoadBlockCollectsElevenRegisters) {
    MapForm form(kTransmitterMap);
    QByteArray image;
    for (int k = 1; k <= 27; ++k)
        image.append(char(k));
    spreadImage(form.rows(), kTransmitterMap, image);
    const QByteArray block = collectBlock(form.rows(), kTransmitterMap);
    // 0AH: 11 & 254; 33H: 17 without bits 3-1; 37H, 39H: the low three bits of 21 and 23.
    EXPECT_EQ(block, QByteArray::fromHex("090A0A1011121314051607"));
}

// Field rows merge into their register rows; the default list is read by number.
TEST(TransmitterMap, FieldRowsBelongToTheirRegistersAndTheDefaultListParses) {
    const std::pair<int, int> owners[] = {{9, 8},   {14, 8},  {16, 15}, {20, 15}, {22, 21},
                                          {23, 21}, {29, 32}, {30, 32}, {31, 32}, {36, 36}};
    for (auto [field, reg] : owners)
        EXPECT_EQ(registerRowOf(kTransmitterMap, field), reg) << "member " << field;

    MapForm form(kTransmitterMap);
    spreadImage(form.rows(), kTransmitterMap, QByteArray(27, char(0xFF)));
    const int taken =
        spreadList(form.rows(), kTransmitterMap, QString::fromLatin1(kTransmitterDefault.list));
    EXPECT_EQ(taken, 26);
    std::vector<int> expected(43, 0);
    // 190: bit 7, VEN, HEN, DSEL, BSEL, EDGE; TDIS and PD clear. 128: DK 4.
    for (auto [m, v] : {std::pair{8, 190}, {9, 32}, {10, 16}, {11, 8}, {12, 4}, {13, 2}, {21, 128}})
        expected[size_t(m)] = v;
    expected[42] = 255; // 3DH is the 27th register, past the list
    EXPECT_EQ(bytesOf(form), expected);
}

TEST(TransmitterMap, SaveColumnsNameTheirRegisters) {
    const std::pair<const char*, int> columns[] = {
        {"08T", 0x08}, {"09T", 0x09}, {"0AHT", 0x0A}, {"32H", 0x32}, {"33H", 0x33},
        {"34H", 0x34}, {"36H", 0x36}, {"37H", 0x37},  {"38H", 0x38}, {"39H", 0x39}};
    ASSERT_EQ(kTransmitterColumns.size(), std::size(columns));
    for (size_t i = 0; i < kTransmitterColumns.size(); ++i) {
        const SaveColumn& c = kTransmitterColumns[i];
        EXPECT_STREQ(c.column, columns[i].first);
        const RegisterRow& row = kTransmitterMap.rows[size_t(c.member)];
        EXPECT_EQ(int(row.reg), columns[i].second) << c.column;
        EXPECT_EQ(row.kind, RegisterRow::Register) << c.column;
    }
}
