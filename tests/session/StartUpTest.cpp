// Start-up, connection states and the buttons of the main window, on the virtual clock.
#include "SessionBench.h"

#include "forms/Dialogs.h"
#include "link/Transport.h"
#include "resdb/Database.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::expectOffline;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

const QString kProbe = "35 55 53 42";
const QString kParams = "50 41 52 52 00 00";

SimLink::Card card(bool receiver, bool rgb) {
    SimLink::Card c;
    c.receiver = receiver;
    c.rgb = rgb;
    return c;
}

// The no-card state as the start leaves it.
void expectNoCard(FrmStart& f) {
    expectOffline(f);
    for (Control* c : std::initializer_list<Control*>{&f.cmdSync, &f.txtPar1, &f.txtH, &f.shp1})
        EXPECT_FALSE(c->visible()) << c->name().toStdString();
    EXPECT_FALSE(f.mnuCardMemory.enabled());
    EXPECT_FALSE(f.mnuParams.enabled());
    EXPECT_TRUE(f.mnuDisplayAdj.enabled());
}

} // namespace

TEST(StartUp, FirstStartShowsPortFiveAndProbesNothing) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    FrmStart& f = b.frm();
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_EQ(f.txtCom.text(), " 5");
    EXPECT_EQ(b.st().ComPort, 5);
    EXPECT_EQ(b.link.port().commPort(), 5);
    EXPECT_EQ(b.st().Connected, 0);
    expectNoCard(f);
    EXPECT_TRUE(f.visible());
    EXPECT_TRUE(f.lblMassage.visible());
    EXPECT_TRUE(b.link.dialogs.asked().empty());
    // The load filled the hidden lists from the database.
    EXPECT_EQ(f.caption(), "Velmorak Software Version 1.0 ");
    EXPECT_EQ(f.StatusBar1.panelText(1), "1.00");
    EXPECT_GT(f.cboPresets.listCount(), 20);
    EXPECT_EQ(f.lstHGroup.items().join(","), "480,600,720,768,864,960,1024,1080,1200");
    EXPECT_FALSE(f.lstVBorders.items().isEmpty());
    EXPECT_FALSE(f.lstHBorders.items().isEmpty());
}

// A stored port without a card opens quietly. Letters read as port 0; a number beyond 16 bits
// overflows into Main's quiet handler, and the port stays 0 too. Either way the probe fails
// through the port.
TEST(StartUp, StoredPortWithoutCardOpensQuietly) {
    const struct {
        const char* stored;
        int port;
    } table[] = {{"7", 7}, {"COM3", 0}, {"99999", 0}, {"-1e12", 0}, {"32767.5", 0}};
    for (const auto& row : table) {
        SCOPED_TRACE(row.stored);
        SessionBench b({}, row.stored);
        if (row.port) b.link.unplugNow(); // port 0 fails even with a card there
        ASSERT_TRUE(b.start());
        EXPECT_EQ(b.st().ComPort, row.port);
        EXPECT_EQ(b.link.port().commPort(), row.port);
        EXPECT_EQ(b.frm().txtCom.text(), QString(" %1").arg(row.port));
        expectNoCard(b.frm());
        EXPECT_TRUE(b.link.dialogs.asked().empty());
    }
}

// What each card shows, by the start path and by the connect button. The two differ for a DVI
// transmitter: the button enables Check Sync again.
TEST(StartUp, CardKindsAndModes) {
    struct Row {
        const char* name;
        bool receiver, rgb, viaButton;
        const char* kind;
        bool syncVisible, syncEnabled;
        const char* syncText;
        bool presets, displayAdjVisible;
    };
    const Row table[] = {
        {"Tx RGB start", false, true, false, "Transmitter", true, true, "", true, true},
        {"Tx DVI start", false, false, false, "Transmitter", true, false, "DVI mode", true, true},
        {"Rx start", true, true, false, "Receiver", false, true, "", false, false},
        {"Tx RGB button", false, true, true, "Transmitter", true, true, "", true, true},
        {"Tx DVI button", false, false, true, "Transmitter", true, true, "DVI mode", true, true},
        {"Rx button", true, false, true, "Receiver", false, true, "", false, false},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b(card(row.receiver, row.rgb), row.viaButton ? QString() : "5");
        ASSERT_TRUE(b.start());
        FrmStart& f = b.frm();
        if (row.viaButton) f.cmdConnect.click();
        EXPECT_EQ(b.link.sent(), (QStringList{kProbe, kParams}));
        EXPECT_EQ(b.st().Connected, -1);
        EXPECT_EQ(f.cmdConnect.caption(), "Connected");
        EXPECT_FALSE(f.cmdConnect.enabled());
        EXPECT_TRUE(f.cmdDisconnect.enabled());
        EXPECT_FALSE(f.SpinButton1.enabled());
        EXPECT_TRUE(f.txtCom.locked());
        EXPECT_EQ(f.txtNameCard.text(), row.kind);
        EXPECT_TRUE(f.txtNameCard.visible());
        EXPECT_EQ(f.txtFwv.text(), " 2.3");
        EXPECT_TRUE(f.txtFwv.visible() && f.lblFwv.visible());
        EXPECT_EQ(f.cmdSync.visible(), row.syncVisible);
        EXPECT_EQ(f.cmdSync.enabled(), row.syncEnabled);
        EXPECT_EQ(f.txtPar1.text(), row.syncText);
        EXPECT_EQ(f.txtH.text(), row.syncText);
        EXPECT_EQ(f.mnuPresets.enabled(), row.presets);
        EXPECT_EQ(f.mnuDisplayAdj.visible(), row.displayAdjVisible);
        EXPECT_EQ(f.mnuFile2Mem.visible(), !row.receiver);
        EXPECT_TRUE(f.mnuReadMonInfo.visible());
        EXPECT_TRUE(f.mnuParams.enabled());
        EXPECT_TRUE(f.mnuCardMemory.enabled());
        EXPECT_FALSE(f.mnuCardMemory.visible());
        EXPECT_EQ(b.settings->get("StartUp", "PORT"), "5");
        EXPECT_TRUE(b.link.dialogs.asked().empty());
    }
}

TEST(StartUp, ConnectWithoutCardSaysSoAndSavesNothing) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    b.link.unplugNow();
    b.frm().txtCom.setText("9");
    b.frm().cmdConnect.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Check USB connection"});
    EXPECT_EQ(b.link.port().commPort(), 9);
    EXPECT_EQ(b.settings->get("StartUp", "PORT"), "");
    expectNoCard(b.frm());
    EXPECT_TRUE(b.frm().lblReason.caption().startsWith("The port could not be used"))
        << b.frm().lblReason.caption().toStdString();
}

// Beside the system's words, the main window says why: another program holds the port; once
// the card is found there is nothing to explain.
TEST(StartUp, AFailedConnectSaysWhy) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    b.link.holdPort(true);
    b.frm().cmdConnect.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Check USB connection"});
    EXPECT_TRUE(b.frm().lblReason.caption().contains("held by another program"))
        << b.frm().lblReason.caption().toStdString();
    b.link.holdPort(false);
    b.frm().cmdConnect.click();
    EXPECT_EQ(b.frm().cmdConnect.caption(), "Connected");
    EXPECT_EQ(b.frm().lblReason.caption(), "");
}

TEST(StartUp, DisconnectAndExit) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    FrmStart& f = b.frm();
    b.link.clearTrace();
    f.cmdDisconnect.click();
    EXPECT_EQ(b.st().Connected, 0);
    expectOffline(f);
    EXPECT_FALSE(f.txtCom.locked());
    EXPECT_FALSE(f.cmdSync.enabled());
    EXPECT_TRUE(f.mnuParams.enabled()); // menus stay as they are
    // After a disconnect the loop never probes.
    b.passes(700);
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_FALSE(b.main->finished());
    f.mnuExit.click();
    EXPECT_TRUE(b.main->finished());
}

TEST(StartUp, PortBoxTakesDigitsAndTheArrowsKeepTwoToSixteen) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    FrmStart& f = b.frm();
    f.txtCom.setText("");
    f.txtCom.type("1x2 -");
    EXPECT_EQ(f.txtCom.text(), "12");
    f.txtCom.type("\b");
    EXPECT_EQ(f.txtCom.text(), "1");
    struct Row {
        const char* start;
        int step;
        const char* result;
    };
    const Row table[] = {
        {" 5", +1, " 6"}, {"15", +1, " 16"}, {"16", +1, "16"},
        {"3", -1, " 2"},  {"2", -1, "2"},    {"40", -1, " 39"},
        {"40", +1, "40"}, {"", +1, " 1"},    {"99999999999999", -1, " 99999999999998"}};
    for (const Row& row : table) {
        f.txtCom.setText(row.start);
        if (row.step > 0)
            f.SpinButton1.spinUp();
        else
            f.SpinButton1.spinDown();
        EXPECT_EQ(f.txtCom.text(), row.result) << row.start << " " << row.step;
    }
    // Connected, the box takes no typing and the arrows are off.
    f.txtCom.setText("5");
    f.cmdConnect.click();
    f.txtCom.type("7");
    f.SpinButton1.spinUp();
    EXPECT_EQ(f.txtCom.text(), "5");
}

TEST(StartUp, DatabaseThatCannotBeOpenedStopsTheStartAndIsLeftAlone) {
    struct Row {
        const char* name;
        QByteArray content; // empty: no file
    };
    const Row table[] = {{"missing", QByteArray()},
                         {"not a database", QByteArray("just some text, not a database\n")}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        QFile::remove(b.dbPath());
        if (!row.content.isEmpty()) {
            QFile out(b.dbPath());
            ASSERT_TRUE(out.open(QIODevice::WriteOnly));
            out.write(row.content);
        }
        EXPECT_FALSE(b.start());
        ASSERT_EQ(b.link.dialogs.messages().size(), 1);
        EXPECT_TRUE(b.link.dialogs.messages()[0].contains("could not be opened"));
        EXPECT_TRUE(b.main->finished());
        EXPECT_FALSE(b.session->forms.isLoaded("frmStart"));
        if (row.content.isEmpty()) {
            EXPECT_FALSE(QFile::exists(b.dbPath()));
        } else {
            QFile in(b.dbPath());
            ASSERT_TRUE(in.open(QIODevice::ReadOnly));
            EXPECT_EQ(in.readAll(), row.content);
        }
        EXPECT_EQ(b.settings->get("frmStart", "Layout"), "");
    }
}

TEST(StartUp, SavedLayoutIsUsedOnlyWhenOnScreen) {
    struct Row {
        const char* layout;
        int left, top;
    };
    const Row table[] = {{"100,120", 100, 120}, {"5000,10", 0, 0},
                         {"10,5000", 0, 0},     {"", 0, 0},
                         {"720,700", 720, 700}, {"1e12,10", 0, 0},
                         {"10,-1e12", 0, 0},    {"99999999999,99999999999", 0, 0}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.layout);
        SessionBench b({}, QString());
        b.settings->save("frmStart", "Layout", row.layout);
        ASSERT_TRUE(b.start());
        EXPECT_EQ(b.frm().left(), row.left);
        EXPECT_EQ(b.frm().top(), row.top);
    }
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    b.frm().move(33, 44);
    b.session->forms.unload("frmStart");
    EXPECT_EQ(b.settings->get("frmStart", "Layout"), "33,44");
    EXPECT_TRUE(b.main->finished());
}
