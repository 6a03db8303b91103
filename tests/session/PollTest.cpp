// The loop of the tool: the idle probe, the lost card, and the Check Sync step.
#include "SessionBench.h"

#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <vector>

using namespace velmorak;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

const QString kProbe = "35 55 53 42";

// A window that stands for any window other than the main one.
class OtherWindow : public Form {
  public:
    OtherWindow() : Form("frmOther") {}
};

} // namespace

TEST(Poll, IdleProbeAfterAboutFifteenSecondsOfSilence) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    b.link.clearTrace();
    const qint64 t0 = b.link.host.now();
    b.passes(301);
    EXPECT_EQ(b.sentCount(kProbe), 0);
    b.passes(1);
    EXPECT_EQ(b.sentCount(kProbe), 1);
    const qint64 silence = b.link.host.now() - t0;
    EXPECT_GE(silence, 15000);
    EXPECT_LT(silence, 16500);
    // Any exchange restarts the count.
    b.passes(200);
    b.session->fn.ReadEE(32, 62);
    b.passes(301);
    EXPECT_EQ(b.sentCount(kProbe), 1);
    b.passes(1);
    EXPECT_EQ(b.sentCount(kProbe), 2);
    EXPECT_EQ(b.st().Connected, -1);
}

// The lost-card state of the main window, quietly: the card pulled out while idle (found by
// the probe), or a window's exchange refused; after ReadParams and ReadDB the editor menus too.
TEST(Poll, LostCardState) {
    struct Row {
        const char* name;
        std::function<void(SessionBench&)> act;
        bool editorsOff;
    };
    const Row table[] = {
        {"pulled out while idle",
         [](SessionBench& b) {
             b.link.unplugNow();
             b.passes(302);
         },
         true},
        {"ReadEE refused", [](SessionBench& b) { b.session->fn.ReadEE(32, 62); }, false},
        {"ReadParams refused", [](SessionBench& b) { b.session->fn.ReadParams(24); }, true},
        {"ReadDB refused", [](SessionBench& b) { b.session->fn.ReadDB(166, 66, 0x20, 0); }, true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        b.session->forms.registerForm<OtherWindow>("frmOther");
        ASSERT_TRUE(b.start());
        FrmStart& f = b.frm();
        b.session->forms.show("frmOther");
        const std::array<MenuItem*, 4> editors{&f.mnuDisplayAdj, &f.mnuPanel, &f.mnuTransmitter,
                                               &f.mnuLaser};
        std::vector<bool> before;
        for (MenuItem* m : editors)
            before.push_back(m->enabled());
        if (QString(row.name).endsWith("refused")) b.link.holdPort(true);
        row.act(b);
        EXPECT_EQ(b.st().Connected, 0);
        EXPECT_FALSE(b.session->forms.isLoaded("frmOther"));
        EXPECT_TRUE(b.session->forms.isLoaded("frmStart"));
        velmorak::test::expectOffline(f);
        EXPECT_FALSE(f.cmdSync.enabled());
        EXPECT_FALSE(f.mnuCardMemory.enabled() || f.mnuParams.enabled());
        for (size_t i = 0; i < editors.size(); ++i)
            EXPECT_EQ(editors[i]->enabled(), before[i] && !row.editorsOff)
                << editors[i]->name().toStdString();
        EXPECT_TRUE(b.link.dialogs.asked().empty());
        EXPECT_FALSE(b.main->finished());
    }
}

TEST(Poll, NeverRunsInsideAnExchange) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    b.st().LinkIdleCount = 400;
    b.link.replyDelay(300);
    b.link.host.onPump([&b] { b.main->pollPass(); });
    b.link.clearTrace();
    b.session->fn.ReadEE(32, 62);
    EXPECT_EQ(b.link.sent().size(), 1);
    EXPECT_EQ(b.sentCount(kProbe), 0);
}

// Check Sync readings from the counts of the block, by firmware.
TEST(Poll, CheckSyncReadings) {
    struct Row {
        const char* name;
        int major;
        std::vector<std::pair<int, int>> counts; // (V, H) of each run
        const char* par1;
        const char* h;
        const char* par2;
    };
    const Row table[] = {
        {"firmware 1", 1, {{0x0A00, 0x0300}}, " 1220.70", " 2083333", " 10 0 3 0"},
        {"firmware 2", 2, {{0x0A00, 0x0540}}, " 76.29", " 672", " 10 0 5 64"},
        {"low bytes averaged",
         2,
         {{0x010A, 0x0540}, {0x0114, 0x0550}},
         " 720.70",
         " 676",
         " 1 20 5 80"},
        {"value without a point", 2, {{0x0139, 0x0540}}, " 6", " 672", " 1 57 5 64"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SimLink::Card c;
        c.major = row.major;
        SessionBench b(c);
        ASSERT_TRUE(b.start());
        FrmStart& f = b.frm();
        for (auto [v, h] : row.counts) {
            b.link.card().setMeasuredCounts(SyncCounts{v, h});
            f.cmdSync.click();
            EXPECT_FALSE(f.cmdSync.enabled());
            f.cmdSync.click(); // a second press finds the button off
            EXPECT_EQ(b.st().SyncRequested, 1);
            b.passes(1);
        }
        EXPECT_EQ(f.txtPar1.text().toStdString(), row.par1);
        EXPECT_EQ(f.txtH.text().toStdString(), row.h);
        EXPECT_EQ(f.txtPar2.text().toStdString(), row.par2);
        EXPECT_EQ(b.st().SyncRequested, 0);
        EXPECT_TRUE(f.cmdSync.enabled());
        EXPECT_FALSE(f.shp1.visible());
        EXPECT_EQ(b.st().Connected, -1);
    }
}

TEST(Poll, CheckSyncWithoutDataOrHorizontalSync) {
    {
        SessionBench b;
        ASSERT_TRUE(b.start());
        b.link.shortReplies(18);
        b.st().SyncRequested = 1;
        b.passes(1);
        EXPECT_EQ(b.frm().txtPar1.text(), "No Data");
        EXPECT_EQ(b.frm().txtH.text(), "No Data");
    }
    {
        // A DVI source: no sync counts, the resolution the transmitter chip reports instead.
        SimLink::Card c;
        c.rgb = false;
        c.source = "1280x1024x60";
        SessionBench b(c);
        ASSERT_TRUE(b.start());
        b.link.clearTrace();
        b.st().SyncRequested = 1;
        b.passes(1);
        EXPECT_EQ(b.frm().txtPar1.text(), "0");
        EXPECT_EQ(b.frm().txtH.text(), " 1280x1024");
        EXPECT_EQ(b.link.sent(), (QStringList{"50 41 52 52 00 00", "52 44 45 45 60 FE"}));
    }
}

// Firmware 1 with a horizontal value that comes out whole: its text has no point to cut at,
// and the error puts the window in the lost-card state while the step goes on.
TEST(Poll, CheckSyncErrorWhenTheHorizontalValueHasNoPoint) {
    SimLink::Card c;
    c.major = 1;
    SessionBench b(c);
    ASSERT_TRUE(b.start());
    FrmStart& f = b.frm();
    b.link.card().setMeasuredCounts(SyncCounts{0x0A00, 0x0100});
    f.cmdSync.click();
    b.passes(1);
    EXPECT_EQ(b.st().Connected, 0);
    EXPECT_EQ(f.cmdConnect.caption(), "C&onnect");
    EXPECT_EQ(f.txtPar1.text(), " 1220.70");
    EXPECT_EQ(f.txtH.text(), "");
    EXPECT_EQ(f.txtPar2.text(), " 10 0 1 0");
    EXPECT_TRUE(b.link.dialogs.asked().empty());
    EXPECT_FALSE(b.main->finished());
}
