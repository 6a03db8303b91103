// The card protocol on the virtual clock: frames, pauses, thresholds, reply cutting, failures.
#include "link/ModFunctions.h"
#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/LinkReactions.h"
#include "link/Transport.h"
#include "platform/Host.h"
#include "sim/SimTransport.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

#include <functional>

using namespace velmorak;

namespace {

const QByteArray kNul(1, '\0');
const QString kTerm = "No USB connection. The program is terminated.";
const QString kNoUsb = "No USB connection. ";

// The port over the virtual card, failing one chosen operation once. The failure leaves the
// port as it was, open included, as a serial port does that reports an error.
class FlakyPort : public Transport {
  public:
    enum Op { None, Open, Write, Poll };
    explicit FlakyPort(Transport& inner) : inner_(inner) {}
    void failOn(Op op, PortFault fault) {
        op_ = op;
        fault_ = fault;
    }
    void setCommPort(int n) override { inner_.setCommPort(n); }
    int commPort() const override { return inner_.commPort(); }
    void open() override {
        check(Open);
        inner_.open();
    }
    void close() override { inner_.close(); }
    bool isOpen() const override { return inner_.isOpen(); }
    void write(const QByteArray& b) override {
        check(Write);
        inner_.write(b);
    }
    int bytesAvailable() override {
        check(Poll);
        return inner_.bytesAvailable();
    }
    QByteArray readAll() override { return inner_.readAll(); }
    void clearInput() override { inner_.clearInput(); }

  private:
    void check(Op op) {
        if (op != op_) return;
        op_ = None;
        throw PortError(fault_, QStringLiteral("injected"));
    }
    Transport& inner_;
    Op op_ = None;
    PortFault fault_ = PortFault::Other;
};

// Message boxes and window reactions in one list, each stamped with the virtual time.
struct Events {
    const Host& host;
    QStringList list;
    void add(const QString& what) { list << QString::number(host.now()) + ' ' + what; }
};

class EventDialogs : public ScriptedDialogs {
  public:
    explicit EventDialogs(Events& e) : ev_(e) {}
    MsgResult messageBox(const QString& text, MsgButtons b, const QString& title,
                         MsgIcon icon) override {
        ev_.add("box " + text);
        return ScriptedDialogs::messageBox(text, b, title, icon);
    }

  private:
    Events& ev_;
};

class EventReactions : public LinkReactions {
  public:
    explicit EventReactions(Events& e) : ev_(e) {}
    void unloadAll() override { ev_.add("unloadAll"); }
    void unloadOthers() override { ev_.add("unloadOthers"); }
    void lostCard(bool editors) override { ev_.add(editors ? "lostCard+editors" : "lostCard"); }

  private:
    Events& ev_;
};

struct Bench {
    VirtualHost host;
    CardState state;
    sim::VirtualCard card;
    sim::SimTransport wire{card, host};
    FlakyPort port{wire};
    Events events{host, {}};
    EventDialogs dialogs{events};
    EventReactions reactions{events};
    ModFunctions fn{state, host, port, dialogs, reactions};

    // Cut every reply to n bytes; 0: the card stays silent; -1: whole replies.
    void replies(int n) {
        sim::Faults f = card.faults();
        f.silent = n == 0;
        f.shortReply = n > 0 ? n : -1;
        card.setFaults(f);
    }
    QStringList trace() const { return wire.traceLines(); }
};

using Call = std::function<QByteArray(ModFunctions&)>;

QByteArray sendRead(ModFunctions& f, const char* command) {
    QByteArray c(command);
    return f.SendRead(c);
}

// A write as a call that returns nothing.
Call write(std::function<void(ModFunctions&)> w) {
    return [w](ModFunctions& f) {
        w(f);
        return QByteArray();
    };
}

const Call kReadEE = [](ModFunctions& f) { return f.ReadEE(32, 62); };
const Call kReadDB = [](ModFunctions& f) { return f.ReadDB(166, 66, 0x20, 0); };
const Call kReadParams = [](ModFunctions& f) { return f.ReadParams(24); };
const Call kReadEEByte = [](ModFunctions& f) { return f.ReadEEByte(32, 3); };
const Call kSendRead = [](ModFunctions& f) { return sendRead(f, "CMDRRMON"); };
const Call kWriteEE = write([](ModFunctions& f) { f.WriteEE(32, 1, "A"); });
const Call kWriteEEBlock = write([](ModFunctions& f) { f.WriteEEBlock(32, "AB"); });
const Call kWriteDB = write([](ModFunctions& f) { f.WriteDB(1, 2, "AB"); });
const Call kWriteM2 = write([](ModFunctions& f) { f.WriteM2(0, "AB"); });

} // namespace

// Each function's frame, when it goes on the wire and how long the exchange takes; the card
// answers at once, so a read costs its pauses, one pump of the wait, its drain, and for the block
// readers one pump per payload byte and one more.
TEST(ModFunctions, FramesAndPauses) {
    struct Row {
        const char* name;
        Call call;
        const char* frame; // "<ms sent> > hex"
        qint64 duration;
    };
    const Row table[] = {
        {"ReadEE image", kReadEE, "0 > 52 44 45 45 20 FF", 91},
        {"ReadEE short class", [](ModFunctions& f) { return f.ReadEE(32, 8); },
         "0 > 52 44 45 45 20 FE", 91},
        {"ReadEE len 9", [](ModFunctions& f) { return f.ReadEE(32, 9); }, "0 > 52 44 45 45 20 FF",
         91},
        {"ReadEE monitor 8", [](ModFunctions& f) { return f.ReadEE(128, 8); },
         "0 > 52 44 45 45 80 08", 91},
        {"ReadEE monitor 255", [](ModFunctions& f) { return f.ReadEE(128, 255); },
         "0 > 52 44 45 45 80 FF", 91},
        {"ReadEEByte", [](ModFunctions& f) { return f.ReadEEByte(32, 5); }, "0 > 52 44 45 45 20 05",
         131},
        {"ReadDB", [](ModFunctions& f) { return f.ReadDB(166, 66, 0x20, 0x40); },
         "0 > 52 44 44 42 A6 42 20 40", 91},
        {"ReadParams 24", kReadParams, "0 > 50 41 52 52 00 00", 20 + 1 + 20 + 26 + 1},
        {"ReadParams 8", [](ModFunctions& f) { return f.ReadParams(8); }, "0 > 50 41 52 52 00 01",
         20 + 1 + 20 + 26 + 1},
        {"SendRead", kSendRead, "0 > 43 4D 44 52 52 4D 4F 4E", 20 + 1 + 2000 + 2 + 1},
        {"WriteEE", write([](ModFunctions& f) { f.WriteEE(32, 7, QByteArray(1, char(0x9C))); }),
         "10 > 57 52 45 45 20 07 9C", 50},
        {"WriteEEBlock", write([](ModFunctions& f) { f.WriteEEBlock(96, "\x01\x02"); }),
         "10 > 57 52 45 45 60 FF 01 02", 810},
        {"WriteDB empty", write([](ModFunctions& f) { f.WriteDB(0x18, 0xE0, QByteArray()); }),
         "10 > 57 52 44 42 A6 42 18 E0", 1010},
        {"WriteDB data", write([](ModFunctions& f) { f.WriteDB(0x20, 0x20, "AB"); }),
         "10 > 57 52 44 42 A6 42 20 20 41 42", 1010},
        {"WriteM2", write([](ModFunctions& f) { f.WriteM2(24, QByteArray(2, '\0')); }),
         "10 > 57 52 4D 32 18 4D 00 00", 1010},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench b;
        b.state.LinkIdleCount = 77;
        row.call(b.fn);
        EXPECT_EQ(b.host.now(), row.duration);
        ASSERT_FALSE(b.trace().isEmpty());
        EXPECT_EQ(b.trace().first(), row.frame);
        EXPECT_EQ(b.state.LinkIdleCount, 0);
        EXPECT_FALSE(b.port.isOpen());
        EXPECT_FALSE(b.state.Timer2.Enabled);
        EXPECT_EQ(b.state.ReplyTimedOut, 0);
        EXPECT_TRUE(b.events.list.isEmpty());
    }
}

// Replies of every length around each threshold: a reply that reaches it ends the wait at once,
// a shorter one waits for the time-out (1200 ms from 40 ms for ReadEE and ReadDB, from 110 ms for
// ReadEEByte; 1000 ms from 20 ms for ReadParams and SendRead), and then each cuts what came.
TEST(ModFunctions, ThresholdsAndReplyCutting) {
    struct Row {
        const char* fn;
        Call call;
        int replyBytes; // 0: silent card
        int resultSize; // -1: one NUL character
        qint64 duration;
        bool lostCard = false;
    };
    const Row table[] = {
        {"ReadEE", kReadEE, 0, -1, 1290},
        {"ReadEE", kReadEE, 6, -1, 1290},
        {"ReadEE", kReadEE, 7, 1, 1290},
        {"ReadEE", kReadEE, 31, 25, 1290},
        {"ReadEE", kReadEE, 32, 26, 91},
        {"ReadDB", kReadDB, 0, -1, 1290},
        {"ReadDB", kReadDB, 6, -1, 1290},
        {"ReadDB", kReadDB, 8, 2, 1290},
        {"ReadDB", kReadDB, 31, 25, 1290},
        {"ReadDB", kReadDB, 32, 26, 91},
        {"ReadDB", kReadDB, 33, 27, 91},
        // 20 + 1000 + drain 20, then a pump per payload byte and one more.
        {"ReadParams", kReadParams, 0, -1, 1041},
        {"ReadParams", kReadParams, 6, -1, 1041},
        {"ReadParams", kReadParams, 19, 13, 1054},
        {"ReadParams", kReadParams, 31, 25, 1066},
        {"ReadParams", kReadParams, 32, 26, 68},
        {"ReadEEByte", kReadEEByte, 0, -1, 1330},
        {"ReadEEByte", kReadEEByte, 3, -1, 1330},
        {"ReadEEByte", kReadEEByte, 4, -1, 1330, true},
        {"ReadEEByte", kReadEEByte, 6, -1, 1330, true},
        {"ReadEEByte", kReadEEByte, 7, -1, 131, true},
        {"ReadEEByte", kReadEEByte, 8, -1, 131, true},
        {"ReadEEByte", kReadEEByte, 9, 3, 131},
        // 20 + 1000 + drain 2000 + pumps.
        {"SendRead", kSendRead, 0, -1, 3021},
        {"SendRead", kSendRead, 2, -1, 3021},
        {"SendRead", kSendRead, 3, 0, 3021},
        {"SendRead", kSendRead, 4, 0, 2022},
        {"SendRead", kSendRead, 5, 0, 2022},
        {"SendRead", kSendRead, 6, 0, 2022},
        {"SendRead", kSendRead, 8, 2, 2024},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(QString("%1 with %2 bytes").arg(row.fn).arg(row.replyBytes).toStdString());
        Bench b;
        b.replies(row.replyBytes);
        const QByteArray r = row.call(b.fn);
        if (row.resultSize < 0) {
            EXPECT_EQ(r, kNul);
        } else {
            EXPECT_EQ(r.size(), row.resultSize);
        }
        EXPECT_EQ(b.host.now(), row.duration);
        EXPECT_EQ(b.events.list, row.lostCard
                                     ? QStringList({QString::number(row.duration) + " unloadOthers",
                                                    QString::number(row.duration) + " lostCard"})
                                     : QStringList());
        EXPECT_FALSE(b.port.isOpen());
        EXPECT_FALSE(b.state.Timer2.Enabled);
        // A handler that takes over after a time-out leaves its flag set.
        EXPECT_EQ(b.state.ReplyTimedOut, row.lostCard && row.duration > 1000 ? 1 : 0);
    }
}

// Every byte value comes back as it was written, NUL and values above 127 included.
TEST(ModFunctions, BytesSurviveUnchanged) {
    Bench b;
    const int values[] = {0x00, 0x7F, 0x80, 0xFF};
    for (int i = 0; i < 4; ++i)
        b.fn.WriteEE(32, 5 + i, QByteArray(1, char(values[i])));
    const QByteArray image = b.fn.ReadEE(32, 62);
    ASSERT_GE(image.size(), 26);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(static_cast<unsigned char>(image.at(5 + i)), values[i]) << "register " << 5 + i;
    const QByteArray one = b.fn.ReadEEByte(32, 8);
    ASSERT_EQ(one.size(), 3);
    EXPECT_EQ(static_cast<unsigned char>(one.at(0)), 0xFF);
}

// The probe on an open port: it waits for more than four bytes, or the interval the last read
// left; two pauses of 11 ms follow a reply, one a time-out. The idle count is not its business.
TEST(ModFunctions, CheckLink) {
    struct Row {
        const char* name;
        int replyBytes; // -1: whole reply, 0: silent
        std::function<void(Bench&)> setUp;
        QByteArray result;
        qint64 duration;
        qint16 status = 0;
        QStringList events = {};
    };
    const QByteArray reliable = "Connection is not reliable.";
    const Row table[] = {
        {"whole reply", -1, nullptr, QByteArray("5DVI\x02\x03"), 1 + 5 + 11 + 11},
        {"five bytes", 5, nullptr, "5DVI\x02", 1 + 5 + 11 + 11},
        {"four bytes", 4, nullptr, "", 1 + 1200 + 11},
        {"silent", 0, nullptr, "", 1 + 1200 + 11},
        {"silent after a read", 0,
         [](Bench& b) {
             b.replies(-1);
             b.fn.ReadParams(24); // leaves an interval of 1000
             b.replies(0);
             b.port.open();
         },
         "", 1 + 1000 + 11},
        {"window unloads", 0,
         [](Bench& b) { b.host.schedule(300, [&b] { b.state.replyTimerTick(); }); }, "", 300 + 11},
        {"device gone", -1,
         [](Bench& b) { b.port.failOn(FlakyPort::Write, PortFault::DeviceGone); }, reliable, 1000,
         5},
        {"device gone waiting", -1,
         [](Bench& b) { b.port.failOn(FlakyPort::Poll, PortFault::DeviceGone); }, reliable,
         1 + 1 + 1000, 5},
        {"other error", -1, [](Bench& b) { b.port.failOn(FlakyPort::Write, PortFault::Other); },
         reliable, 0, 5},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench b;
        b.replies(row.replyBytes);
        b.port.open();
        if (row.setUp) row.setUp(b);
        b.state.LinkIdleCount = 12;
        const qint64 t0 = b.host.now();
        qint16 status = 0;
        EXPECT_EQ(b.fn.CheckLink(0, status), row.result);
        EXPECT_EQ(b.host.now() - t0, row.duration);
        EXPECT_EQ(status, row.status);
        EXPECT_EQ(b.state.LinkIdleCount, 12);
        EXPECT_EQ(b.state.ReplyTimedOut, 0);
        if (row.status == 0) {
            EXPECT_FALSE(b.state.Timer2.Enabled);
        }
        EXPECT_EQ(b.events.list, row.events);
    }
}

// CardPresent: 200 ms, the probe, close, 1 ms. Only "5DVI" and five bytes make a card; a device
// gone at the open says so and ends the program a second later.
TEST(ModFunctions, CardPresent) {
    struct Row {
        const char* name;
        int replyBytes;
        FlakyPort::Op failOp;
        PortFault fault;
        bool present;
        qint64 duration;
        QStringList events = {};
    };
    const auto gone = PortFault::DeviceGone, other = PortFault::Other;
    const Row table[] = {
        {"whole reply", -1, FlakyPort::None, other, true, 200 + 28 + 1},
        {"five bytes", 5, FlakyPort::None, other, true, 200 + 28 + 1},
        {"four bytes", 4, FlakyPort::None, other, false, 200 + 1212 + 1},
        {"two bytes", 2, FlakyPort::None, other, false, 200 + 1212 + 1},
        {"no port", -1, FlakyPort::Open, other, false, 200},
        {"gone at the open",
         -1,
         FlakyPort::Open,
         gone,
         false,
         1200,
         {"200 box " + kTerm, "1200 unloadAll"}},
        {"gone in the probe", -1, FlakyPort::Poll, gone, false, 200 + 1 + 1 + 1000 + 1},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench b;
        b.replies(row.replyBytes);
        b.port.failOn(row.failOp, row.fault);
        EXPECT_EQ(b.fn.CardPresent(), row.present);
        EXPECT_EQ(b.host.now(), row.duration);
        EXPECT_EQ(b.events.list, row.events);
        EXPECT_FALSE(b.port.isOpen());
        if (row.failOp != FlakyPort::Open) {
            ASSERT_FALSE(b.trace().isEmpty());
            EXPECT_EQ(b.trace().first(), "200 > 35 55 53 42");
        }
    }
    // The card pulled out while idle: the port can't be opened, and no word is said.
    Bench b;
    b.card.unplug();
    EXPECT_FALSE(b.fn.CardPresent());
    EXPECT_TRUE(b.events.list.isEmpty());
    EXPECT_EQ(b.fn.ReadEE(32, 62), kNul);
    EXPECT_EQ(b.events.list, (QStringList{"200 unloadOthers", "200 lostCard"}));
}

// A port found open is emptied, closed and opened again, silently; WriteM2 alone uses a port it
// finds open. A port that stays taken ends in the lost-card state.
TEST(ModFunctions, PortFoundOpen) {
    struct Row {
        const char* name;
        Call call;
        bool held;
        qint16 recovered;
        QStringList events = {};
    };
    const QStringList lost{"0 unloadOthers", "0 lostCard"};
    const Row table[] = {
        {"ReadEE", kReadEE, false, 1},
        {"WriteEE", kWriteEE, false, 1},
        {"WriteM2", kWriteM2, false, 0},
        {"ReadEE, held", kReadEE, true, 1, lost},
        {"ReadDB, held", kReadDB, true, 1, {"0 unloadOthers", "0 lostCard+editors"}},
        {"WriteDB, held", kWriteDB, true, 1, lost},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench b;
        b.state.Connected = -1;
        b.wire.setHeldElsewhere(row.held);
        if (!row.held) b.port.open();
        const QByteArray r = row.call(b.fn);
        if (QString(row.name) == "ReadEE") {
            EXPECT_EQ(r.size(), 26);
        }
        EXPECT_EQ(b.state.PortRecovered, row.recovered);
        EXPECT_EQ(b.events.list, row.events);
        EXPECT_EQ(b.state.Connected, row.held ? 0 : -1);
        EXPECT_FALSE(b.port.isOpen());
    }
}

// A port error during an exchange. The device gone: a word or none, a second's pause, then the
// program ends, or for ReadParams and SendRead the lost-card state with the editor menus off. Any
// other error: the lost-card state at once, the editor menus off after ReadParams, ReadDB and
// SendRead only. The port is closed either way.
TEST(ModFunctions, PortErrorDuringAnExchange) {
    struct Row {
        const char* name;
        Call call;
        FlakyPort::Op op; // None: the card is pulled out 5 ms into the exchange
        PortFault fault;
        QStringList events;
        qint16 connected; // Connected afterwards, from -1
    };
    const auto gone = PortFault::DeviceGone, other = PortFault::Other;
    const auto W = FlakyPort::Write, P = FlakyPort::Poll;
    // Writes fail at their frame (10 ms); reads at the first look at the port, one pump after
    // their pauses (ReadEE, ReadDB 41 ms, ReadEEByte 111 ms, ReadParams, SendRead 21 ms).
    const QStringList ends10{"10 box " + kTerm, "1010 unloadAll"};
    const QStringList survives21{"21 box " + kNoUsb, "1021 unloadOthers", "1021 unloadOthers",
                                 "1021 lostCard+editors"};
    const Row table[] = {
        {"WriteEE", kWriteEE, W, gone, ends10, -1},
        {"WriteEEBlock", kWriteEEBlock, W, gone, ends10, -1},
        {"WriteDB", kWriteDB, W, gone, ends10, -1},
        {"WriteM2", kWriteM2, W, gone, ends10, -1},
        {"ReadEEByte", kReadEEByte, P, gone, {"111 box " + kTerm, "1111 unloadAll"}, -1},
        {"ReadEE", kReadEE, P, gone, {"1041 unloadAll"}, -1},
        {"ReadDB", kReadDB, P, gone, {"1041 unloadAll"}, -1},
        {"ReadParams", kReadParams, P, gone, survives21, 0},
        {"SendRead", kSendRead, P, gone, survives21, 0},
        {"WriteEE pulled out", kWriteEE, FlakyPort::None, gone, ends10, -1},
        {"ReadEE pulled out", kReadEE, FlakyPort::None, gone, {"1041 unloadAll"}, -1},
        {"SendRead pulled out", [](ModFunctions& f) { return sendRead(f, "CMDRTMIN"); },
         FlakyPort::None, gone, survives21, 0},
        {"WriteEE other", kWriteEE, W, other, {"10 unloadOthers", "10 lostCard"}, 0},
        {"WriteEEBlock other", kWriteEEBlock, W, other, {"10 unloadOthers", "10 lostCard"}, 0},
        {"WriteDB other", kWriteDB, W, other, {"10 unloadOthers", "10 lostCard"}, 0},
        {"WriteM2 other", kWriteM2, W, other, {"10 unloadOthers", "10 lostCard"}, 0},
        {"ReadEEByte other", kReadEEByte, P, other, {"111 unloadOthers", "111 lostCard"}, 0},
        {"ReadEE other", kReadEE, P, other, {"41 unloadOthers", "41 lostCard"}, 0},
        {"ReadDB other", kReadDB, P, other, {"41 unloadOthers", "41 lostCard+editors"}, 0},
        {"ReadParams other", kReadParams, P, other, {"21 unloadOthers", "21 lostCard+editors"}, 0},
        {"SendRead other", kSendRead, P, other, {"21 unloadOthers", "21 lostCard+editors"}, 0},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench b;
        b.state.Connected = -1;
        if (row.op == FlakyPort::None) {
            b.host.schedule(5, [&b] { b.card.unplug(); });
        } else {
            b.port.failOn(row.op, row.fault);
        }
        const QByteArray r = row.call(b.fn);
        EXPECT_EQ(b.events.list, row.events);
        EXPECT_EQ(b.host.now(), QStringView(row.events.last()).split(u' ').first().toLongLong());
        EXPECT_FALSE(b.port.isOpen());
        EXPECT_EQ(b.state.Connected, row.connected);
        EXPECT_EQ(r, QString(row.name).startsWith("Write") ? QByteArray() : kNul);
    }
}

// The wait restarts a timer that something stopped: stopped at 601 ms, it runs its 1200 ms again.
TEST(ModFunctions, StoppedTimerIsRestarted) {
    Bench b;
    b.replies(0);
    bool stopped = false;
    b.host.onPump([&] {
        if (!stopped && b.host.now() > 600 && b.state.Timer2.Enabled) {
            b.state.Timer2.Enabled = false;
            stopped = true;
        }
    });
    EXPECT_EQ(b.fn.ReadEE(32, 62), kNul);
    EXPECT_EQ(b.host.now(), 601 + 1200 + 50);
}

// A late reply within the time-out is waited for: 708 ms on the line (700 of delay, 8 of a
// 32-byte reply), then the drain.
TEST(ModFunctions, LateReplyIsWaitedFor) {
    Bench b;
    sim::Faults f;
    f.delayMs = 700;
    b.card.setFaults(f);
    EXPECT_EQ(b.fn.ReadEE(32, 62).size(), 26);
    EXPECT_EQ(b.host.now(), 708 + 50);
    // The main window unloads during a wait: the read ends at once.
    b.replies(0);
    b.host.schedule(1000, [&b] { b.state.replyTimerTick(); });
    EXPECT_EQ(b.fn.ReadEE(32, 62), kNul);
    EXPECT_EQ(b.host.now(), 1000 + 50);
}
