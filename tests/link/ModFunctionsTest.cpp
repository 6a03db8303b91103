// The card protocol on the virtual clock: frames, pauses, time-outs, reply cutting, failures.
#include "link/ModFunctions.h"
#include "link/Transport.h"
#include "support/SimLink.h"

#include <gtest/gtest.h>

#include <functional>

using namespace velmorak;
using velmorak::test::SimLink;

namespace {

const QByteArray kNul(1, '\0');

struct Exchange {
    const char* name;
    std::function<void(ModFunctions&)> call;
    const char* frame; // hex of the frame sent
    qint64 duration;   // virtual ms from entry to return
};

} // namespace

// Each function's frame and its time on the wire; the card answers at once, so a read costs its
// pauses, one pump of the wait and its drain, and the readers of the block pump once per byte.
TEST(ModFunctions, FramesAndPauses) {
    const Exchange table[] = {
        {"ReadEE image", [](ModFunctions& f) { f.ReadEE(32, 62); }, "52 44 45 45 20 FF", 91},
        {"ReadEE short class", [](ModFunctions& f) { f.ReadEE(32, 8); }, "52 44 45 45 20 FE", 91},
        {"ReadEE len 9", [](ModFunctions& f) { f.ReadEE(32, 9); }, "52 44 45 45 20 FF", 91},
        {"ReadEE monitor 8", [](ModFunctions& f) { f.ReadEE(128, 8); }, "52 44 45 45 80 08", 91},
        {"ReadEE monitor 255", [](ModFunctions& f) { f.ReadEE(128, 255); }, "52 44 45 45 80 FF",
         91},
        {"ReadEEByte", [](ModFunctions& f) { f.ReadEEByte(32, 5); }, "52 44 45 45 20 05", 131},
        {"ReadDB", [](ModFunctions& f) { f.ReadDB(166, 66, 0x20, 0x40); },
         "52 44 44 42 A6 42 20 40", 91},
        {"ReadParams 24", [](ModFunctions& f) { f.ReadParams(24); }, "50 41 52 52 00 00",
         20 + 1 + 20 + 26 + 1},
        {"ReadParams 8", [](ModFunctions& f) { f.ReadParams(8); }, "50 41 52 52 00 01",
         20 + 1 + 20 + 26 + 1},
        {"SendRead",
         [](ModFunctions& f) {
             QByteArray c("CMDRRMON");
             f.SendRead(c);
         },
         "43 4D 44 52 52 4D 4F 4E", 20 + 1 + 2000 + 2 + 1},
        {"WriteEE", [](ModFunctions& f) { f.WriteEE(32, 7, QByteArray(1, char(0x9C))); },
         "57 52 45 45 20 07 9C", 50},
        {"WriteEEBlock", [](ModFunctions& f) { f.WriteEEBlock(96, QByteArray("\x01\x02", 2)); },
         "57 52 45 45 60 FF 01 02", 810},
        {"WriteDB empty", [](ModFunctions& f) { f.WriteDB(0x18, 0xE0, QByteArray()); },
         "57 52 44 42 A6 42 18 E0", 1010},
        {"WriteDB data", [](ModFunctions& f) { f.WriteDB(0x20, 0x20, QByteArray("AB")); },
         "57 52 44 42 A6 42 20 20 41 42", 1010},
        {"WriteM2", [](ModFunctions& f) { f.WriteM2(24, QByteArray(2, '\0')); },
         "57 52 4D 32 18 4D 00 00", 1010},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        SimLink link;
        link.state.LinkIdleCount = 77;
        const qint64 t0 = link.host.now();
        row.call(link.fn());
        EXPECT_EQ(link.host.now() - t0, row.duration);
        ASSERT_FALSE(link.sent().isEmpty());
        EXPECT_EQ(link.sent().last(), row.frame);
        EXPECT_EQ(link.state.LinkIdleCount, 0);
        EXPECT_FALSE(link.port().isOpen());
        EXPECT_FALSE(link.state.Timer2.Enabled);
        EXPECT_EQ(link.state.ReplyTimedOut, 0);
        EXPECT_TRUE(link.reactions.calls.isEmpty());
    }
}

// A silent card: every read gives one NUL character after its time-out and no word is said.
TEST(ModFunctions, SilentCardTimesOut) {
    struct Row {
        const char* name;
        std::function<QByteArray(ModFunctions&)> call;
        qint64 duration;
    };
    const Row table[] = {
        {"ReadEE", [](ModFunctions& f) { return f.ReadEE(32, 62); }, 20 + 20 + 1200 + 50},
        {"ReadDB", [](ModFunctions& f) { return f.ReadDB(166, 32, 0, 0); }, 20 + 20 + 1200 + 50},
        {"ReadEEByte", [](ModFunctions& f) { return f.ReadEEByte(32, 1); }, 100 + 10 + 1200 + 20},
        {"ReadParams", [](ModFunctions& f) { return f.ReadParams(24); }, 20 + 1000 + 20 + 1},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        SimLink link;
        link.silent(true);
        const qint64 t0 = link.host.now();
        EXPECT_EQ(row.call(link.fn()), kNul);
        EXPECT_EQ(link.host.now() - t0, row.duration);
        EXPECT_EQ(link.state.ReplyTimedOut, 0);
        EXPECT_TRUE(link.dialogs.asked().empty());
        EXPECT_TRUE(link.reactions.calls.isEmpty());
    }
}

// How replies of every length are cut.
TEST(ModFunctions, ReplyCutting) {
    struct Row {
        const char* fn;
        int replyBytes;
        int resultSize; // -1: one NUL character
        bool lostCard;
    };
    const Row table[] = {
        {"ReadEE", 6, -1, false},      {"ReadEE", 7, 1, false},      {"ReadEE", 31, 25, false},
        {"ReadDB", 6, -1, false},      {"ReadDB", 8, 2, false},      {"ReadParams", 6, -1, false},
        {"ReadParams", 19, 13, false}, {"ReadEEByte", 3, -1, false}, {"ReadEEByte", 4, -1, true},
        {"ReadEEByte", 8, -1, true},   {"ReadEEByte", 9, 3, false},  {"SendRead", 2, -1, false},
        {"SendRead", 3, 0, false},     {"SendRead", 6, 0, false},    {"SendRead", 8, 2, false},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(QString("%1 with %2 bytes").arg(row.fn).arg(row.replyBytes).toStdString());
        SimLink link;
        link.shortReplies(row.replyBytes);
        QByteArray r;
        const QString fn = row.fn;
        if (fn == "ReadEE") r = link.fn().ReadEE(32, 62);
        if (fn == "ReadDB") r = link.fn().ReadDB(166, 66, 0x20, 0);
        if (fn == "ReadParams") r = link.fn().ReadParams(24);
        if (fn == "ReadEEByte") r = link.fn().ReadEEByte(32, 3);
        if (fn == "SendRead") {
            QByteArray c("CMDRRMON");
            r = link.fn().SendRead(c);
        }
        if (row.resultSize < 0) {
            EXPECT_EQ(r, kNul);
        } else {
            EXPECT_EQ(r.size(), row.resultSize);
        }
        EXPECT_EQ(link.reactions.calls,
                  row.lostCard ? QStringList({"unloadOthers", "lostCard"}) : QStringList());
        EXPECT_FALSE(link.port().isOpen());
    }
}

// Every byte value comes back as it was written, NUL and values above 127 included.
TEST(ModFunctions, BytesSurviveUnchanged) {
    SimLink link;
    const int values[] = {0x00, 0x7F, 0x80, 0xFF};
    for (int i = 0; i < 4; ++i)
        link.fn().WriteEE(32, 5 + i, QByteArray(1, char(values[i])));
    const QByteArray image = link.fn().ReadEE(32, 62);
    ASSERT_GE(image.size(), 26);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(static_cast<unsigned char>(image.at(5 + i)), values[i]) << "register " << 5 + i;
    const QByteArray one = link.fn().ReadEEByte(32, 8);
    ASSERT_EQ(one.size(), 3);
    EXPECT_EQ(static_cast<unsigned char>(one.at(0)), 0xFF);
}

TEST(ModFunctions, ProbeNeedsFiveBytesOf5DVI) {
    struct Row {
        int replyBytes; // 0: whole reply
        bool present;
    };
    for (const Row& row : {Row{0, true}, Row{5, true}, Row{4, false}, Row{2, false}}) {
        SCOPED_TRACE(row.replyBytes);
        SimLink link;
        link.shortReplies(row.replyBytes);
        EXPECT_EQ(link.fn().CardPresent(), row.present);
        EXPECT_EQ(link.sent(), QStringList{"35 55 53 42"});
        EXPECT_FALSE(link.port().isOpen());
        EXPECT_TRUE(link.dialogs.asked().empty());
    }
}

TEST(ModFunctions, ProbeOfASilentCardIsEmptyAndLeavesIdleCountAlone) {
    SimLink link;
    link.silent(true);
    link.port().open();
    link.state.LinkIdleCount = 12;
    qint16 status = 0;
    const qint64 t0 = link.host.now();
    EXPECT_EQ(link.fn().CheckLink(0, status), QByteArray());
    // Sleep 1, the time-out of 1200 left by start-up, Sleep 11.
    EXPECT_EQ(link.host.now() - t0, 1 + 1200 + 11);
    EXPECT_EQ(link.state.LinkIdleCount, 12);
    EXPECT_EQ(link.state.ReplyTimedOut, 0);
    EXPECT_EQ(status, 0);
}

TEST(ModFunctions, ProbeUsesTheIntervalTheLastReadLeft) {
    SimLink link;
    link.fn().ReadParams(24); // leaves 1000
    link.silent(true);
    link.port().open();
    qint16 status = 0;
    const qint64 t0 = link.host.now();
    link.fn().CheckLink(0, status);
    EXPECT_EQ(link.host.now() - t0, 1 + 1000 + 11);
}

// A port left open by an earlier exchange is emptied, closed and opened again, silently.
TEST(ModFunctions, PortFoundOpenIsRecovered) {
    SimLink link;
    link.port().open();
    const QByteArray r = link.fn().ReadEE(32, 62);
    EXPECT_GE(r.size(), 26);
    EXPECT_EQ(link.state.PortRecovered, 1);
    EXPECT_TRUE(link.dialogs.asked().empty());
    EXPECT_TRUE(link.reactions.calls.isEmpty());
}

TEST(ModFunctions, PortHeldByAnotherProgramEndsInTheLostCardState) {
    SimLink link;
    link.holdPort(true);
    link.state.Connected = -1;
    EXPECT_EQ(link.fn().ReadEE(32, 62), kNul);
    EXPECT_EQ(link.reactions.calls, (QStringList{"unloadOthers", "lostCard"}));
    EXPECT_EQ(link.state.Connected, 0);
    EXPECT_TRUE(link.dialogs.asked().empty());
    EXPECT_FALSE(link.fn().CardPresent());
}

// The USB device vanishes while the port is open: each function has its own words and its own
// end (terminate, or survive in the lost-card state).
TEST(ModFunctions, DeviceGoneDuringAnExchange) {
    struct Row {
        const char* name;
        std::function<void(ModFunctions&)> call;
        QStringList messages;
        QStringList reactions;
    };
    const QStringList term{ModFunctions::kNoUsbTerminated};
    const QStringList end{"unloadAll"};
    const QStringList survive{"unloadOthers", "unloadOthers", "lostCard+editors"};
    const Row table[] = {
        {"WriteEE", [](ModFunctions& f) { f.WriteEE(32, 1, "A"); }, term, end},
        {"WriteEEBlock", [](ModFunctions& f) { f.WriteEEBlock(32, "AB"); }, term, end},
        {"WriteDB", [](ModFunctions& f) { f.WriteDB(1, 2, "AB"); }, term, end},
        {"WriteM2", [](ModFunctions& f) { f.WriteM2(0, "AB"); }, term, end},
        {"ReadEEByte", [](ModFunctions& f) { f.ReadEEByte(32, 1); }, term, end},
        {"ReadEE", [](ModFunctions& f) { f.ReadEE(32, 62); }, {}, end},
        {"ReadDB", [](ModFunctions& f) { f.ReadDB(166, 66, 0, 0); }, {}, end},
        {"ReadParams", [](ModFunctions& f) { f.ReadParams(24); }, {ModFunctions::kNoUsb}, survive},
        {"SendRead",
         [](ModFunctions& f) {
             QByteArray c("CMDRTMIN");
             f.SendRead(c);
         },
         {ModFunctions::kNoUsb},
         survive},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        SimLink link;
        link.state.Connected = -1;
        // Gone 5 ms into the exchange: before a write sends, while a read waits.
        link.host.schedule(link.host.now() + 5, [&link] { link.unplugNow(); });
        row.call(link.fn());
        EXPECT_EQ(link.dialogs.messages(), row.messages);
        EXPECT_EQ(link.reactions.calls, row.reactions);
        EXPECT_FALSE(link.port().isOpen());
        if (row.reactions == survive) {
            EXPECT_EQ(link.state.Connected, 0);
        }
    }
}

TEST(ModFunctions, CardPulledOutWhileIdleIsAQuietNo) {
    SimLink link;
    link.unplugNow();
    EXPECT_FALSE(link.fn().CardPresent());
    EXPECT_TRUE(link.dialogs.asked().empty());
    EXPECT_TRUE(link.reactions.calls.isEmpty());
    // Any other exchange then fails as an ordinary port error.
    EXPECT_EQ(link.fn().ReadEE(32, 62), kNul);
    EXPECT_EQ(link.reactions.calls, (QStringList{"unloadOthers", "lostCard"}));
}

// The wait restarts a timer that something stopped, and ends at once when the main window goes.
TEST(ModFunctions, WaitLoopAndTimer2) {
    {
        SimLink link;
        link.silent(true);
        bool stopped = false;
        link.host.onPump([&] {
            if (!stopped && link.host.now() > 600 && link.state.Timer2.Enabled) {
                link.state.Timer2.Enabled = false;
                stopped = true;
            }
        });
        const qint64 t0 = link.host.now();
        link.fn().ReadEE(32, 62);
        // Stopped about 560 ms into the wait and started afresh.
        EXPECT_GT(link.host.now() - t0, 20 + 20 + 1200 + 50 + 500);
    }
    {
        SimLink link;
        link.silent(true);
        link.host.onPump([&] {
            if (link.host.now() == 300) link.state.replyTimerTick(); // the window unloads
        });
        EXPECT_EQ(link.fn().ReadEE(32, 62), kNul);
        EXPECT_LT(link.host.now(), 400);
    }
}

TEST(ModFunctions, ReplyDelayWithinTheTimeOutIsWaitedFor) {
    SimLink link;
    link.replyDelay(700);
    const qint64 t0 = link.host.now();
    const QByteArray r = link.fn().ReadEE(32, 62);
    EXPECT_GE(r.size(), 26);
    EXPECT_GT(link.host.now() - t0, 700);
    EXPECT_LT(link.host.now() - t0, 20 + 20 + 1200);
}

// The wait ends as soon as the threshold count has arrived; a shorter reply runs to the time-out.
TEST(ModFunctions, ThresholdEndsTheWait) {
    struct Row {
        const char* fn;
        int replyBytes;
        bool timedOut;
    };
    const Row table[] = {
        {"ReadEE", 31, true},      {"ReadEE", 32, false},   {"ReadParams", 31, true},
        {"ReadParams", 32, false}, {"ReadEEByte", 6, true}, {"ReadEEByte", 7, false},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(QString("%1 with %2 bytes").arg(row.fn).arg(row.replyBytes).toStdString());
        SimLink link;
        link.shortReplies(row.replyBytes);
        const QString fn = row.fn;
        const qint64 t0 = link.host.now();
        if (fn == "ReadEE") link.fn().ReadEE(32, 62);
        if (fn == "ReadParams") link.fn().ReadParams(24);
        if (fn == "ReadEEByte") link.fn().ReadEEByte(32, 3);
        const qint64 took = link.host.now() - t0;
        if (row.timedOut) {
            EXPECT_GT(took, 1000);
        } else {
            EXPECT_LT(took, 200);
        }
    }
}
