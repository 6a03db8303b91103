#include "MapForm.h"

#include "link/ParamBlock.h"
#include "registers/Ad9888Map.h"

#include <gtest/gtest.h>

#include <map>
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
    ASSERT_EQ(form.rows().count(), 56);
    const std::pair<int, const char*> cases[] = {
        {0, "FFFFFFFF"},  {1, "WWWWWWWW"},  {2, "WWWWFFFF"},  {3, "WWFFFFFF"},
        {4, "HHWWWHHH"},  {12, "WWWWWWWF"}, {15, "WFFFFFFF"}, {16, "HWHHHHHH"},
        {33, "HHHHHHHW"}, {37, "YFFFFFFF"}, {38, "HYHHHHHH"}, {44, "HHHHHHHY"},
        {50, "HHHHHWWH"}, {52, "WWWWWWWW"}, {54, "YYYYYYYY"}, {55, "YYYYYYYY"},
    };
    for (auto [m, expected] : cases)
        EXPECT_EQ(backs(form.rows()(m)), expected) << "member " << m;
    for (int m = 0; m < 56; ++m)
        EXPECT_EQ(form.rows()(m).FSum_Visible(),
                  kAd9888Map.rows[size_t(m)].kind == RegisterRow::Register)
            << m;
}

TEST(Ad9888Map, GridsAndTabsAsTheyStand) {
    MapForm form(kAd9888Map);
    const char* captions[] = {"00 - 0DH", "0EH - OFH", "10H - 14H", "15H - 19H"};
    const int rowCounts[] = {16, 16, 16, 12};
    for (int g = 0; g < 4; ++g) {
        EXPECT_STREQ(kAd9888Map.grids[size_t(g)].caption, captions[g]);
        EXPECT_EQ(form.grid(g).rows(), rowCounts[g]);
        EXPECT_EQ(form.grid(g).textMatrix(0, 2), QStringLiteral("Value"));
    }
    struct Cell {
        int grid, row, col;
        const char* text;
    };
    const Cell cells[] = {
        {0, 5, 0, ""},
        {0, 5, 1, "Charge Pump"},
        {0, 7, 0, "05"},
        {0, 15, 0, "0D"},
        {1, 2, 0, " "},
        {2, 9, 1, "Active Hsync "},
        {3, 4, 1, " 4:2:2 Output Mode"},
        {3, 8, 3, "Must be set to 11111110"},
        {3, 11, 3, "Read only"},
        {2, 4, 3, ""},
    };
    for (const Cell& c : cells)
        EXPECT_EQ(form.grid(c.grid).textMatrix(c.row, c.col), QString::fromLatin1(c.text))
            << c.grid << "," << c.row << "," << c.col;
}

TEST(Ad9888Map, LoadOrderIsRegisters01To17AndDefaultsMatchTheDefaultList) {
    ASSERT_EQ(kAd9888Map.loadOrder.size(), 23u);
    const std::vector<int> defaults = numbers(kAd9888Default.list);
    for (size_t k = 0; k < kAd9888Map.loadOrder.size(); ++k) {
        const RegisterRow& row = kAd9888Map.rows[size_t(kAd9888Map.loadOrder[k])];
        EXPECT_EQ(int(row.reg), int(k) + 1);
        EXPECT_EQ(row.kind, RegisterRow::Register);
        EXPECT_EQ(row.defaultValue, k < defaults.size() ? defaults[k] : -1) << k;
    }
}

TEST(Ad9888Map, StatusAndRevisionRowsTakeNoClick) {
    MapForm form(kAd9888Map);
    int clicks = 0;
    for (auto& m : form.rows())
        m.onClickBit += [&] { ++clicks; };
    for (int m : {0, 37, 38, 39, 40, 41, 42, 43, 44, 54, 55})
        for (int bit = 0; bit < 8; ++bit)
            form.rows()(m).click(bit);
    EXPECT_EQ(clicks, 0);
    form.rows()(33).click(0); // "Test" has no control but takes a click
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(form.rows()(33).ReadByte(), 1);
    EXPECT_EQ(kAd9888Map.rows[33].control, nullptr);
    EXPECT_EQ(kAd9888Map.rows[33].word1, nullptr);
}

TEST(Ad9888Map, ImageSpreadsWithMasksAndLoadBlockCollects) {
    MapForm form(kAd9888Map);
    const ImageSpread s = spreadImage(form.rows(), kAd9888Map, QByteArray(26, char(0xFF)));
    EXPECT_TRUE(s.complete);
    EXPECT_EQ(s.taken, 26);
    EXPECT_EQ(s.sum, 26 * 255);
    const std::map<int, int> masked = {
        {2, 240}, {3, 248}, {4, 56},  {12, 254}, {13, 254}, {14, 254}, {16, 64}, {17, 32},
        {18, 16}, {19, 8},  {20, 4},  {21, 2},   {22, 1},   {23, 254}, {24, 64}, {25, 32},
        {26, 16}, {27, 8},  {28, 4},  {29, 2},   {30, 254}, {31, 4},   {32, 2},  {33, 1},
        {38, 64}, {39, 32}, {40, 16}, {41, 8},   {42, 4},   {43, 2},   {44, 1},  {46, 64},
        {47, 32}, {48, 16}, {49, 8},  {50, 6},   {51, 1}};
    for (int m = 0; m < 56; ++m) {
        auto it = masked.find(m);
        EXPECT_EQ(form.rows()(m).ReadByte(), it == masked.end() ? 255 : it->second) << m;
    }
    EXPECT_EQ(collectBlock(form.rows(), kAd9888Map),
              bytes({255, 240, 248, 255, 255, 255, 255, 255, 255, 255, 254, 254,
                     254, 255, 254, 254, 255, 255, 255, 255, 255, 255, 255}));
}

TEST(Ad9888Map, ZeroRevisionKeepsTheOldOneAndShortImagesStop) {
    MapForm form(kAd9888Map);
    QByteArray image(26, char(0x11));
    image[0] = char(0x03);
    spreadImage(form.rows(), kAd9888Map, image);
    ASSERT_EQ(form.rows()(0).ReadByte(), 3);

    QByteArray shorter = image.left(24);
    shorter.fill(char(0x22));
    shorter[0] = 0;
    std::vector<int> written;
    const ImageSpread s =
        spreadImage(form.rows(), kAd9888Map, shorter, [&](int m) { written.push_back(m); });
    EXPECT_EQ(form.rows()(0).ReadByte(), 3);
    EXPECT_FALSE(s.complete);
    EXPECT_EQ(s.taken, 24);
    EXPECT_EQ(s.sum, 23 * 0x22);
    EXPECT_EQ(form.rows()(53).ReadByte(), 0x22); // byte 24
    EXPECT_EQ(form.rows()(54).ReadByte(), 0x11); // byte 25 never came
    EXPECT_EQ(written.front(), 1);
    EXPECT_EQ(written.back(), 53);
}

TEST(Ad9888Map, EveryListFillsRegistersAndTheirFields) {
    std::vector<RegisterList> lists(kAd9888Presets.begin(), kAd9888Presets.end());
    lists.push_back(kAd9888Default);
    for (const RegisterList& l : lists) {
        SCOPED_TRACE(l.caption);
        MapForm form(kAd9888Map);
        std::vector<int> written;
        EXPECT_EQ(spreadList(form.rows(), kAd9888Map, QString::fromLatin1(l.list),
                             [&](int m) { written.push_back(m); }),
                  21);
        std::vector<int> members(51);
        std::iota(members.begin(), members.end(), 1);
        EXPECT_EQ(written, members); // each register row, then its fields
        const std::vector<int> n = numbers(l.list);
        const QByteArray block = collectBlock(form.rows(), kAd9888Map);
        for (int k = 0; k < 21; ++k)
            EXPECT_EQ(quint8(block[k]), n[size_t(k)]) << k;
        for (int m = 1; m < 52; ++m) {
            const RegisterRow& row = kAd9888Map.rows[size_t(m)];
            if (row.kind == RegisterRow::Field) {
                EXPECT_EQ(form.rows()(m).ReadByte(), n[size_t(row.listNumber - 1)] & row.listMask)
                    << m;
            }
        }
    }
}

TEST(Ad9888Map, PresetsStandForTheirLineLengths) {
    const int lineLessOne[] = {799, 1039, 1343, 1687, 1687, 2159};
    for (size_t p = 0; p < kAd9888Presets.size(); ++p) {
        const std::vector<int> n = numbers(kAd9888Presets[p].list);
        ASSERT_EQ(n.size(), 21u);
        EXPECT_EQ(n[0] * 16 + n[1] / 16, lineLessOne[p]) << kAd9888Presets[p].caption;
    }
    // The 75 Hz entry loads the 60 Hz numbers.
    EXPECT_STREQ(kAd9888Presets[3].list, kAd9888Presets[4].list);
    EXPECT_STRNE(kAd9888Presets[3].caption, kAd9888Presets[4].caption);
}

TEST(Ad9888Map, ListNumbersOutOfByteRange) {
    struct Case {
        const char* list;
        int member;
        int expected;
    };
    const Case cases[] = {
        {"300,", 1, 255},     {"-8,", 1, 0},       {"0,208,-1,", 3, 248},
        {"0,208,-1,", 4, 56}, {"0,1000,", 2, 255}, {" 12 ,", 1, 12},
    };
    for (const Case& c : cases) {
        MapForm form(kAd9888Map);
        EXPECT_LT(spreadList(form.rows(), kAd9888Map, QString::fromLatin1(c.list)), 21);
        EXPECT_EQ(form.rows()(c.member).ReadByte(), c.expected) << c.list;
    }
    MapForm form(kAd9888Map);
    EXPECT_THROW(spreadList(form.rows(), kAd9888Map, QStringLiteral("70000,")), OverflowError);
}

// A map shaped like the transmitter's: field rows ahead of their register row, list numbers
// counted like image bytes, a register row with a blank address.
TEST(RegisterWalker, FitsOtherMapShapes) {
    constexpr quint16 W = RegisterRow::kWhole;
    // clang-format off
    static constexpr RegisterRow rows[] = {
        {"32", "DE_DLY [7:0]", 0x32, RegisterRow::Register, 0xFF, 0xFF, 0, -1, nullptr, nullptr, nullptr, nullptr, 1, W, false, 1, W, 0},
        {"33", "DE_CTL : DE_DLY [8]", 0x33, RegisterRow::Field, 0x01, 0x01, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, 1, false, 2, 1, 0},
        {" ", ": HS_POL", 0x33, RegisterRow::Field, 0x10, 0x10, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, 16, false, 2, 16, 0},
        {" ", ": DE_GEN", 0x33, RegisterRow::Register, 0xF1, 0x40, 0, -1, nullptr, nullptr, nullptr, nullptr, 2, W, false, 2, W, 0},
        {"35", "RESERVED", 0x35, RegisterRow::Register, 0xFF, 0x00, 0xFF, -1, nullptr, "Read only", nullptr, nullptr, 3, 254, false, 3, W, 0},
    };
    // clang-format on
    static constexpr RegisterGrid grids[] = {{"32H -3DH", "fraT2", "FlexGr2", 0, 4}};
    static constexpr int order[] = {0, 3};
    const RegisterMap map{96, "ucBitsField1", rows, grids, "Addresses (Hex)", order, 3, 3};

    MapForm form(map);
    EXPECT_FALSE(form.rows()(1).FSum_Visible());
    EXPECT_TRUE(form.rows()(3).FSum_Visible());
    EXPECT_EQ(backs(form.rows()(3)), "FWFFHHHF");
    EXPECT_EQ(registerRowOf(map, 1), 3);
    EXPECT_EQ(registerRowOf(map, 0), 0);

    spreadImage(form.rows(), map, bytes({0x12, 0xFF, 0xFF}));
    EXPECT_EQ(form.rows()(1).ReadByte(), 1);
    EXPECT_EQ(form.rows()(2).ReadByte(), 16);
    EXPECT_EQ(form.rows()(3).ReadByte(), 0xF1); // bits 3-1 hidden
    EXPECT_EQ(form.rows()(4).ReadByte(), 254);
    EXPECT_EQ(collectBlock(form.rows(), map), bytes({0x12, 0xF1}));

    spreadList(form.rows(), map, QStringLiteral("7,16,255,"));
    EXPECT_EQ(form.rows()(1).ReadByte(), 0);
    EXPECT_EQ(form.rows()(4).ReadByte(), 255);
}

} // namespace
