// Display Adjustment: Default and Save against both tables and the card memory, the
// demonstration state, placing, and the load run again on connect.
#include "ConsoleBench.h"

#include "session/FrmStart.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::ConsoleBench;
using velmorak::test::usualCard;
using velmorak::test::wree;

namespace {
const char* const kColumns18[] = {"01",  "02",  "04",  "05",  "06",  "08",  "09",  "0AH", "0BH",
                                  "0CH", "0DH", "32H", "33H", "34H", "36H", "37H", "38H", "39H"};
const char* const kNoCurrent = "Unable to change Settings. No data of current resolution.";

// Every register column of the customer row set to 7.
void customerSevens(ConsoleBench& b) {
    b.sql("UPDATE tblCustValues SET \"01\"=7, \"02\"=7, \"03\"=7, \"04\"=7, \"05\"=7, \"06\"=7, "
          "\"07\"=7, \"08\"=7, \"09\"=7, \"0AH\"=7, \"0BH\"=7, \"0CH\"=7, \"0DH\"=7, \"32H\"=7, "
          "\"33H\"=7, \"34H\"=7, \"35H\"=7, \"36H\"=7, \"37H\"=7, \"38H\"=7, \"39H\"=7 "
          "WHERE Name = '1024x768x75'");
}
} // namespace

TEST(ConsoleDefault, CopiesTheFactoryColumnsAndWritesTheChips) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    b.row("tblDefValues", {{"04", 0x58},
                           {"05", 0x11},
                           {"08", 0x70},
                           {"0BH", 0x40},
                           {"0CH", 0x50},
                           {"0DH", 0x60},
                           {"34H", 0x1A}});
    customerSevens(b);
    FrmConsole& f = b.open();
    b.link.clearTrace();
    b.link.dialogs.clear();
    f.cmdDefault.click();
    ASSERT_EQ(b.link.dialogs.asked().size(), 2u);
    EXPECT_EQ(b.link.dialogs.asked()[0].text, "You are about to change Settings of 1024x768x75? ");
    EXPECT_EQ(b.link.dialogs.asked()[0].title, "Default Settings");
    EXPECT_EQ(b.link.dialogs.asked()[0].buttons, MsgButtons::OKCancel);
    EXPECT_EQ(b.link.dialogs.asked()[1].text,
              "Settings are changed. To save these Settings click button 'Save'");
    for (const char* c : kColumns18)
        EXPECT_EQ(b.column("tblCustValues", c), b.column("tblDefValues", c)) << c;
    // Columns outside the 18 stay as they were.
    EXPECT_EQ(b.column("tblCustValues", "03"), 7);
    EXPECT_EQ(b.column("tblCustValues", "35H"), 7);
    // Divider 1311 at the middle of 1248..1374, H 288 at the middle of 161..415.
    EXPECT_EQ(f.ucScrlCoarse.Min(), 1248);
    EXPECT_EQ(f.ucScrlCoarse.Max(), 1374);
    EXPECT_EQ(f.ucScrlCoarse.Value(), 63);
    EXPECT_EQ(f.ucScrlHPoz.Min(), 161);
    EXPECT_EQ(f.ucScrlHPoz.Value(), 127);
    EXPECT_EQ(f.ucScrlPhase.Value(), 11);
    EXPECT_EQ(f.ucScrlContrast.Value(), 15);
    EXPECT_EQ(f.ucScrlR.Value(), 95);
    EXPECT_EQ(f.ucScrlBrite.Value(), 87); // (95 + 87 + 79) / 3
    EXPECT_EQ(f.ucScrlVPoz.Value(), 26);
    // 33H keeps the card's upper bits A4.
    EXPECT_EQ(b.writes(),
              QStringList({wree(32, 1, 0x51), wree(32, 2, 0xF0), wree(32, 4, 0x58),
                           wree(32, 8, 0x70), wree(32, 9, 0x70), wree(32, 10, 0x70),
                           wree(32, 11, 0x40), wree(32, 12, 0x50), wree(32, 13, 0x60),
                           wree(96, 0x32, 0x20), wree(96, 0x33, 0xA5), wree(96, 0x34, 0x1A)}));
    for (Button* c : {&f.cmdDefault, &f.cmdSave, &f.cmdClose})
        EXPECT_TRUE(c->enabled());
}

TEST(ConsoleDefault, StopsWithoutChangingAnything) {
    struct Row {
        const char* what;
        const char* setUp;
        MsgResult answer;
        const char* box; // nullptr: none after the question
    };
    const Row table[] = {
        {"cancelled", "", MsgResult::Cancel, nullptr},
        {"no factory row", "DELETE FROM tblDefValues WHERE Name = '1024x768x75'", MsgResult::OK,
         "Unable to change Settings. No data of default resolution."},
        {"no customer row", "DELETE FROM tblCustValues WHERE Name = '1024x768x75'", MsgResult::OK,
         kNoCurrent},
    };
    for (const Row& r : table) {
        SCOPED_TRACE(r.what);
        ConsoleBench b;
        ASSERT_TRUE(b.start());
        usualCard(b);
        customerSevens(b);
        FrmConsole& f = b.open();
        if (*r.setUp) b.sql(r.setUp);
        b.link.clearTrace();
        b.link.dialogs.clear();
        b.link.dialogs.answer(r.answer);
        f.cmdDefault.click();
        QStringList want = {"You are about to change Settings of 1024x768x75? "};
        if (r.box) want << r.box;
        EXPECT_EQ(b.link.dialogs.messages(), want);
        EXPECT_TRUE(b.writes().isEmpty());
        EXPECT_TRUE(f.cmdDefault.enabled());
        if (b.column("tblCustValues", "01") >= 0) {
            EXPECT_EQ(b.column("tblCustValues", "01"), 7);
        }
    }
}

// Only the changed groups go into the customer row. Coarse clears the phase's flag and keeps
// its own, so a phase step saved with a coarse step is lost.
TEST(ConsoleSave, WritesTheChangedGroups) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    customerSevens(b);
    b.row("tblCustValues", {{"33H", 0x06}});
    FrmConsole& f = b.open();
    f.ucScrlPhase.pressRight();
    f.ucScrlCoarse.pressRight();
    f.ucScrlR.pressLeft();
    f.ucScrlHPoz.pressRight();
    f.ucScrlVPoz.pressRight();
    b.link.dialogs.clear();
    f.cmdSave.click();
    ASSERT_FALSE(b.link.dialogs.asked().empty());
    EXPECT_EQ(b.link.dialogs.asked()[0].text,
              "Are you sure to change Settings of 1024x768x75 in the Card Memory?");
    EXPECT_EQ(b.link.dialogs.asked()[0].title, "Save Settings to Card Memory");
    EXPECT_EQ(b.link.dialogs.asked()[0].buttons, MsgButtons::YesNoCancel);
    struct Col {
        const char* column;
        int value;
    };
    for (const Col& c :
         {Col{"01", 0x51}, Col{"02", 0x40}, Col{"04", 7}, Col{"08", 7}, Col{"0BH", 66},
          Col{"0CH", 7}, Col{"32H", 0x31}, Col{"33H", 0x07}, Col{"34H", 27}, Col{"03", 7}})
        EXPECT_EQ(b.column("tblCustValues", c.column), c.value) << c.column;
    // The factory row is never touched by a save.
    EXPECT_EQ(b.column("tblDefValues", "0BH"), 0x80); // as seeded
    EXPECT_EQ(f.DirtyCoarse, 1);
    EXPECT_EQ(f.DirtyPhase, 0);
    EXPECT_EQ(f.DirtyR, 0);
    EXPECT_EQ(f.DirtyHPoz, 0);
    EXPECT_EQ(f.DirtyVPoz, 0);
    for (Button* c : {&f.cmdDefault, &f.cmdSave, &f.cmdClose})
        EXPECT_TRUE(c->enabled());
}

// The customer row, each column holding its own ordinal, goes to the card memory at
// (99 - 16) * 32 + 8192 = 2A60H, 1024x768x75 being code 99 of the seed: 30 bytes without
// 14H, 16H, 17H and 35H.
TEST(ConsoleSave, WritesTheRowIntoTheCardMemory) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    QStringList sets;
    const char* const names[] = {"01",  "02",  "03",  "04",  "05",  "06",  "07",  "08",   "09",
                                 "0AH", "0BH", "0CH", "0DH", "0EH", "0FH", "10H", "11H",  "12H",
                                 "13H", "14H", "15H", "16H", "17H", "08T", "09T", "0AHT", "32H",
                                 "33H", "34H", "35H", "36H", "37H", "38H", "39H"};
    for (int i = 0; i < 34; ++i)
        sets << QStringLiteral("\"%1\" = %2").arg(names[i]).arg(i + 4);
    b.sql("UPDATE tblCustValues SET " + sets.join(", ") + " WHERE Name = '1024x768x75'");
    FrmConsole& f = b.open();
    f.ucScrlVPoz.pressRight(); // 34H becomes 27
    b.link.clearTrace();
    f.cmdSave.click();
    const QByteArray block = QByteArray::fromHex("0405060708090A0B0C0D0E0F1011121314151618"
                                                 "1B1C1D1E1F1B22232425");
    ASSERT_EQ(block.size(), 30);
    EXPECT_EQ(b.link.dataMemory(0x2A60, 30), block);
    const QString frame = QString::fromLatin1((QByteArray("WRDB") + char(0xA6) + char(0x42) +
                                               char(0x2A) + char(0x60) + block)
                                                  .toHex(' '))
                              .toUpper();
    EXPECT_TRUE(b.link.sent().contains(frame)) << b.link.sent().join('\n').toStdString();
}

TEST(ConsoleSave, StopsOnTheWay) {
    struct Row {
        const char* what;
        const char* setUp;
        MsgResult answer;
        QStringList boxes;
        bool buttons; // enabled afterwards
        bool memory;  // the card memory written
    };
    const QString ask = "Are you sure to change Settings of 1024x768x75 in the Card Memory?";
    const Row table[] = {
        {"Yes", "", MsgResult::Yes, {ask}, true, true},
        {"No", "", MsgResult::No, {ask}, true, false},
        {"Cancel", "", MsgResult::Cancel, {ask}, true, false},
        // The dead end: the buttons stay disabled.
        {"no customer row",
         "DELETE FROM tblCustValues WHERE Name = '1024x768x75'",
         MsgResult::Yes,
         {ask, kNoCurrent},
         false,
         false},
    };
    for (const Row& r : table) {
        SCOPED_TRACE(r.what);
        ConsoleBench b;
        ASSERT_TRUE(b.start());
        usualCard(b);
        FrmConsole& f = b.open();
        if (*r.setUp) b.sql(r.setUp);
        b.link.clearTrace();
        b.link.dialogs.clear();
        b.link.dialogs.answer(r.answer);
        f.cmdSave.click();
        EXPECT_EQ(b.link.dialogs.messages(), r.boxes);
        EXPECT_EQ(b.sentCount("57 52 44 42"), r.memory ? 1 : 0);
        for (Button* c : {&f.cmdDefault, &f.cmdSave, &f.cmdClose})
            EXPECT_EQ(c->enabled(), r.buttons) << c->name().toStdString();
    }
}

// Without a usable card the window opens as a demonstration: steppers move, nothing is written.
TEST(ConsoleDemo, StepsWriteNothing) {
    struct Row {
        const char* what;
        bool connected;
        const char* source;
    };
    for (const Row& r : {Row{"no link", false, "1024x768x75"}, Row{"no signal", true, ""}}) {
        SCOPED_TRACE(r.what);
        test::SimLink::Card card;
        card.source = r.source;
        ConsoleBench b(card);
        ASSERT_TRUE(b.start());
        if (!r.connected) b.frm().cmdDisconnect.click();
        FrmConsole& f = b.open();
        EXPECT_EQ(b.st().DemoMode, 1);
        EXPECT_EQ(f.AdjustEnabled, 0);
        EXPECT_EQ(b.st().CurPreset, "DEMO");
        EXPECT_EQ(f.lblRez.caption(), "DEMO");
        EXPECT_FALSE(f.cmdSave.enabled());
        EXPECT_FALSE(f.cmdDefault.enabled());
        EXPECT_TRUE(f.cmdClose.enabled());
        b.link.clearTrace();
        f.ucScrlPhase.pressRight();
        f.ucScrlBrite.pressLeft();
        f.ucScrlHPoz.pressRight();
        EXPECT_TRUE(b.link.sent().isEmpty());
        EXPECT_EQ(f.ucScrlPhase.Value(), 1);
        EXPECT_EQ(f.DirtyPhase, 1);
        EXPECT_EQ(f.DirtyR, 1);
    }
}

// Half the window may hang off the right and the bottom: 1280 x 1024 screen, 560 x 470 window.
TEST(ConsoleLayout, SavedPositionIsClampedAndSavedOnClose) {
    struct Row {
        const char* saved; // nullptr: none
        int left, top;
    };
    const Row table[] = {
        {nullptr, 0, 0},         {"100,200", 100, 200}, {"-5,-9", 0, 0}, {"5000,4000", 1000, 789},
        {"1000,789", 1000, 789}, {"1001,50", 1000, 50}, {"12", 0, 0}};
    for (bool demo : {true, false}) {
        for (const Row& row : table) {
            SCOPED_TRACE(testing::Message() << (row.saved ? row.saved : "none") << demo);
            ConsoleBench b;
            if (row.saved) b.settings->save("frmConsole", "Layout", row.saved);
            ASSERT_TRUE(b.start());
            usualCard(b);
            if (demo) b.frm().cmdDisconnect.click();
            FrmConsole& f = b.open();
            EXPECT_EQ(f.left(), row.left);
            EXPECT_EQ(f.top(), row.top);
            f.move(333, 44);
            f.cmdClose.click();
            EXPECT_FALSE(b.session->forms.isLoaded("frmConsole"));
            EXPECT_EQ(b.settings->get("frmConsole", "Layout"), "333,44");
        }
    }
}

// Connect runs the load of an open window again: it reads what the card now holds.
TEST(ConsoleReload, ConnectReadsTheCardAgain) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    ASSERT_EQ(f.ucScrlPhase.Value(), 11);
    b.frm().cmdDisconnect.click();
    b.chip({{32, 4, 0xF8}, {96, 0x34, 0x05}});
    b.frm().cmdConnect.click();
    ASSERT_EQ(b.session->forms.get<FrmConsole>("frmConsole"), &f);
    EXPECT_EQ(f.ucScrlPhase.Value(), 31);
    EXPECT_EQ(f.ucScrlVPoz.Value(), 5);
    EXPECT_EQ(f.AdjustEnabled, 1);
}

// A coarse Min from an earlier load stays when the new factory divider gives none.
TEST(ConsoleReload, CoarseMinKeptFromTheEarlierLoad) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    ASSERT_EQ(f.ucScrlCoarse.Min(), 1248);
    b.row("tblDefValues", {{"01", 0x03}, {"02", 0x00}});
    f.reload();
    // Step 1: Min 1248 kept, Max 111; the card's 1299 is above Max: 1236..1362.
    EXPECT_EQ(f.ucScrlCoarse.Min(), 1236);
    EXPECT_EQ(f.ucScrlCoarse.Max(), 1362);
    EXPECT_EQ(f.ucScrlCoarse.Value(), 63);
}

// The signal gone by the time of a new load: the window says so and closes.
TEST(ConsoleReload, NoValidSignalClosesTheWindow) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    b.st().CurPreset.clear();
    b.link.card().setSource(std::nullopt);
    b.link.dialogs.clear();
    f.reload();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList({"Video signal is not valid!"}));
    EXPECT_FALSE(b.session->forms.isLoaded("frmConsole"));
}

// The card pulled out while an arrow repeats: the next write finds no port, the window goes
// with the others, the main window shows the card lost, and the timer writes no more.
TEST(ConsoleUnplug, DuringARepeat) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    b.link.clearTrace();
    b.link.dialogs.clear();
    const qint64 t0 = b.link.host.now();
    f.ucScrlVPoz.rightDown();
    auto runTo = [&](qint64 ms) {
        while (b.link.host.now() - t0 < ms) {
            b.link.host.sleep(5);
            b.session->forms.pollTimers();
            b.session->forms.collect();
        }
    };
    runTo(700);
    ASSERT_EQ(b.writes().size(), 1); // the repeat at 600
    b.link.unplugNow();
    runTo(2000);
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
    EXPECT_FALSE(b.session->forms.isLoaded("frmConsole"));
    EXPECT_EQ(b.st().Connected, 0);
    test::expectOffline(b.frm());
    EXPECT_EQ(b.writes().size(), 1);
}

// Pulled out as Save sends the card memory: the row is saved and the window finishes the save;
// the card never took the block, and the next step finds it gone.
TEST(ConsoleUnplug, DuringSave) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    f.ucScrlVPoz.pressRight();
    sim::Faults faults = b.link.card().faults();
    faults.unplugOn = "WRDB";
    b.link.card().setFaults(faults);
    const QByteArray before = b.link.dataMemory(0x2A60, 30);
    b.link.dialogs.clear();
    f.cmdSave.click();
    EXPECT_EQ(b.column("tblCustValues", "34H"), 27);
    EXPECT_EQ(b.link.dialogs.messages(),
              QStringList({"Are you sure to change Settings of 1024x768x75 in the Card Memory?"}));
    EXPECT_EQ(b.link.dataMemory(0x2A60, 30), before);
    ASSERT_TRUE(b.session->forms.isLoaded("frmConsole"));
    EXPECT_TRUE(f.cmdSave.enabled());
    f.ucScrlVPoz.pressRight();
    EXPECT_FALSE(b.session->forms.isLoaded("frmConsole"));
    EXPECT_EQ(b.st().Connected, 0);
}
