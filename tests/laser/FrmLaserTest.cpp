// The OLD laser window against the virtual card (firmware 2: an OLD laser) on the virtual clock.
#include "LaserBench.h"

#include "laser/FrmLaser.h"
#include "laser/LaserMaps.h"
#include "link/CardState.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

// The grid text of a row's "Control" cell.
QString controlText(FrmLaser& f, int row) {
    return f.FlexGrP.textMatrix(row + 1, 3);
}

quint32 controlBack(FrmLaser& f, int row) {
    return f.FlexGrP.cellBackColor(row + 1, 3);
}

// The card's power-on image: "Test" and "Enable Laser" read 1.
const QByteArray kCardImage = bytesOf({9, 13, 24, 15, 144, 255, 15, 159});

} // namespace

TEST(FrmLaser, OpensWithTheCardsRegistersAndSerial) {
    SessionBench b;
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    EXPECT_EQ(f.caption(), "Laser Driver ");
    EXPECT_EQ(b.link.sent(), (QStringList{"52 44 45 45 40 FF", "52 44 45 45 58 FF"}));
    EXPECT_EQ(f.buildImage(), kCardImage);
    EXPECT_EQ(f.SavedImage.left(8), kCardImage);
    EXPECT_EQ(f.txtSerial.text(), "L4821");
    EXPECT_EQ(b.st().ChipBase, 64);
    struct Shown {
        const char* bar;
        int value;
        const char* text;
    };
    for (const Shown& s :
         {Shown{"HScrl1", 9, "2.83"}, Shown{"HScrl2", 13, "4.10"}, Shown{"HScrl3", 24, "24"},
          Shown{"HScrl4", 15, "15"}, Shown{"HScrl5", 2, "2"}, Shown{"HScrl5_1", 0, "0"},
          Shown{"HScrl6_1", 15, "15"}, Shown{"HScrl6_2", 15, "15"}, Shown{"HScrl7", 15, "15"}}) {
        SCOPED_TRACE(s.bar);
        EXPECT_EQ(f.control<ScrollBar>(s.bar).value(), s.value);
        const QString text = QString::fromLatin1(s.bar).replace("HScrl", "txt");
        EXPECT_EQ(f.control<TextBox>(text).text(), s.text);
    }
    // Register 8 of 159: the laser and all four channels enabled.
    EXPECT_EQ(controlText(f, 16), "Enabled");
    EXPECT_EQ(controlBack(f, 16), kPaleGreen);
    for (int row = 18; row <= 21; ++row) {
        EXPECT_EQ(controlText(f, row), QString("Channel %1 Enabled").arg(22 - row));
        EXPECT_EQ(controlBack(f, row), kPaleGreen);
    }
    EXPECT_EQ(controlText(f, 17), "Clear");
    EXPECT_EQ(controlText(f, 22), "Enable All");
    EXPECT_EQ(controlText(f, 9), "Read only");
    EXPECT_EQ(controlText(f, 1), "Low Range(2-12mA)");
    EXPECT_EQ(f.FlexGrP.textMatrix(1, 0), "1");
    EXPECT_EQ(f.FlexGrP.textMatrix(3, 0), " ");
    EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled());
}

TEST(FrmLaser, WithoutCardTheTableIsUnsetAndTheLinkButtonsOff) {
    SessionBench b({}, QString());
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_FALSE(f.cmdLoad.enabled() || f.cmdRead.enabled());
    EXPECT_EQ(f.SavedImage, QByteArray(1, '\0'));
    EXPECT_EQ(f.buildImage(), QByteArray(8, '\0'));
    // While the table is first built the laser row reads enabled in full green.
    EXPECT_EQ(controlText(f, 16), "Enabled");
    EXPECT_EQ(controlBack(f, 16), kFullGreen);
    EXPECT_EQ(controlText(f, 18), "Channel 4 Disabled");
    EXPECT_EQ(controlBack(f, 18), Grid::kDefaultBack);
    // Keeping a copy does not turn the link buttons on.
    f.cmdPrevios.click();
    EXPECT_FALSE(f.cmdLoad.enabled() || f.cmdRead.enabled());
    EXPECT_TRUE(f.cmdRestore.enabled() && f.cmdDefault.enabled());
}

// The current tables at both ends, and the high range 3 mA above the low one.
TEST(FrmLaser, CurrentsAndTheRangeOffset) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    setCardLaser(b, bytesOf({9, 64 + 13, 24, 15, 144, 255, 15, 159}));
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    EXPECT_EQ(f.control<TextBox>("txt2").text(), "7.10");
    EXPECT_EQ(controlText(f, 1), "High Range(5-15mA)");
    struct Step {
        const char* bar;
        int value;
        const char* text;
        int row, byte;
    };
    for (const Step& s :
         {Step{"HScrl1", 63, "8.09", 0, 63}, Step{"HScrl1", 0, "1.95", 0, 0},
          Step{"HScrl2", 63, "14.97", 2, 64 + 63}, Step{"HScrl2", 0, "5.05", 2, 64}}) {
        SCOPED_TRACE(std::string(s.bar) + " " + std::to_string(s.value));
        f.control<ScrollBar>(s.bar).setValue(s.value);
        EXPECT_EQ(f.control<TextBox>(QString(s.bar).replace("HScrl", "txt")).text(), s.text);
        EXPECT_EQ(f.rows(s.row).ReadByte(), s.byte);
    }
    // The range bit cleared by a click: the same code reads 3 mA lower.
    f.rows(1).click(6);
    EXPECT_EQ(controlText(f, 1), "Low Range(2-12mA)");
    EXPECT_EQ(f.rows(2).ReadByte(), 0);
    EXPECT_EQ(f.control<TextBox>("txt2").text(), "2.05");
}

// A read keeps only the bits the masks let through; the scroll bars then write their fields.
TEST(FrmLaser, ReadLosesTheMaskedBits) {
    SessionBench b;
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    setCardLaser(b, QByteArray(8, char(0xFF)));
    f.cmdRead.click();
    EXPECT_EQ(f.rows(1).ReadByte(), 64);
    EXPECT_EQ(f.rows(9).ReadByte(), 128);
    EXPECT_EQ(f.rows(10).ReadByte(), 56);
    EXPECT_EQ(f.rows(13).ReadByte(), 240);
    EXPECT_EQ(f.rows(15).ReadByte(), 15) << "high nibble of register 7 lost";
    EXPECT_EQ(f.rows(17).ReadByte(), 32);
    EXPECT_EQ(controlText(f, 17), "");
    // Register 2 loses bit 7; registers 1 and 3 lose bits 6 and 7 to their scroll bars.
    EXPECT_EQ(f.buildImage(), bytesOf({63, 127, 63, 255, 255, 255, 15, 255}));
    EXPECT_EQ(f.control<TextBox>("txt1").text(), "8.09");
    EXPECT_EQ(f.control<TextBox>("txt2").text(), "14.97");
    EXPECT_EQ(f.txtMsg.text(), "Read OK");
    EXPECT_FALSE(f.txtMsg.visible());
}

TEST(FrmLaser, LoadComparesAllButTheTestBitAndTheEighthByte) {
    struct Case {
        const char* name;
        int refused; // laser byte the card keeps (-1: none)
        std::function<void(FrmLaser&)> edit;
        const char* verdict;
    };
    const Case cases[] = {
        {"as sent", -1, [](FrmLaser& f) { f.rows(0).click(5); }, "Load OK"},
        {"test bit sent clear, read set", -1, [](FrmLaser& f) { f.rows(12).WriteByte(16); },
         "Load OK"},
        {"eighth byte kept", 7, [](FrmLaser& f) { f.rows(21).click(1); }, "Load OK"},
        {"second byte kept", 1, [](FrmLaser& f) { f.rows(2).click(0); }, "Failure"},
        {"fifth byte kept", 4, [](FrmLaser& f) { f.rows(12).click(0); }, "Failure"},
        {"seventh byte kept", 6, [](FrmLaser& f) { f.control<ScrollBar>("HScrl7").setValue(3); },
         "Failure"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SessionBench b;
        FrmLaser& f = b.open<FrmLaser>("frmLaser");
        b.link.card().setRefusedRegister(64, c.refused);
        c.edit(f);
        const QByteArray image = f.buildImage();
        QStringList shown;
        b.link.host.onPump([&] {
            if (f.txtMsg.visible()) shown << f.txtMsg.text();
            if (f.cmdLoad.caption() == "Loading") shown << "Loading";
        });
        b.link.clearTrace();
        f.cmdLoad.click();
        ASSERT_EQ(b.link.sent().size(), 2);
        EXPECT_EQ(b.link.sent()[0], "57 52 45 45 40 FF " + hexOf(image));
        EXPECT_EQ(b.link.sent()[1], "52 44 45 45 40 FF");
        EXPECT_TRUE(shown.contains(c.verdict)) << shown.join(',').toStdString();
        EXPECT_FALSE(f.txtMsg.visible());
        EXPECT_EQ(f.cmdLoad.caption(), "&Load");
        EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled() && f.cmdPrevios.enabled());
        // The window shows what the card answered.
        EXPECT_EQ(f.buildImage().left(7), cardLaser(b, 7));
    }
}

TEST(FrmLaser, ClearRegistersLoadsWithoutComparing) {
    SessionBench b;
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    f.rows(7).click(4);
    EXPECT_EQ(f.rows(8).ReadByte(), 31);
    EXPECT_EQ(controlText(f, 7), "Clear Registers");
    b.link.clearTrace();
    const qint64 t0 = b.link.host.now();
    f.cmdLoad.click();
    ASSERT_EQ(b.link.sent().size(), 1);
    EXPECT_TRUE(b.link.sent()[0].startsWith("57 52 45 45 40 FF 09 0D 18 1F"));
    EXPECT_EQ(f.txtMsg.text(), "Reset");
    EXPECT_GE(b.link.host.now() - t0, 1500);
    EXPECT_EQ(f.rows(8).ReadByte(), 31) << "the table stays as it was";
    // The driver cleared itself back to its power-on registers.
    EXPECT_EQ(cardLaser(b, 8), kCardImage);
}

TEST(FrmLaser, DefaultsCopyAndRestoreStayInTheWindow) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    setCardLaser(b, bytesOf({40, 77, 3, 0, 0, 0, 0, 0}));
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    b.link.clearTrace();
    f.cmdDefault.click();
    EXPECT_EQ(f.buildImage(), bytesOf({9, 13, 24, 15, 16, 255, 15, 159}));
    EXPECT_EQ(controlText(f, 22), "Enable All");
    f.cmdPrevios.click();
    f.control<ScrollBar>("HScrl1").setValue(40);
    f.rows(21).click(1);
    EXPECT_EQ(f.rows(22).ReadByte(), 157);
    f.cmdRestore.click();
    EXPECT_EQ(f.buildImage(), bytesOf({9, 13, 24, 15, 16, 255, 15, 159}));
    EXPECT_EQ(f.control<TextBox>("txt1").text(), "2.83");
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled());
}

TEST(FrmLaser, BlankCardShowsTheDefaultsAndWritesNothing) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    setCardLaser(b, QByteArray(8, '\0'));
    b.link.clearTrace();
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    EXPECT_EQ(f.buildImage(), bytesOf({9, 13, 24, 15, 16, 255, 15, 159}));
    EXPECT_EQ(b.sentCount("57 52 45 45"), 0);
}

TEST(FrmLaser, SerialNumber) {
    struct Case {
        const char* typed;
        const char* sent;
        const char* shown; // after the save
        const char* card;  // the card's five characters after
    };
    // A serial shorter than five is sent as it is, and the read-back of five fails.
    for (const Case& c :
         {Case{"q7731", "Q7731", "Q7731", "Q7731"}, Case{"ab", "AB", "00000", "AB821"},
          Case{"a-b.1", "AB1", "00000", "AB121"}}) {
        SCOPED_TRACE(c.typed);
        SessionBench b;
        FrmLaser& f = b.open<FrmLaser>("frmLaser");
        f.txtSerial.setText("");
        f.txtSerial.type(c.typed);
        EXPECT_EQ(f.txtSerial.text(), c.sent);
        b.link.clearTrace();
        f.mnuSaveN.click();
        ASSERT_FALSE(b.link.sent().isEmpty());
        EXPECT_EQ(b.link.sent()[0], "57 52 45 45 58 FF " + hexOf(QByteArray(c.sent)));
        EXPECT_EQ(f.txtSerial.text(), c.shown);
        EXPECT_EQ(f.txtMsg.text(), "OK");
        EXPECT_EQ(b.link.card().laserSerial(), QByteArray(c.card));
        EXPECT_EQ(b.st().ChipBase, 88) << "until the window is activated again";
        f.activate();
        EXPECT_EQ(b.st().ChipBase, 64);
    }
}

TEST(FrmLaser, SerialBoxKeepsFiveCharacters) {
    SessionBench b;
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    f.txtSerial.userEdit("ABCDEFG");
    EXPECT_EQ(f.txtSerial.text(), "L4821");
    f.txtSerial.userEdit("Z9");
    EXPECT_EQ(f.PrevSerial, "Z9");
}

TEST(FrmLaser, PositionIsSavedOnUnload) {
    SessionBench b;
    FrmLaser& f = b.open<FrmLaser>("frmLaser");
    f.move(120, 80);
    f.mnuClose.click();
    EXPECT_FALSE(b.session->forms.isLoaded("frmLaser"));
    EXPECT_EQ(b.settings->get("frmLaser", "Layout", QString()), "120,80");
    FrmLaser& again = b.open<FrmLaser>("frmLaser");
    EXPECT_EQ(again.left(), 120);
    EXPECT_EQ(again.top(), 80);
}
