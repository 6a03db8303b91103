// The in-process port on the virtual clock: timing, faults, trace, and the link functions on it.
#include "sim/SimTransport.h"
#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ParamBlock.h"
#include "platform/Host.h"
#include "support/RecordingReactions.h"

#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::sim;

namespace {

const QByteArray kParr("PARR\0\0", 6);

struct Bench {
    explicit Bench(const CardConfig& cfg = {}) : card(cfg), port(card, host) {}
    VirtualHost host;
    VirtualCard card;
    SimTransport port;
};

PortFault faultOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const PortError& e) {
        return e.fault;
    }
    ADD_FAILURE() << "no PortError";
    return PortFault::Other;
}

} // namespace

TEST(SimTransport, ReplyArrivesWholeAfterTheLatency) {
    struct Case {
        QByteArray frame;
        int delay;
        int replyBytes;
    };
    const Case cases[] = {
        {"5USB", 0, 6},  {kParr, 0, 32},    {QByteArray("RDDB\xA6\x42\x20\x00", 8), 0, 72},
        {kParr, 40, 32}, {"5USB", 1000, 6},
    };
    for (const Case& c : cases) {
        Bench b;
        b.card.setFaults({.delayMs = c.delay});
        b.host.sleep(100);
        b.port.open();
        b.port.write(c.frame);
        const qint64 due = 100 + 5 + (c.replyBytes + 10) / 11 + c.delay;
        EXPECT_EQ(SimTransport::latency(c.replyBytes, c.delay), due - 100);
        b.host.sleep(int(due - 100 - 1));
        EXPECT_EQ(b.port.bytesAvailable(), 0) << c.frame.toHex().toStdString();
        b.host.sleep(1);
        EXPECT_EQ(b.port.bytesAvailable(), c.replyBytes) << c.frame.toHex().toStdString();
        EXPECT_EQ(b.port.readAll().size(), c.replyBytes);
        EXPECT_EQ(b.port.bytesAvailable(), 0);
    }
}

TEST(SimTransport, TraceHasBothDirectionsOnTheHostClock) {
    Bench b;
    b.host.sleep(1234);
    b.port.open();
    b.port.write(QByteArray("RDEE \xFF", 6));
    b.port.write(QByteArray("WREE\x20\x04\x7F", 7));
    const QStringList t = b.port.traceLines();
    ASSERT_EQ(t.size(), 3);
    EXPECT_EQ(t[0], "1234 > 52 44 45 45 20 FF");
    EXPECT_TRUE(t[1].startsWith("1242 < 52 44 45 45 20 FF 02 ")) << t[1].toStdString();
    EXPECT_EQ(t[1].split(' ').size(), 2 + 32);
    EXPECT_EQ(t[2], "1234 > 57 52 45 45 20 04 7F");
}

TEST(SimTransport, OpenRules) {
    Bench b;
    b.port.setCommPort(9);
    EXPECT_EQ(b.port.commPort(), 9);
    EXPECT_EQ(faultOf([&] { b.port.write("5USB"); }), PortFault::Other) << "closed port";
    b.port.open();
    EXPECT_EQ(faultOf([&] { b.port.open(); }), PortFault::AlreadyOpen);
    b.port.close();
    b.port.setHeldElsewhere(true);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(faultOf([&] { b.port.open(); }), PortFault::AlreadyOpen);
    b.port.setHeldElsewhere(false);
    b.port.open();
    EXPECT_TRUE(b.port.isOpen());
}

TEST(SimTransport, OpenDropsStaleInput) {
    Bench b;
    b.port.open();
    b.port.write(kParr);
    b.port.close();
    b.host.sleep(50);
    b.port.open();
    EXPECT_EQ(b.port.bytesAvailable(), 0);
    // A reply still on its way when the port opens again does arrive.
    b.port.write(kParr);
    b.port.close();
    b.port.open();
    b.host.sleep(50);
    EXPECT_EQ(b.port.bytesAvailable(), 32);
    b.port.clearInput();
    EXPECT_EQ(b.port.bytesAvailable(), 0);
}

TEST(SimTransport, ShortAndSilentFaults) {
    struct Case {
        Faults faults;
        int expected;
    };
    const Case cases[] = {
        {{}, 32},
        {{.silent = true}, 0},
        {{.shortReply = 0}, 0},
        {{.shortReply = 4}, 4},
        {{.shortReply = 7}, 7},
        {{.shortReply = 100}, 32},
    };
    for (const Case& c : cases) {
        Bench b;
        b.card.setFaults(c.faults);
        b.port.open();
        b.port.write(kParr);
        b.host.sleep(100);
        EXPECT_EQ(b.port.readAll().size(), c.expected);
    }
    Bench b;
    b.card.setFaults({.silent = true});
    b.port.open();
    b.port.write(QByteArray("WREE\x20\x04\x11", 7));
    EXPECT_EQ(b.card.ad9888(0x04), 0x11) << "a silent card still takes writes";
}

TEST(SimTransport, UnplugMidExchange) {
    Bench b;
    b.card.setFaults({.unplugAfter = 3});
    b.port.open();
    b.port.write(kParr);
    b.port.write(kParr);
    b.port.write(kParr); // taken, never answered
    EXPECT_TRUE(b.card.unplugged());
    EXPECT_EQ(b.card.framesTaken(), 3);
    b.host.sleep(100);
    EXPECT_EQ(faultOf([&] { b.port.bytesAvailable(); }), PortFault::DeviceGone);
    EXPECT_FALSE(b.port.isOpen());
    EXPECT_EQ(faultOf([&] { b.port.open(); }), PortFault::Other) << "the port is gone";
    EXPECT_EQ(b.port.traceLines().filter(" > ").size(), 3);
    EXPECT_EQ(b.port.traceLines().filter(" < ").size(), 2);
}

TEST(SimTransport, CardPulledWhileThePortIsOpen) {
    struct Case {
        const char* name;
        std::function<void(SimTransport&)> op;
    };
    const Case cases[] = {
        {"write", [](SimTransport& p) { p.write("5USB"); }},
        {"bytesAvailable", [](SimTransport& p) { p.bytesAvailable(); }},
        {"readAll", [](SimTransport& p) { p.readAll(); }},
        {"clearInput", [](SimTransport& p) { p.clearInput(); }},
    };
    for (const Case& c : cases) {
        Bench b;
        b.port.open();
        b.card.unplug();
        EXPECT_EQ(faultOf([&] { c.op(b.port); }), PortFault::DeviceGone) << c.name;
        EXPECT_FALSE(b.port.isOpen()) << c.name;
        b.port.close();
        EXPECT_EQ(faultOf([&] { b.port.open(); }), PortFault::Other) << c.name;
    }
}

// The tool's own link functions over the virtual card.
struct LinkBench : Bench {
    explicit LinkBench(const CardConfig& cfg = {})
        : Bench(cfg), fn(state, host, port, dialogs, reactions) {}
    CardState state;
    ScriptedDialogs dialogs;
    test::RecordingReactions reactions;
    ModFunctions fn;
};

TEST(SimTransportLink, ReadsAndWritesThroughTheLinkFunctions) {
    CardConfig cfg;
    cfg.receiver = true;
    cfg.firmwareMajor = 1;
    cfg.firmwareMinor = 4;
    LinkBench l(cfg);
    ASSERT_TRUE(l.fn.CardPresent());
    const QByteArray p = l.fn.ReadParams(24);
    ASSERT_EQ(p.size(), 26);
    EXPECT_TRUE(ParamBlock::isReceiver(ParamBlock::cardWord(p)));
    EXPECT_EQ(ParamBlock::firmwareText(p), " 1.4");
    l.fn.WriteEE(32, 0x0B, QByteArray(1, char(0x5C)));
    EXPECT_EQ(l.fn.ReadEEByte(32, 0x0B).at(0), char(0x5C));
    l.fn.WriteDB(0x20, 0x40, "slot");
    EXPECT_EQ(l.fn.ReadDB(166, 66, 0x20, 0x40).left(4), QByteArray("slot"));
    QByteArray cmd = "CMDRRMON";
    EXPECT_EQ(l.fn.SendRead(cmd).left(2), QByteArray("OK"));
    EXPECT_TRUE(l.reactions.calls.isEmpty());
}
