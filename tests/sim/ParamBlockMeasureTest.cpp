// The parameter block of each kind of card, and the sync measurement behind it.
#include "link/ParamBlock.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace velmorak;
using namespace velmorak::sim;

namespace {

QByteArray params(VirtualCard& card) {
    return card.receive(QByteArray("PARR\0\0", 6)).mid(6);
}

int at(const QByteArray& b, int pos) {
    return static_cast<quint8>(b.at(pos - 1));
}

} // namespace

TEST(ParamBlockModel, FieldsOfEachConfiguration) {
    struct Case {
        bool receiver, rgb;
        int fibres;
        bool shv;
        int major, minor;
        int pos9;
        int pos11;
    };
    const Case cases[] = {
        {false, true, 2, false, 2, 3, 0x80, 0xA0},  {true, true, 2, false, 2, 3, 0x80, 0xA0},
        {false, true, 1, true, 1, 5, 0xC4, 0x90},   {true, false, 1, false, 2, 7, 0x04, 0x70},
        {false, false, 2, false, 3, 0, 0x00, 0x70},
    };
    for (const Case& c : cases) {
        CardConfig cfg;
        cfg.receiver = c.receiver;
        cfg.rgb = c.rgb;
        cfg.fibres = c.fibres;
        cfg.shv = c.shv;
        cfg.firmwareMajor = c.major;
        cfg.firmwareMinor = c.minor;
        VirtualCard card(cfg);
        const QByteArray p = params(card);
        ASSERT_EQ(p.size(), 26);
        SCOPED_TRACE(testing::Message() << "receiver " << c.receiver << " rgb " << c.rgb);
        EXPECT_EQ(at(p, 9), c.pos9);
        EXPECT_EQ(at(p, 11), c.pos11);
        EXPECT_EQ(ParamBlock::isReceiver(ParamBlock::cardWord(p)), c.receiver);
        EXPECT_EQ(ParamBlock::isRgb(p), c.rgb);
        EXPECT_EQ(ParamBlock::isShv(p), c.shv);
        EXPECT_EQ(ParamBlock::fibres(p), c.fibres);
        EXPECT_EQ(ParamBlock::firmwareMajor(p), c.major);
        EXPECT_EQ(at(p, 24), c.minor);
        const SyncCounts want = c.rgb ? measure({1024, 768, 75}, c.major) : SyncCounts{};
        EXPECT_EQ(ParamBlock::syncV(p), want.syncV);
        EXPECT_EQ(ParamBlock::syncH(p), want.syncH);
    }
}

TEST(ParamBlockModel, HealthCodesReadAsPlausibleValues) {
    VirtualCard card;
    const QByteArray p = params(card);
    const double t = (at(p, 1) - 42) * 0.04 + (at(p, 1) - 42);
    EXPECT_NEAR(t, 35.0, 1.0);
    EXPECT_NEAR(at(p, 3) / 60.0, 3.3, 0.02);
    EXPECT_NEAR(at(p, 4) / 40.0, 5.0, 0.02);
    EXPECT_NEAR(at(p, 5) / 60.0, 3.3, 0.02);
}

TEST(ParamBlockModel, SwitchesAndLeds) {
    struct Case {
        int switches, diag, tx, rx;
        int pos9, pos10;
    };
    const Case cases[] = {
        {0, 2, 2, 2, 0x80, 0x2A},
        {1 << 2 | 1 << 7, 2, 1, 3, 0xA1, 0x27},
        {1 << 3 | 1 << 4 | 1 << 6, 1, 0, 2, 0x9A, 0x12},
        {1 << 8 | 1 << 9 | 1 << 0 | 1 << 5, 3, 3, 0, 0x80, 0xFC}, // 0 and 5 come from the mode
    };
    for (const Case& c : cases) {
        CardConfig cfg;
        cfg.switches = c.switches;
        cfg.ledDiagnostics = c.diag;
        cfg.ledTxError = c.tx;
        cfg.ledRxError = c.rx;
        VirtualCard card(cfg);
        const QByteArray p = params(card);
        EXPECT_EQ(at(p, 9), c.pos9) << c.switches;
        EXPECT_EQ(at(p, 10), c.pos10) << c.switches;
    }
}

TEST(ParamBlockModel, NoSourceNoSync) {
    VirtualCard card;
    card.setSource(std::nullopt);
    const QByteArray p = params(card);
    EXPECT_EQ(p.mid(14, 4), QByteArray(4, '\0'));
    EXPECT_EQ(card.ad9888(0x14), 0);
    card.setSource(VideoMode{800, 600, 60});
    EXPECT_NE(params(card).mid(14, 4), QByteArray(4, '\0'));
    EXPECT_EQ(card.ad9888(0x14) & 0x90, 0x90) << "hsync and vsync detected";
}

TEST(ParamBlockModel, DviSourceIsReportedByTheTransmitter) {
    const VideoMode modes[] = {{1280, 1024, 60}, {640, 480, 60}, {1920, 1080, 60}};
    CardConfig cfg;
    cfg.rgb = false;
    VirtualCard card(cfg);
    for (const VideoMode& m : modes) {
        card.setSource(m);
        // The tool takes characters 5..8 of the short transmitter read.
        const QByteArray r = card.receive(QByteArray("RDEE\x60\xFE", 6)).mid(6);
        EXPECT_EQ(at(r, 6) * 256 + at(r, 5), m.width);
        EXPECT_EQ(at(r, 8) * 256 + at(r, 7), m.height);
        EXPECT_EQ(params(card).mid(14, 4), QByteArray(4, '\0')) << "no analogue sync";
    }
}

TEST(Measurement, CountsGiveBackTheRates) {
    const VideoMode modes[] = {{640, 480, 60},   {800, 600, 72},   {1024, 768, 75},
                               {1280, 1024, 60}, {1600, 1200, 85}, {1920, 1080, 60},
                               {1024, 768, 72},  {1000, 700, 50}};
    for (const VideoMode& m : modes) {
        SCOPED_TRACE(videoModeName(m).toStdString());
        const LineTiming lt = lineTiming(m);
        const SyncCounts v1 = measure(m, 1);
        EXPECT_NEAR(1562500.0 / (v1.syncV / 2.0), lt.frameRate(), lt.frameRate() * 0.001);
        EXPECT_NEAR(50000000.0 / (v1.syncH / 32.0), lt.lineRate(), lt.lineRate() * 0.001);
        const SyncCounts v2 = measure(m, 2);
        EXPECT_NEAR(195312.0 / v2.syncV, lt.frameRate(), lt.frameRate() * 0.001);
        EXPECT_EQ(v2.syncH / 2, lt.vTotal);
        EXPECT_EQ(measure(m, 5), v2) << "later firmware counts as 2";
        EXPECT_NEAR(lt.frameRate(), m.rate, 1.0);
    }
}

TEST(Measurement, KnownValues) {
    struct Case {
        VideoMode mode;
        int major;
        SyncCounts counts;
        int hTotal, vTotal;
        bool fromTable;
    };
    const Case cases[] = {
        {{1024, 768, 75}, 2, {2603, 1600}, 1312, 800, true},
        {{1024, 768, 75}, 1, {41651, 26657}, 1312, 800, true},
        {{640, 480, 60}, 2, {3258, 1050}, 800, 525, true},
        {{1024, 768, 72}, 2, {2713, 1606}, 1352, 803, false},
        {{320, 200, 20}, 1, {156250, 65535}, 422, 209, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(videoModeName(c.mode).toStdString());
        const LineTiming lt = lineTiming(c.mode);
        EXPECT_EQ(lt.hTotal, c.hTotal);
        EXPECT_EQ(lt.vTotal, c.vTotal);
        EXPECT_EQ(lt.fromTable, c.fromTable);
        const SyncCounts s = measure(c.mode, c.major);
        EXPECT_EQ(s.syncV, std::min(c.counts.syncV, 65535));
        EXPECT_EQ(s.syncH, c.counts.syncH);
    }
}

TEST(Measurement, ParsesModeNames) {
    EXPECT_EQ(parseVideoMode("1024x768x75"), (VideoMode{1024, 768, 75}));
    EXPECT_EQ(parseVideoMode(" 640X480x60 "), (VideoMode{640, 480, 60}));
    for (const char* bad : {"none", "1024x768", "1024x768x", "0x768x60", "axbxc", ""})
        EXPECT_FALSE(parseVideoMode(bad).has_value()) << bad;
}
