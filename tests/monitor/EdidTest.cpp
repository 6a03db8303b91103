// The built-in monitor images and the decoder, against hand-read values and edid-decode.
#include "EdidTools.h"

#include "monitor/Edid.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::edidDecode;
using velmorak::test::harrier24;

namespace {

int sum(const QByteArray& b, int from, int n) {
    int s = 0;
    for (int i = from; i < from + n; ++i)
        s += quint8(b[i]);
    return s % 256;
}

struct Expect {
    const char* what;
    QByteArray edid;
    const char* maker;
    int product;
    quint32 serial;
    int week, year, revision;
    bool digital;
    const char* input;
    int wCm, hCm;
    int clockKHz, hActive, vActive;
    double refresh;
    const char* name;
    int extensions;
    int sums[2]; // stored checksum of each block, -1: not checked
};

const char* const kAnalogue =
    "Analogue, 0.700/0.300 V, separate sync, composite sync, sync on green, serration";

// What, image; maker, product, serial; week, year, revision; digital, input; size in cm; pixel
// clock, active lines; refresh; name; extension blocks; stored checksums.
std::vector<Expect> images() {
    // clang-format off
    return {
        {"DVI", defaultEdid(DefaultEdid::Dvi), "VLM", 6404, 76319, 27, 2008, 3, true, "Digital",
         38, 30, 108000, 1280, 1024, 60.02, "Kestrel 19", 0, {0x13, -1}},
        {"RGB", defaultEdid(DefaultEdid::Rgb), "VLM", 6404, 76319, 27, 2008, 3, false, kAnalogue,
         38, 30, 108000, 1280, 1024, 60.02, "Kestrel 19", 0, {0x84, -1}},
        {"virtual card", sim::VirtualCard::defaultEdid(false).left(128), "KRV", 0x1780, 4711, 12,
         2008, 3, false, kAnalogue, 34, 27, 108000, 1280, 1024, 60.02, "KRV Luma17", 0, {-1, -1}},
        {"Harrier 24", harrier24(), "HRR", 9240, 12345, 255, 2022, 4, true,
         "Digital, DVI, 8 bits per colour", 52, 32, 154000, 1920, 1200, 59.95, "Harrier 24", 1,
         {0x41, 0xF7}},
    };
    // clang-format on
}

} // namespace

TEST(Edid, BuiltInImagesDifferOnlyInInputAndChecksum) {
    const QByteArray dvi = defaultEdid(DefaultEdid::Dvi);
    const QByteArray rgb = defaultEdid(DefaultEdid::Rgb);
    ASSERT_EQ(dvi.size(), 128);
    ASSERT_EQ(rgb.size(), 128);
    std::vector<int> differ;
    for (int i = 0; i < 128; ++i)
        if (dvi[i] != rgb[i]) differ.push_back(i);
    EXPECT_EQ(differ, (std::vector<int>{20, 127}));
    EXPECT_EQ(quint8(dvi[20]), 0x80);
    EXPECT_EQ(quint8(rgb[20]), 0x0F);
    EXPECT_EQ(sum(dvi, 0, 128), 0);
    EXPECT_EQ(sum(rgb, 0, 128), 0);
    // Six lines in the lengths of the first six slices.
    for (DefaultEdid which : {DefaultEdid::Dvi, DefaultEdid::Rgb}) {
        const char* const* lines = defaultEdidLines(which);
        for (int k = 0; k < kSlicesPerBlock; ++k)
            EXPECT_EQ(QString::fromLatin1(lines[k]).split(',').size(), k < 4 ? 24 : 16) << k;
    }
}

// edid-decode finds nothing wrong with either image, checksum included.
TEST(Edid, BuiltInImagesPassTheConformityCheck) {
    for (DefaultEdid which : {DefaultEdid::Dvi, DefaultEdid::Rgb}) {
        const QString report = edidDecode(defaultEdid(which), true);
        ASSERT_FALSE(report.isEmpty()) << "edid-decode is missing (scripts/install-deps)";
        EXPECT_TRUE(report.contains("EDID conformity: PASS")) << report.toStdString();
        EXPECT_FALSE(report.contains("Invalid checksum"));
    }
}

TEST(Edid, SlicesCoverTwoBlocksInOrder) {
    int next = 0;
    for (const MonitorSlice& s : kMonitorSlices) {
        EXPECT_EQ(s.start, next);
        EXPECT_EQ(s.pauseMs, s.length == 24 ? 500 : 300);
        next += s.length;
    }
    EXPECT_EQ(next, 256);
    EXPECT_EQ(kMonitorSlices[kSlicesPerBlock].start, 128);
}

TEST(Edid, DecodesTheFieldsAsRead) {
    for (const Expect& e : images()) {
        SCOPED_TRACE(e.what);
        const EdidInfo i = decodeEdid(e.edid);
        EXPECT_TRUE(i.headerOk);
        EXPECT_EQ(i.manufacturer, e.maker);
        EXPECT_EQ(i.productCode, e.product);
        EXPECT_EQ(i.serialNumber, e.serial);
        EXPECT_EQ(i.week, e.week);
        EXPECT_EQ(i.year, e.year);
        EXPECT_EQ(i.version, 1);
        EXPECT_EQ(i.revision, e.revision);
        EXPECT_EQ(i.digital, e.digital);
        EXPECT_EQ(i.input, e.input);
        EXPECT_EQ(i.widthCm, e.wCm);
        EXPECT_EQ(i.heightCm, e.hCm);
        EXPECT_EQ(i.pixelClockKHz, e.clockKHz);
        EXPECT_EQ(i.hActive, e.hActive);
        EXPECT_EQ(i.vActive, e.vActive);
        EXPECT_NEAR(i.refreshHz(), e.refresh, 0.005);
        EXPECT_EQ(i.monitorName, e.name);
        EXPECT_EQ(i.extensions, e.extensions);
        ASSERT_EQ(i.blocks.size(), size_t(e.extensions + 1));
        for (size_t k = 0; k < i.blocks.size(); ++k) {
            EXPECT_TRUE(i.blocks[k].ok()) << k;
            if (e.sums[k] >= 0) {
                EXPECT_EQ(i.blocks[k].stored, e.sums[k]) << k;
            }
        }
    }
}

// A wrong stored checksum is told with the byte that would be right; the other block stays good.
TEST(Edid, ChecksumStateOfEachBlock) {
    QByteArray b = harrier24();
    b[127] = char(0x40);
    b[200] = char(0x55); // second block off by 0x55
    const EdidInfo i = decodeEdid(b);
    ASSERT_EQ(i.blocks.size(), 2u);
    EXPECT_EQ(i.blocks[0].stored, 0x40);
    EXPECT_EQ(i.blocks[0].computed, 0x41);
    EXPECT_EQ(i.blocks[1].stored, 0xF7);
    EXPECT_EQ(i.blocks[1].computed, 0xF7 - 0x55);
    const QStringList lines = describeEdid(i);
    EXPECT_TRUE(lines.contains("Checksum of block 0: 40 wrong, should be 41"));
    EXPECT_TRUE(lines.contains("Checksum of block 1: F7 wrong, should be A2"));
}

TEST(Edid, DescribesForPeople) {
    const QStringList lines = describeEdid(decodeEdid(defaultEdid(DefaultEdid::Dvi)));
    for (const char* want :
         {"Manufacturer: VLM", "Product code: 6404 (1904H)", "Serial number: 76319",
          "Made in: week 27 of 2008", "EDID version: 1.3", "Input: Digital",
          "Screen size: 38 x 30 cm", "Preferred timing: 1280x1024 at 60.02 Hz, 108.00 MHz",
          "Monitor name: Kestrel 19", "Serial text: VLM8F076319", "Extension blocks: 0",
          "Checksum of block 0: 13 correct"})
        EXPECT_TRUE(lines.contains(want)) << want << "\n" << lines.join('\n').toStdString();
    const QStringList garbage = describeEdid(decodeEdid(QByteArray(128, char(0xFF))));
    EXPECT_EQ(garbage.first(), "Header: not an EDID header");
}
