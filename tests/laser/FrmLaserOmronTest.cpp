// The NEW laser window against the virtual card (firmware 12: a NEW laser) on the virtual clock.
#include "LaserBench.h"

#include "forms/Dialogs.h"
#include "laser/FrmLaserOmron.h"
#include "link/CardState.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

SimLink::Card newLaserCard() {
    SimLink::Card c;
    c.major = 12;
    c.minor = 1;
    return c;
}

const QByteArray kDefault = bytesOf({165, 61, 101, 69, 64, 86, 4, 100, 69, 64, 86, 4, 0});
const QString kPowerMessage = "Reapply power of this card to reset the LASER";

} // namespace

TEST(FrmLaserOmron, OpensWithTheStreamOfTheCard) {
    SessionBench b(newLaserCard());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    EXPECT_EQ(f.caption(), "Omron Laser Driver ");
    EXPECT_EQ(b.link.sent(), (QStringList{"52 44 45 45 40 FF", "52 44 45 45 58 FF"}));
    EXPECT_EQ(f.buildImage(), kDefault);
    for (int ch = 0; ch < 4; ++ch) {
        EXPECT_EQ(f.currentBar(ch, Current::IMAX).value(), 38) << ch;
        EXPECT_EQ(f.currentText(ch, Current::IMIN).text(), "40") << ch;
    }
    EXPECT_EQ(f.txtTC_MAX.text(), "2");
    EXPECT_EQ(f.txtTC_MIN.text(), "3");
    EXPECT_EQ(f.txtIWF.text(), "3");
    EXPECT_EQ(f.txtSerial.text(), "L4821");
    EXPECT_EQ(b.st().ChipBase, 64) << "activation follows the load";
    EXPECT_EQ(f.control<Grid>("FlexGr2").textMatrix(1, 1), "IMAX[4:5]");
    EXPECT_EQ(f.control<Grid>("FlexGr2").textMatrix(1, 3), "VCSEL logic-high current");
}

TEST(FrmLaserOmron, EachTabShowsItsOneFrame) {
    SessionBench b(newLaserCard());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    EXPECT_EQ(f.TabStrip1.tabs().size(), 5);
    EXPECT_EQ(f.TabStrip1.toolTipText(), "Addresses ");
    for (int tab = 5; tab >= 1; --tab) {
        f.TabStrip1.userSelect(tab);
        for (int frame = 0; frame < 5; ++frame)
            EXPECT_EQ(f.control<Frame>(QString("fraT%1").arg(frame)).visible(), frame == tab - 1)
                << "tab " << tab << " frame " << frame;
    }
}

// Channel 1's currents share byte 5: each keeps the other's half, in the carrier and the piece.
TEST(FrmLaserOmron, SplitCurrentsKeepEachOther) {
    SessionBench b(newLaserCard());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    f.currentBar(1, Current::IMAX).setValue(32);
    EXPECT_EQ(f.buildImage().mid(4, 3), bytesOf({64, 80, 4}));
    EXPECT_EQ(f.currentText(1, Current::IMAX).text(), "32");
    EXPECT_EQ(f.rows(23).ReadByte(), 80) << "the IMIN piece of byte 5";
    f.currentText(1, Current::IMIN).setText("63");
    EXPECT_EQ(f.buildImage().mid(4, 3), bytesOf({64, 240, 7}));
    EXPECT_EQ(f.currentBar(1, Current::IMIN).value(), 63);
    EXPECT_EQ(f.rows(23).ReadByte(), 240);
    // A click on a piece rebuilds the code from the bytes.
    f.rows(22).click(3);
    EXPECT_EQ(f.currentBar(1, Current::IMAX).value(), 33);
    EXPECT_EQ(f.currentBar(1, Current::IMIN).value(), 63);
}

TEST(FrmLaserOmron, CurrentTextBoxes) {
    struct Case {
        const char* typed; // keys, or a pasted text after '='
        const char* text;
        int code;
    };
    for (const Case& c : {Case{"64", "63", 63}, Case{"=99", "63", 63}, Case{"-5", "5", 5},
                          Case{"", "", 0}, Case{"1x2", "12", 12}}) {
        SCOPED_TRACE(c.typed);
        SessionBench b(newLaserCard());
        FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
        TextBox& box = f.currentText(0, Current::IMIN);
        box.setText("");
        if (c.typed[0] == '=')
            box.userEdit(QString(c.typed + 1));
        else
            box.type(c.typed);
        EXPECT_EQ(box.text(), c.text);
        EXPECT_EQ(currentCode(f.buildImage(), 0, Current::IMIN), c.code);
        EXPECT_EQ(f.currentBar(0, Current::IMIN).value(), c.code);
    }
}

TEST(FrmLaserOmron, RowsMergeIntoTheirCarrier) {
    SessionBench b(newLaserCard());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    f.rows(1).click(4);
    EXPECT_EQ(f.rows(0).ReadByte(), 165 + 16);
    EXPECT_EQ(f.control<Grid>("FlexGr0").row(), 2);
    EXPECT_EQ(f.control<Grid>("FlexGr0").col(), 3);
    f.rows(5).click(2); // IWF stream bit 10 cleared: 110 read backwards is 3, 100 is 1
    EXPECT_EQ(f.rows(4).ReadByte(), 61 - 4);
    EXPECT_EQ(f.txtIWF.text(), "1");
    f.rows(25).click(2); // channel 1 enable off, the disable bit left alone
    EXPECT_EQ(f.rows(24).ReadByte(), 0);
}

TEST(FrmLaserOmron, LoadComparesSixBytesAndAlwaysAsksForPower) {
    struct Case {
        const char* name;
        int refused;
        std::function<void(FrmLaserOmron&)> edit;
        const char* verdict;
    };
    const Case cases[] = {
        {"as sent", -1, [](FrmLaserOmron& f) { f.currentBar(0, Current::IMAX).setValue(20); },
         "Load OK"},
        {"first byte kept", 0, [](FrmLaserOmron& f) { f.rows(1).click(4); }, "Failure"},
        {"seventh byte kept", 6, [](FrmLaserOmron& f) { f.rows(26).click(3); }, "Failure"},
        {"fifth byte kept", 4, [](FrmLaserOmron& f) { f.rows(16).click(0); }, "Load OK"},
        {"eighth byte kept", 7,
         [](FrmLaserOmron& f) { f.currentBar(2, Current::IMAX).setValue(1); }, "Load OK"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SessionBench b(newLaserCard());
        FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
        b.link.card().setRefusedRegister(64, c.refused);
        c.edit(f);
        const QByteArray image = f.buildImage();
        b.link.clearTrace();
        const qint64 t0 = b.link.host.now();
        f.cmdLoad.click();
        ASSERT_EQ(b.link.sent().size(), 2);
        EXPECT_EQ(b.link.sent()[0], "57 52 45 45 40 FF " + hexOf(image));
        EXPECT_EQ(f.txtMsg.text(), c.verdict);
        EXPECT_EQ(b.link.dialogs.messages(), QStringList{kPowerMessage});
        EXPECT_GE(b.link.host.now() - t0, 1500 + 2000);
        EXPECT_EQ(f.cmdLoad.caption(), "&Load");
        EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled() && f.cmdDefault.enabled());
        if (c.refused < 0) {
            EXPECT_EQ(cardLaser(b, 13), image);
        }
    }
}

TEST(FrmLaserOmron, BlankCardGetsTheDefaultsInTheWindowOnly) {
    SessionBench b(newLaserCard());
    ASSERT_TRUE(b.start());
    setCardLaser(b, QByteArray(13, '\0'));
    b.link.clearTrace();
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    EXPECT_EQ(f.buildImage(), kDefault);
    EXPECT_EQ(b.sentCount("57 52 45 45"), 0);
    EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled());
    EXPECT_EQ(cardLaser(b, 13), QByteArray(13, '\0'));
}

TEST(FrmLaserOmron, ReadTakesEveryByteUnderItsMasks) {
    SessionBench b(newLaserCard());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    setCardLaser(b, QByteArray(13, char(0xFF)));
    f.cmdRead.click();
    QByteArray want(12, char(0xFF));
    want += char(0x03);
    EXPECT_EQ(f.buildImage(), want);
    for (int ch = 0; ch < 4; ++ch)
        EXPECT_EQ(f.currentBar(ch, Current::IMIN).value(), 63);
    EXPECT_EQ(f.txtMsg.text(), "Read OK");
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
}

TEST(FrmLaserOmron, WithoutCardOnlyDefaultsWork) {
    SessionBench b({}, QString());
    FrmLaserOmron& f = b.open<FrmLaserOmron>("frmLaserOmron");
    EXPECT_FALSE(f.cmdLoad.enabled() || f.cmdRead.enabled());
    f.cmdDefault.click();
    EXPECT_EQ(f.buildImage(), kDefault);
    EXPECT_FALSE(f.cmdLoad.enabled() || f.cmdRead.enabled());
    EXPECT_TRUE(f.cmdDefault.enabled());
    EXPECT_TRUE(b.link.sent().isEmpty());
}
