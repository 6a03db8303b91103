// The card model on its own: frames in, replies out, memories behind them.
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak::sim;

namespace {

QByteArray frame(const char* key, std::initializer_list<int> bytes, const QByteArray& tail = {}) {
    QByteArray f(key, 4);
    for (int b : bytes)
        f += static_cast<char>(b);
    return f + tail;
}

QByteArray pattern(int n, int start) {
    QByteArray b;
    for (int i = 0; i < n; ++i)
        b += static_cast<char>(start + i);
    return b;
}

int u8(const QByteArray& b, int i) {
    return static_cast<quint8>(b.at(i));
}

} // namespace

TEST(VirtualCard, ReplyLengthsAndHeads) {
    struct Case {
        const char* name;
        QByteArray frame;
        int length;
    };
    const Case cases[] = {
        {"probe", "5USB", 6},
        {"params", frame("PARR", {0, 0}), 32},
        {"ad9888 image", frame("RDEE", {32, 255}), 32},
        {"ad9888 short", frame("RDEE", {32, 254}), 32},
        {"tx image", frame("RDEE", {96, 255}), 32},
        {"tx short", frame("RDEE", {96, 254}), 32},
        {"laser image", frame("RDEE", {64, 255}), 34},
        {"laser serial", frame("RDEE", {88, 255}), 32},
        {"monitor", frame("RDEE", {128, 240}), 32},
        {"single register", frame("RDEE", {32, 4}), 9},
        {"data 66", frame("RDDB", {166, 66, 0x20, 0}), 72},
        {"data 30", frame("RDDB", {166, 30, 0, 0}), 36},
        {"data 8 padded", frame("RDDB", {166, 8, 0, 0}), 32},
        {"refresh monitor", "CMDRRMON", 8},
        {"send monitor on", "CMDRTMIN", 8},
        {"register write", frame("WREE", {32, 4}, "A"), 0},
        {"block write", frame("WREE", {32, 255}, pattern(23, 1)), 0},
        {"data write", frame("WRDB", {166, 66, 0, 0}, "x"), 0},
        {"monitor write", frame("WRM2", {0, 'M'}, "x"), 0},
        {"unknown keyword", frame("ABCD", {1, 2}), 0},
        {"unknown chip", frame("RDEE", {50, 255}), 0},
        {"other data device", frame("RDDB", {160, 30, 0, 0}), 0},
        {"truncated read", "RDEE", 0},
    };
    for (const Case& c : cases) {
        VirtualCard card;
        const QByteArray r = card.receive(c.frame);
        EXPECT_EQ(r.size(), c.length) << c.name;
        if (c.length > 6) {
            EXPECT_EQ(r.left(6), c.frame.left(6)) << c.name;
        }
    }
}

TEST(VirtualCard, SingleRegisterWritesAndReadOnlyRegisters) {
    struct Case {
        int chip, reg, value;
        bool kept; // the register ignores the write
    };
    const Case cases[] = {
        {32, 0x04, 0x5A, false}, {32, 0x17, 0x11, false}, {32, 0x00, 0x77, true},
        {32, 0x14, 0x00, true},  {32, 0x19, 0x33, true},  {96, 0x08, 0x3C, false},
        {96, 0x33, 0x01, false}, {96, 0x02, 0x99, true},  {96, 0x3B, 0x05, true},
        {64, 5, 0x77, false},    {64, 27, 0x01, false},   {88, 2, 'Z', false},
    };
    for (const Case& c : cases) {
        VirtualCard card;
        const QByteArray before = card.receive(frame("RDEE", {c.chip, c.reg}));
        ASSERT_EQ(before.size(), 9);
        card.receive(frame("WREE", {c.chip, c.reg, c.value}));
        const QByteArray after = card.receive(frame("RDEE", {c.chip, c.reg}));
        ASSERT_EQ(after.size(), 9);
        EXPECT_EQ(u8(after, 6), c.kept ? u8(before, 6) : c.value) << c.chip << "/" << c.reg;
        EXPECT_EQ(after.mid(7), before.mid(7)) << "neighbours untouched";
    }
}

TEST(VirtualCard, AdBlockWriteSkipsRevisionAndStatus) {
    VirtualCard card;
    const int rev = card.ad9888(0x00);
    const int status = card.ad9888(0x14);
    ASSERT_NE(status, 0) << "a source is present";
    const QByteArray block = pattern(23, 0x10);
    card.receive(frame("WREE", {32, 255}, block));
    const QByteArray img = card.receive(frame("RDEE", {32, 255})).mid(6);
    ASSERT_EQ(img.size(), 26);
    EXPECT_EQ(u8(img, 0), rev);
    for (int r = 1; r <= 0x17; ++r)
        EXPECT_EQ(u8(img, r), r == 0x14 ? status : 0x10 + r - 1) << r;
    const QByteArray shortRead = card.receive(frame("RDEE", {32, 254})).mid(6);
    EXPECT_EQ(u8(shortRead, 0), card.ad9888(0x18));
    EXPECT_EQ(u8(shortRead, 1), card.ad9888(0x19));
    EXPECT_EQ(shortRead.mid(2), QByteArray(24, '\0'));
}

TEST(VirtualCard, RefusedRegisterKeepsItsValue) {
    CardConfig cfg;
    cfg.refuseRegister = 0x05;
    VirtualCard card(cfg);
    const int old = card.ad9888(0x05);
    card.receive(frame("WREE", {32, 255}, QByteArray(23, char(0x33))));
    card.receive(frame("WREE", {32, 0x05, 0x44}));
    EXPECT_EQ(card.ad9888(0x05), old);
    EXPECT_EQ(card.ad9888(0x06), 0x33);
    card.setRefusedRegister(96, 0x08);
    card.receive(frame("WREE", {96, 0x08, 0x01}));
    EXPECT_NE(card.transmitter(0x08), 0x01);
    card.receive(frame("WREE", {32, 0x05, 0x44}));
    EXPECT_EQ(card.ad9888(0x05), 0x44);
}

TEST(VirtualCard, TransmitterBlockCoversItsElevenRegisters) {
    VirtualCard card;
    card.receive(frame("WREE", {96, 255}, pattern(11, 0xA0)));
    const QByteArray low = card.receive(frame("RDEE", {96, 255})).mid(6);
    const QByteArray high = card.receive(frame("RDEE", {96, 254})).mid(6);
    EXPECT_EQ(low.mid(8, 3), pattern(3, 0xA0)) << "08H..0AH";
    QByteArray want = pattern(8, 0xA3);
    want[3] = '\0'; // 35H is reserved and keeps its value
    EXPECT_EQ(high.left(8), want) << "32H..39H";
    EXPECT_EQ(low.mid(15), QByteArray(11, '\0')) << "padding";
    EXPECT_EQ(high.mid(12), QByteArray(14, '\0')) << "padding";
    EXPECT_EQ(low.left(4), QByteArray("\x47\x1D\x21\x0A", 4)) << "identity untouched";
}

// The laser block keeps what was written, but for the bits the driver sets itself.
TEST(VirtualCard, LaserImageAndSerialRoundTrip) {
    struct Case {
        const char* name;
        CardConfig config;
        QByteArray written, read; // the first 13 bytes
    };
    CardConfig old, newer, byFirmware;
    old.laser = LaserKind::Old;
    newer.laser = LaserKind::New;
    byFirmware.firmwareMajor = 12;
    const QByteArray ones(13, char(0xFF));
    QByteArray newOnes = ones;
    for (int i : {4, 9})
        newOnes[i] = char(0xC3); // latched faults and reserved bits read 0
    for (int i : {6, 11})
        newOnes[i] = char(0x3F);
    newOnes[7] = char(0xFC);
    newOnes[12] = char(0x03);
    const QByteArray plain("\x09\x0D\x18\x0F\x10\xFF\x0F\x1F\x00\x00\x00\x00\x00", 13);
    QByteArray oldPlain = plain;
    oldPlain[4] = char(0x90); // "Test" reads 1
    oldPlain[7] = char(0x9F); // the laser reads enabled
    QByteArray clear = plain;
    clear[3] = char(0x1F); // "Clear Registers": back to the power-on registers
    const QByteArray powerOn("\x09\x0D\x18\x0F\x90\xFF\x0F\x9F\x00\x00\x00\x00\x00", 13);
    const Case cases[] = {
        {"old", old, plain, oldPlain},
        {"old, clear registers", old, clear, powerOn},
        {"new", newer, ones, newOnes},
        {"new by firmware", byFirmware, ones, newOnes},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        VirtualCard card(c.config);
        QByteArray image = c.written + pattern(15, 0x40);
        card.receive(frame("WREE", {64, 255}, image));
        const QByteArray reply = card.receive(frame("RDEE", {64, 255})).mid(6);
        EXPECT_EQ(reply.left(13), c.read);
        EXPECT_EQ(reply.mid(13), image.mid(13));
    }
    VirtualCard card;
    card.receive(frame("WREE", {88, 255}, "Q7731"));
    const QByteArray s = card.receive(frame("RDEE", {88, 255})).mid(6);
    EXPECT_EQ(s.left(5), QByteArray("Q7731"));
    EXPECT_EQ(s.mid(5), QByteArray(21, '\0'));
}

TEST(VirtualCard, LaserStartsWithTheImageOfItsKind) {
    CardConfig newer;
    newer.firmwareMajor = 15;
    EXPECT_EQ(VirtualCard().laserImage().left(8),
              QByteArray("\x09\x0D\x18\x0F\x90\xFF\x0F\x9F", 8));
    EXPECT_EQ(VirtualCard(newer).laserImage().left(13),
              QByteArray("\xA5\x3D\x65\x45\x40\x56\x04\x64\x45\x40\x56\x04\x00", 13));
}

TEST(VirtualCard, DataMemoryRoundTripsAndWraps) {
    struct Case {
        int address, length, count;
    };
    const Case cases[] = {
        {0x0000, 32, 30}, {0x0500, 96, 66}, {0x18E0, 24, 66}, {0x2000, 66, 66}, {0xFFF0, 40, 66},
    };
    for (const Case& c : cases) {
        VirtualCard card;
        const QByteArray data = pattern(c.length, c.address & 0x7F);
        EXPECT_TRUE(card.receive(frame("WRDB", {166, 66, c.address >> 8, c.address & 0xFF}, data))
                        .isEmpty());
        const QByteArray r =
            card.receive(frame("RDDB", {166, c.count, c.address >> 8, c.address & 0xFF})).mid(6);
        ASSERT_EQ(r.size(), c.count);
        const int n = std::min(c.length, c.count);
        EXPECT_EQ(r.left(n), data.left(n)) << c.address;
        EXPECT_EQ(card.dataMemory(c.address, c.length), data) << c.address;
    }
    VirtualCard card;
    card.receive(frame("WRDB", {166, 66, 0xFF, 0xFE}, "abcd"));
    EXPECT_EQ(card.dataMemory(0, 2), QByteArray("cd")) << "wraps at 64 KiB";
}

// A memory that keeps only the first N bytes of a write leaves the rest as it was.
TEST(VirtualCard, ShortDataMemoryWrites) {
    for (int kept : {0, 16, 30}) {
        SCOPED_TRACE(kept);
        VirtualCard card;
        card.setFaults({.dataWriteBytes = kept});
        card.receive(frame("WRDB", {166, 66, 0x20, 0x20}, pattern(30, 1)));
        const QByteArray m = card.dataMemory(0x2020, 32);
        EXPECT_EQ(m.left(kept), pattern(kept, 1));
        EXPECT_EQ(m.mid(kept), QByteArray(32 - kept, char(0xFF)));
    }
}

TEST(VirtualCard, StartsWithRecordsInDataMemory) {
    VirtualCard card;
    const QByteArray version = card.receive(frame("RDDB", {166, 66, 24, 224})).mid(6);
    EXPECT_EQ(version.left(24), QByteArray("UVersion 2.06 01/23/2009"));
    EXPECT_EQ(version.mid(8, 6), QByteArray(" 2.06 "));
    const QByteArray counters = card.dataMemory(0, 30);
    EXPECT_EQ(u8(counters, 1) + 256 * u8(counters, 2) + 65536 * u8(counters, 3), 412);
    EXPECT_EQ(int((u8(counters, 4) - 42) * 0.6), 48);
    EXPECT_EQ(card.dataMemory(0x40, 30).trimmed(), QByteArray("VK-4410-TX"));
    EXPECT_EQ(card.dataMemory(0x60, 30).size(), 30);
    const int firstRepair = u8(card.dataMemory(0x500, 1), 0);
    EXPECT_TRUE(firstRepair < 30 || firstRepair > 127) << "empty table of repairs";
}

TEST(VirtualCard, TestHooksSetAnyRegisterAndPullTheCard) {
    VirtualCard card;
    card.setRegister(32, 0x14, 0x00);
    card.setRegister(96, 0x3A, 0x12);
    card.setRegister(88, 4, 'x');
    EXPECT_EQ(card.registerValue(32, 0x14), 0x00);
    EXPECT_EQ(card.registerValue(96, 0x3A), 0x12);
    EXPECT_EQ(card.laserSerial().at(4), 'x');
    EXPECT_EQ(card.registerValue(32, 0x40), 0) << "outside the chip";
    card.unplug();
    EXPECT_TRUE(card.receive("5USB").isEmpty());

    VirtualCard armed;
    armed.setFaults({.unplugOn = "RDEE", .unplugOnNth = 2});
    EXPECT_FALSE(armed.receive("5USB").isEmpty());
    EXPECT_FALSE(armed.receive(QByteArray("RDEE\x20\xFE", 6)).isEmpty()) << "the first";
    EXPECT_FALSE(armed.unplugged());
    EXPECT_TRUE(armed.receive(QByteArray("RDEE\x20\xFF", 6)).isEmpty()) << "taken, unanswered";
    EXPECT_TRUE(armed.unplugged());
}
