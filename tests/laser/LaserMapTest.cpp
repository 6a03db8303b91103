// The two laser maps as data: current tables, the NEW stream's packing, the carriers' bits.
#include "laser/LaserMaps.h"
#include "registers/MapForm.h"

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

QByteArray bytes(std::initializer_list<int> v) {
    QByteArray out;
    for (int b : v)
        out += char(b);
    return out;
}

bool streamBit(const QByteArray& image, int n) {
    return (quint8(image[n / 8]) >> (n % 8)) & 1;
}

// First stream bit of each six-bit current, by channel: IMAX, IMIN.
constexpr int kFieldStart[4][2] = {{18, 24}, {38, 44}, {58, 64}, {78, 84}};

} // namespace

TEST(LaserTables, CurrentsAtTheEndsAndOutside) {
    struct Case {
        int table, code;
        double offset;
        const char* text;
    };
    const Case cases[] = {
        {1, 0, 0, "1.95"},   {1, 63, 0, "8.09"}, {1, 18, 0, "3.70"}, {1, 64, 0, ""},
        {1, -1, 0, ""},      {2, 0, 0, "2.05"},  {2, 0, 3, "5.05"},  {2, 63, 0, "11.97"},
        {2, 63, 3, "14.97"}, {2, 4, 0, "2.68"},  {2, 13, 3, "7.10"}, {2, 64, 3, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.table) + "/" + std::to_string(c.code));
        EXPECT_EQ(c.table == 1 ? TextTable1(c.code) : TextTable2(c.code, c.offset), c.text);
    }
}

// Every code of every current goes in and comes back, touching only its own six stream bits,
// most significant bit on the lowest stream bit.
TEST(NewLaserStream, EveryCurrentRoundTripsInItsOwnBits) {
    for (int background : {0x00, 0xFF, 0xA5}) {
        for (int ch = 0; ch < 4; ++ch) {
            for (Current w : {Current::IMAX, Current::IMIN}) {
                const int first = kFieldStart[ch][w == Current::IMAX ? 0 : 1];
                for (int code = 0; code < 64; ++code) {
                    QByteArray image(kNewLaserBytes, char(background));
                    const QByteArray before = image;
                    setCurrentCode(image, ch, w, code);
                    ASSERT_EQ(currentCode(image, ch, w), code) << ch << " " << code;
                    for (int n = 0; n < 8 * kNewLaserBytes; ++n) {
                        const bool inField = n >= first && n < first + 6;
                        const bool want =
                            inField ? (code >> (5 - (n - first))) & 1 : streamBit(before, n);
                        ASSERT_EQ(streamBit(image, n), want)
                            << "channel " << ch << " code " << code << " bit " << n;
                    }
                }
            }
        }
    }
}

TEST(NewLaserStream, SplitCurrentsOfChannelOne) {
    QByteArray image(kNewLaserBytes, '\0');
    setCurrentCode(image, 1, Current::IMAX, 63);
    EXPECT_EQ(image.mid(4, 2), bytes({0xC0, 0x0F})) << "bits 6, 7 of byte 4; 0 to 3 of byte 5";
    image.fill('\0');
    setCurrentCode(image, 1, Current::IMAX, 32);
    EXPECT_EQ(image.mid(4, 2), bytes({0x40, 0x00})) << "stream bit 38 alone";
    setCurrentCode(image, 1, Current::IMAX, 1);
    EXPECT_EQ(image.mid(4, 2), bytes({0x00, 0x08})) << "stream bit 43 alone";
    // Byte 5 carries both currents: each keeps the other's half.
    image = QByteArray(kNewLaserBytes, '\0');
    setCurrentCode(image, 1, Current::IMIN, 63);
    setCurrentCode(image, 1, Current::IMAX, 0);
    EXPECT_EQ(quint8(image[5]), 0xF0);
    setCurrentCode(image, 1, Current::IMAX, 63);
    setCurrentCode(image, 1, Current::IMIN, 0);
    EXPECT_EQ(quint8(image[5]), 0x0F);
    EXPECT_EQ(quint8(image[6]), 0x00);
    // Channel 3 splits the same way over bytes 9 to 11.
    image.fill('\0');
    setCurrentCode(image, 3, Current::IMIN, 1);
    EXPECT_EQ(quint8(image[11]), 0x02) << "stream bit 89";
}

TEST(NewLaserStream, DefaultImageAndSmallFields) {
    const QByteArray image = bytes({165, 61, 101, 69, 64, 86, 4, 100, 69, 64, 86, 4, 0});
    EXPECT_TRUE(QByteArray(kNewLaserDefault).startsWith("165,61,101,69,64,86,4,100,69,64,86,4,0,"));
    for (int ch = 0; ch < 4; ++ch) {
        EXPECT_EQ(currentCode(image, ch, Current::IMAX), 38) << ch;
        EXPECT_EQ(currentCode(image, ch, Current::IMIN), 40) << ch;
    }
    EXPECT_EQ(tcMax(image), 2);
    EXPECT_EQ(tcMin(image), 3);
    EXPECT_EQ(iwf(image), 3);
    struct Field {
        int streamBit;
        int tcMax, tcMin, iwf;
    };
    // One stream bit set at a time, and what each small field reads.
    for (const Field& f : {Field{5, 2, 0, 0}, Field{6, 1, 0, 0}, Field{7, 0, 2, 0},
                           Field{8, 0, 1, 0}, Field{9, 0, 0, 4}, Field{11, 0, 0, 1}}) {
        QByteArray one(kNewLaserBytes, '\0');
        one[f.streamBit / 8] = char(1 << (f.streamBit % 8));
        EXPECT_EQ(tcMax(one), f.tcMax) << f.streamBit;
        EXPECT_EQ(tcMin(one), f.tcMin) << f.streamBit;
        EXPECT_EQ(iwf(one), f.iwf) << f.streamBit;
    }
}

// A full image spreads over the rows and is built back from the carriers; the last byte
// keeps only its two stream bits.
TEST(NewLaserStream, CarriersBuildTheThirteenBytes) {
    MapForm f(kNewLaserMap);
    QByteArray all(kNewLaserBytes, char(0xFF));
    spreadImage(f.rows(), kNewLaserMap, all);
    QByteArray want = all;
    want[12] = char(0x03);
    EXPECT_EQ(collectBlock(f.rows(), kNewLaserMap), want);
    // The pieces of channel 1 show only their own bits.
    EXPECT_EQ(f.rows()(23).ReadByte(), 0xF0);
    EXPECT_EQ(f.rows()(20).ReadByte(), 0x30);
    // Carriers edit their own field only.
    f.rows()(4).setBitIndex(1);
    EXPECT_FALSE(f.rows()(4).BitEnable());
    f.rows()(4).setBitIndex(0);
    EXPECT_TRUE(f.rows()(4).BitEnable());
    EXPECT_EQ(f.grid(4).textMatrix(11, 0), "96,97");
}

TEST(OldLaserMap, DefaultsOfTheCarriersAreTheDefaultImage) {
    QByteArray image;
    for (int m : kOldLaserMap.loadOrder)
        image += char(kOldLaserMap.rows[size_t(m)].defaultValue);
    EXPECT_EQ(image, bytes({9, 13, 24, 15, 16, 255, 15, 159}));
}
