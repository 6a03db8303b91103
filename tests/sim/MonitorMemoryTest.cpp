// The virtual card's monitor memory: reads by offset, slice writes, refresh and transmit.
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using velmorak::sim::CardConfig;
using velmorak::sim::VirtualCard;

namespace {

QByteArray frame(const char* key, int a, int b, const QByteArray& data = {}) {
    return QByteArray(key) + char(a) + char(b) + data;
}

int sum(const QByteArray& b) {
    int s = 0;
    for (char c : b)
        s += quint8(c);
    return s % 256;
}

} // namespace

TEST(MonitorMemory, StartsWithOneValidBlockByMode) {
    for (bool rgb : {true, false}) {
        CardConfig cfg;
        cfg.rgb = rgb;
        VirtualCard card(cfg);
        const QByteArray m = card.monitorMemory();
        ASSERT_EQ(m.size(), 256);
        EXPECT_TRUE(m.startsWith(QByteArray::fromHex("00FFFFFFFFFFFF00")));
        EXPECT_EQ(sum(m.left(128)), 0);
        EXPECT_EQ(quint8(m[20]), rgb ? 0x0F : 0x80);
        EXPECT_EQ(m[126], '\0') << "no extension block";
        EXPECT_EQ(m.mid(128), QByteArray(128, char(0xFF)));
        // Preferred timing: 1280 x 1024.
        EXPECT_EQ(quint8(m[56]) + ((quint8(m[58]) & 0xF0) << 4), 1280);
        EXPECT_EQ(quint8(m[59]) + ((quint8(m[61]) & 0xF0) << 4), 1024);
    }
}

// Reads answer 26 bytes from the offset (zero past the end); "WRM2" writes from the offset.
TEST(MonitorMemory, ReadsAndWritesByOffset) {
    VirtualCard card;
    struct Row {
        int offset;
        QByteArray data;
    };
    for (const Row& r : {Row{0, QByteArray(24, 'a')}, Row{112, QByteArray(16, 'b')},
                         Row{240, QByteArray(16, 'c')}, Row{250, QByteArray(16, 'd')}}) {
        SCOPED_TRACE(r.offset);
        EXPECT_TRUE(card.receive(frame("WRM2", r.offset, 'M', r.data)).isEmpty());
        const int kept = std::min<int>(int(r.data.size()), 256 - r.offset);
        EXPECT_EQ(card.monitorMemory().mid(r.offset, kept), r.data.left(kept));
        EXPECT_EQ(card.monitorMemory().size(), 256);
        const QByteArray reply = card.receive(frame("RDEE", 128, r.offset));
        ASSERT_EQ(reply.size(), 32);
        EXPECT_EQ(reply.left(6), frame("RDEE", 128, r.offset));
        EXPECT_EQ(reply.mid(6, kept), r.data.left(kept));
        if (r.offset + 26 > 256) {
            EXPECT_EQ(reply.mid(6 + kept), QByteArray(26 - kept, '\0'));
        }
    }
    // A frame without the "M" is no monitor write.
    const QByteArray before = card.monitorMemory();
    card.receive(frame("WRM2", 0, 'X', "zzzz"));
    EXPECT_EQ(card.monitorMemory(), before);
}

// A Receiver takes its display's data again; a Transmitter what came over the fibre; no monitor:
// "NO" and nothing changes. "CMDRTMIN" of a Receiver sends its memory over the fibre.
TEST(MonitorMemory, RefreshAndTransmitByCardKind) {
    for (bool receiver : {true, false}) {
        SCOPED_TRACE(receiver ? "receiver" : "transmitter");
        CardConfig cfg;
        cfg.receiver = receiver;
        VirtualCard card(cfg);
        const QByteArray start = card.monitorMemory();
        card.setDisplayEdid(QByteArray(128, 'D'));
        card.receive(frame("WRM2", 0, 'M', QByteArray(24, 'w')));
        EXPECT_EQ(card.receive("CMDRTMIN"), "CMDRTMOK");
        EXPECT_EQ(card.fibreEdid().left(24), receiver ? QByteArray(24, 'w') : start.left(24));
        card.setMonitorAttached(false);
        const QByteArray written = card.monitorMemory();
        EXPECT_EQ(card.receive("CMDRRMON"), "CMDRRMNO");
        EXPECT_EQ(card.monitorMemory(), written);
        card.setMonitorAttached(true);
        EXPECT_EQ(card.receive("CMDRRMON"), "CMDRRMOK");
        if (receiver) {
            EXPECT_EQ(card.monitorMemory(), QByteArray(128, 'D') + QByteArray(128, char(0xFF)));
        } else {
            EXPECT_EQ(card.monitorMemory(), start);
        }
    }
}
