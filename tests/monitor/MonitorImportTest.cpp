// Import Monitor File from the main window, against the virtual card on the virtual clock.
#include "MonitorBench.h"

#include "link/Transport.h"
#include "sim/VirtualCard.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::MonitorBench;

namespace {

QString writeFile(MonitorBench& b, const QString& name, const QByteArray& bytes) {
    const QString path = b.dir.filePath(name);
    QFile f(path);
    if (f.open(QIODevice::WriteOnly)) f.write(bytes);
    return path;
}

QByteArray pattern(int n) {
    QByteArray out;
    for (int i = 0; i < n; ++i)
        out += char((i * 7 + 3) & 0xFF);
    return out;
}

} // namespace

// Six slices for one block, twelve for two, at their offsets and with the card's pauses.
TEST(MonitorImport, SlicesOffsetsAndPauses) {
    struct Row {
        int size;
        std::vector<int> offsets;
        std::vector<qint64> gaps; // 1000 settle + 1 pump + pause + 10 before the next frame
        const char* lastProgress;
    };
    const std::vector<Row> rows = {
        {128, {0, 24, 48, 72, 96, 112}, {1511, 1511, 1511, 1511, 1311}, "14:6"},
        {256,
         {0, 24, 48, 72, 96, 112, 128, 152, 176, 200, 224, 240},
         {1511, 1511, 1511, 1511, 1311, 1311, 1511, 1511, 1511, 1511, 1311},
         "14:12"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.size);
        MonitorBench b;
        ASSERT_TRUE(b.start());
        const QByteArray before = b.link.card().monitorMemory();
        const QByteArray image = pattern(r.size);
        const QString path = writeFile(b, "edid.bin", image);
        b.link.clearTrace();
        b.link.dialogs.answerText(path);
        b.frm().mnuFile2Mem.click();
        EXPECT_EQ(b.link.dialogs.asked().front().title, "Import Data from ");
        EXPECT_EQ(b.link.dialogs.messages(),
                  (QStringList{"You are about to load the file to RGB Card",
                               "File : " + path + " is loaded to the RGB Card."}));
        const auto writes = b.frames("WRM2");
        ASSERT_EQ(writes.size(), r.offsets.size());
        EXPECT_EQ(b.link.sent().size(), int(writes.size())) << "no read-back";
        for (size_t k = 0; k < writes.size(); ++k) {
            const QByteArray& w = writes[k].second;
            const int length = (k % 6) < 4 ? 24 : 16;
            EXPECT_EQ(quint8(w[4]), r.offsets[k]) << k;
            EXPECT_EQ(w[5], 'M');
            EXPECT_EQ(w.mid(6), image.mid(r.offsets[k], length)) << k;
            if (k + 1 < writes.size()) {
                EXPECT_EQ(writes[k + 1].first - writes[k].first, r.gaps[k]);
            }
        }
        const QByteArray memory = b.link.card().monitorMemory();
        EXPECT_EQ(memory.left(r.size), image);
        EXPECT_EQ(memory.mid(r.size), before.mid(r.size));
        EXPECT_EQ(b.progress.front(), "14:0");
        EXPECT_EQ(b.progress.back(), r.lastProgress);
        EXPECT_FALSE(b.waitOpen());
        EXPECT_FALSE(b.frm().txtMsg.visible());
        EXPECT_EQ(b.frm().txtMsg.text(), "Loading. Wait a minute...");
        EXPECT_EQ(b.st().LinkIdleCount, 0);
        EXPECT_FALSE(b.link.port().isOpen());
    }
}

// Files of any other length are refused; Cancel at the question or in the chooser writes nothing.
TEST(MonitorImport, RefusedOrCancelled) {
    struct Row {
        const char* what;
        int size; // -1: the chooser is cancelled
        MsgResult answer;
        bool refused;
    };
    for (const Row& r :
         {Row{"127 bytes", 127, MsgResult::OK, true}, Row{"129 bytes", 129, MsgResult::OK, true},
          Row{"empty", 0, MsgResult::OK, true}, Row{"64 KiB", 65536, MsgResult::OK, true},
          Row{"cancel at the question", 128, MsgResult::Cancel, false},
          Row{"cancel in the chooser", -1, MsgResult::OK, false}}) {
        SCOPED_TRACE(r.what);
        MonitorBench b;
        ASSERT_TRUE(b.start());
        const QByteArray before = b.link.card().monitorMemory();
        const bool msgShown = b.frm().txtMsg.visible();
        const QString path = writeFile(b, "edid.bin", pattern(std::max(r.size, 0)));
        if (r.size >= 0) b.link.dialogs.answerText(path);
        b.link.dialogs.answer(r.answer);
        b.link.clearTrace();
        b.frm().mnuFile2Mem.click();
        QStringList want;
        if (r.refused) want << "Couldn't import this file : " + path + ". It is not valid.";
        if (!r.refused && r.size >= 0) want << "You are about to load the file to RGB Card";
        EXPECT_EQ(b.link.dialogs.messages(), want);
        EXPECT_TRUE(b.link.sent().isEmpty());
        EXPECT_EQ(b.link.card().monitorMemory(), before);
        EXPECT_TRUE(b.progress.empty());
        EXPECT_EQ(b.frm().txtMsg.visible(), msgShown && r.size >= 0);
    }
}

// The card pulled out during the load: the next write finds no port, the main window falls
// back to no card, and the load goes no further and claims nothing.
TEST(MonitorImport, CardLostStopsTheLoad) {
    MonitorBench b;
    ASSERT_TRUE(b.start());
    const QString path = writeFile(b, "edid.bin", pattern(256));
    sim::Faults f;
    f.unplugOn = "WRM2";
    f.unplugOnNth = 3;
    b.link.card().setFaults(f);
    b.link.dialogs.answerText(path);
    b.link.clearTrace();
    b.frm().mnuFile2Mem.click();
    EXPECT_EQ(b.frames("WRM2").size(), 3u);
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"You are about to load the file to RGB Card"});
    EXPECT_EQ(b.st().Connected, 0);
    EXPECT_TRUE(b.frm().cmdConnect.enabled());
    EXPECT_FALSE(b.waitOpen());
    EXPECT_FALSE(b.frm().txtMsg.visible());
}
