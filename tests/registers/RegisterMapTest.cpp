#include "MapForm.h"

#include "link/ParamBlock.h"
#include "registers/Ad9888Map.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace velmorak;

namespace {

QByteArray bytes(std::initializer_list<int> v) {
    QByteArray out;
    for (int b : v)
        out.append(char(b));
    return out;
}

std::vector<int> numbers(const char* list) {
    std::vector<int> out;
    for (const QString& s : QString::fromLatin1(list).split(u',', Qt::SkipEmptyParts))
        out.push_back(s.toInt());
    return out;
}

// Cell backgrounds, bit 7 first: H hidden, F button face, W editable, Y read back.
std::string backs(const UcBitsField& f) {
    std::string s;
    for (int i = 7; i >= 0; --i)
        s += "HFWY"[int(f.txtBitBack(i))];
    return s;
}

TEST(Ad9888Map, RowsAreSetUpFromTheirRecords) {
    MapForm form(kAd9888Map);
    const std::pair<int, const char*> cases[] = {
        {0, "FFFFFFFF"},  {2, "WWWWFFFF"},  {4, "HHWWWHHH"},  {12, "WWWWWWWF"},
        {16, "HWHHHHHH"}, {33, "HHHHHHHW"}, {37, "YFFFFFFF"}, {38, "HYHHHHHH"},
        {50, "HHHHHWWH"}, {52, "WWWWWWWW"}, {55, "YYYYYYYY"},
    };
    for (auto [m, expected] : cases)
        EXPECT_EQ(backs(form.rows()(m)), expected) << "member " << m;
    EXPECT_TRUE(form.rows()(45).FSum_Visible());
    EXPECT_FALSE(form.rows()(46).FSum_Visible());
    EXPECT_EQ(form.grid(0).textMatrix(5, 0), QString()); // Charge Pump
    EXPECT_EQ(form.grid(3).textMatrix(8, 3), QStringLiteral("Must be set to 11111110"));

    int clicks = 0;
    for (auto& m : form.rows())
        m.onClickBit += [&] { ++clicks; };
    for (int m : {0, 37, 38, 39, 40, 41, 42, 43, 44, 54, 55})
        for (int bit = 0; bit < 8; ++bit)
            form.rows()(m).click(bit);
    EXPECT_EQ(clicks, 0);
    form.rows()(33).click(0); // "Test": no control, still a live bit
    EXPECT_EQ(clicks, 1);
}

TEST(Ad9888Map, LoadOrderIsRegisters01To17AndDefaultsMatchTheList) {
    const std::vector<int> defaults = numbers(kAd9888Default.list);
    ASSERT_EQ(kAd9888Map.loadOrder.size(), 23u);
    for (size_t k = 0; k < kAd9888Map.loadOrder.size(); ++k) {
        const RegisterRow& row = kAd9888Map.rows[size_t(kAd9888Map.loadOrder[k])];
        EXPECT_EQ(int(row.reg), int(k) + 1);
        EXPECT_EQ(row.kind, RegisterRow::Register);
        EXPECT_EQ(row.defaultValue, k < defaults.size() ? defaults[k] : -1) << k;
    }
}

TEST(Ad9888Map, ImageSpreadsWithMasksAndStopsShort) {
    MapForm form(kAd9888Map);
    const ImageSpread full = spreadImage(form.rows(), kAd9888Map, QByteArray(26, char(0xFF)));
    EXPECT_TRUE(full.complete);
    EXPECT_EQ(full.sum, 26 * 255);
    std::vector<int> got;
    for (auto& m : form.rows())
        got.push_back(m.ReadByte());
    // clang-format off
    const std::vector<int> expected = {
        255, 255, 240, 248, 56, 255, 255, 255, 255, 255, 255, 255, 254, 254, 254, 255,
        64, 32, 16, 8, 4, 2, 1, 254, 64, 32, 16, 8, 4, 2, 254, 4, 2, 1, 255, 255, 255,
        255, 64, 32, 16, 8, 4, 2, 1, 255, 64, 32, 16, 8, 6, 1, 255, 255, 255, 255};
    // clang-format on
    EXPECT_EQ(got, expected);

    // Byte 1 of 0 keeps the revision; a short image ends at its last byte.
    std::vector<int> written;
    const ImageSpread part = spreadImage(form.rows(), kAd9888Map, bytes({0}) + QByteArray(23, 0x22),
                                         [&](int m) { written.push_back(m); });
    EXPECT_FALSE(part.complete);
    EXPECT_EQ(part.sum, 23 * 0x22);
    EXPECT_EQ(form.rows()(0).ReadByte(), 255);
    EXPECT_EQ(form.rows()(53).ReadByte(), 0x22); // byte 24
    EXPECT_EQ(form.rows()(54).ReadByte(), 255);  // byte 25 never came
    EXPECT_EQ(written.front(), 1);
}

// A list fills the register rows 01H to 15H unmasked, then refreshes every field row of them.
TEST(Ad9888Map, EveryListFillsRegistersAndTheirFields) {
    struct Row {
        const RegisterList& list;
        const char* block; // registers 01H to 15H as collected for a load
        // Field rows 4 (03H); 16-22 (0EH); 24-29 (0FH); 31-33 (10H); 38-44 (14H); 46-51 (15H).
        std::vector<int> fields;
    };
    // clang-format off
    const Row table[] = {
        {kAd9888Default, "69 D0 48 80 08 14 20 80 80 80 80 80 80 40 4E 78 20 00 00 25 46",
         {8, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 32, 0, 0, 4, 0, 1, 64, 0, 0, 0, 6, 0}},
        {kAd9888Presets[0], "31 F0 10 80 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 93 40",
         {16, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 0, 16, 0, 0, 2, 1, 64, 0, 0, 0, 0, 0}},
        {kAd9888Presets[1], "40 F0 28 80 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 93 40",
         {40, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 0, 16, 0, 0, 2, 1, 64, 0, 0, 0, 0, 0}},
        {kAd9888Presets[2], "53 F0 60 70 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 93 44",
         {32, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 0, 16, 0, 0, 2, 1, 64, 0, 0, 0, 4, 0}},
        {kAd9888Presets[3], "69 70 A0 60 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 B7 64",
         {32, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 32, 16, 0, 4, 2, 1, 64, 32, 0, 0, 4, 0}},
        {kAd9888Presets[4], "69 70 A0 60 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 B7 64",
         {32, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 32, 16, 0, 4, 2, 1, 64, 32, 0, 0, 4, 0}},
        {kAd9888Presets[5], "86 F0 E0 60 14 14 26 80 80 80 80 80 80 40 4E B8 20 04 04 B7 66",
         {32, 64, 0, 0, 0, 0, 0, 0, 64, 0, 0, 8, 4, 2, 0, 0, 0, 0, 32, 16, 0, 4, 2, 1, 64, 32, 0, 0, 6, 0}},
    };
    // clang-format on
    const int fieldMembers[] = {4,  16, 17, 18, 19, 20, 21, 22, 24, 25, 26, 27, 28, 29, 31,
                                32, 33, 38, 39, 40, 41, 42, 43, 44, 46, 47, 48, 49, 50, 51};
    std::vector<int> members(51); // each register row, then its fields
    std::iota(members.begin(), members.end(), 1);
    for (const Row& row : table) {
        SCOPED_TRACE(row.list.caption);
        MapForm form(kAd9888Map);
        std::vector<int> written;
        EXPECT_EQ(spreadList(form.rows(), kAd9888Map, QString::fromLatin1(row.list.list),
                             [&](int m) { written.push_back(m); }),
                  21);
        EXPECT_EQ(written, members);
        EXPECT_EQ(collectBlock(form.rows(), kAd9888Map).left(21).toHex(' ').toUpper(), row.block);
        std::vector<int> fields;
        for (int m : fieldMembers)
            fields.push_back(form.rows()(m).ReadByte());
        EXPECT_EQ(fields, row.fields);
    }
    MapForm form(kAd9888Map);
    spreadList(form.rows(), kAd9888Map, QStringLiteral("0,1000,-1,"));
    EXPECT_EQ(form.rows()(2).ReadByte(), 255); // no mask on the list's way
    EXPECT_EQ(form.rows()(3).ReadByte(), 248);
    EXPECT_EQ(form.rows()(4).ReadByte(), 56);
    EXPECT_THROW(spreadList(form.rows(), kAd9888Map, QStringLiteral("70000,")), OverflowError);
}

TEST(Ad9888Map, PresetsStandForTheirLineLengths) {
    const int lineLessOne[] = {799, 1039, 1343, 1687, 1687, 2159};
    for (size_t p = 0; p < kAd9888Presets.size(); ++p) {
        const std::vector<int> n = numbers(kAd9888Presets[p].list);
        EXPECT_EQ(n[0] * 16 + n[1] / 16, lineLessOne[p]) << kAd9888Presets[p].caption;
    }
    EXPECT_STREQ(kAd9888Presets[3].list, kAd9888Presets[4].list); // 75 Hz loads the 60 Hz list
}

// Shaped like the transmitter's map: fields ahead of their register row, list numbers counted
// like image bytes, a register row with a blank address and hidden bits inside.
TEST(RegisterWalker, FitsOtherMapShapes) {
    constexpr quint16 W = RegisterRow::kWhole;
    constexpr auto R = RegisterRow::Register, F = RegisterRow::Field;
    // clang-format off
    static constexpr RegisterRow rows[] = {
        {"32", "DE_DLY", 0x32, R, 0xFF, 0xFF, 0, -1, nullptr, nullptr, nullptr, nullptr, 1, W, false, 1, W, 0},
        {"33", "DE_DLY8", 0x33, F, 0x01, 0x01, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, 1, false, 2, 1, 0},
        {" ", "HS_POL", 0x33, F, 0x10, 0x10, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, 16, false, 2, 16, 0},
        {" ", "DE_GEN", 0x33, R, 0xF1, 0x40, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, W, false, 2, W, 0},
        {"35", "RESERVED", 0x35, R, 0xFF, 0x00, 0xFF, -1, nullptr, "Read only", nullptr, nullptr, 3, 254, false, 3, W, 0},
    };
    // clang-format on
    static constexpr RegisterGrid grids[] = {{"32H -3DH", "fraT2", "FlexGr2", 0, 4}};
    static constexpr int order[] = {0, 3};
    const RegisterMap map{96, "ucBitsField1", rows, grids, "Addresses (Hex)", order, 3, 3};

    MapForm form(map);
    EXPECT_FALSE(form.rows()(1).FSum_Visible());
    EXPECT_EQ(backs(form.rows()(3)), "FWFFHHHF");
    EXPECT_EQ(registerRowOf(map, 1), 3);
    spreadImage(form.rows(), map, bytes({0x12, 0xFF, 0xFF}));
    EXPECT_EQ(collectBlock(form.rows(), map), bytes({0x12, 0xF1})); // bits 3-1 hidden
    EXPECT_EQ(form.rows()(2).ReadByte(), 16);
    EXPECT_EQ(form.rows()(4).ReadByte(), 254);
    spreadList(form.rows(), map, QStringLiteral("7,16,255,"));
    EXPECT_EQ(form.rows()(1).ReadByte(), 0);
    EXPECT_EQ(form.rows()(4).ReadByte(), 255);
}

} // namespace
