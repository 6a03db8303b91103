// Card Status against the virtual card: kinds, fibres, firmware, LEDs, switches, gauges,
// refresh, the switch tip, the pinout window and the print messages.
#include "session/SessionBench.h"

#include "cardinfo/CapturePrint.h"
#include "cardinfo/FrmStatus.h"
#include "cardinfo/ImCardPinout.h"
#include "cardinfo/StatusRules.h"
#include "sim/VirtualCard.h"
#include "support/SimProcess.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::StatusRules;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

QString fileOf(const PictureBox& p) {
    return p.picture().section(u'/', -1);
}

void copyPictures(const QString& to) {
    for (const QString& f : QDir(test::buildDir()).entryList({"*.svg"}))
        QFile::copy(test::buildDir() + "/" + f, to + "/" + f);
}

} // namespace

TEST(CardStatus, EachCardKindAndFibreCount) {
    struct Row {
        bool receiver, rgb;
        int fibres;
        const char *name, *tip, *card, *descr, *optic;
        bool txLed, rxLed;
    };
    for (const Row& r : {
             Row{false, true, 2, "Transmitter", "swch10t.svg", "rgbTxs.svg", " RGB ",
                 " 2 fiber  SOG ", true, true},
             Row{true, true, 1, "Receiver", "swch10r.svg", "RRGB1s.svg", " RGB ", " 1 fiber  SOG ",
                 false, true},
             Row{false, false, 1, "Transmitter", "swch10t.svg", "TRGB1s.svg", " DVI ",
                 " 1 fiber  SOG ", true, false},
             Row{true, false, 2, "Receiver", "swch10r.svg", "rgbTxs.svg", " DVI ", " 2 fiber  SOG ",
                 true, true},
         }) {
        SCOPED_TRACE(r.name + QString::number(r.fibres).toStdString());
        SessionBench b(SimLink::Card{r.receiver, r.rgb, r.fibres, 2, 3, "1024x768x75"});
        FrmStatus& f = b.open<FrmStatus>("frmStatus");
        EXPECT_EQ(f.caption(), "Card Status");
        EXPECT_EQ(b.link.sent(), QStringList{"50 41 52 52 00 00"});
        EXPECT_EQ(f.lblName.caption(), r.name);
        EXPECT_EQ(fileOf(f.picTipSw2), r.tip);
        EXPECT_FALSE(f.picTipSw2.visible());
        EXPECT_EQ(fileOf(f.imCard), r.card);
        EXPECT_EQ(f.lblDescr.caption(), r.descr);
        EXPECT_EQ(f.lblOpticType.caption(), r.optic);
        EXPECT_EQ(f.shpLed(2).visible(), r.txLed);
        EXPECT_EQ(f.lblL1(2).visible(), r.txLed);
        EXPECT_EQ(f.shpLed(3).visible(), r.rxLed);
        EXPECT_EQ(f.lblL1(3).visible(), r.rxLed);
        EXPECT_EQ(f.lblFWVersion.caption(), "2.03");
        EXPECT_EQ(f.shpLed(0).fillColor(), kLightGreen);
        EXPECT_EQ(f.shpLed(8).fillColor(), kGreen);
        // Mode LEDs as the card drives them: RGB and SOG, or DVI alone.
        EXPECT_EQ(f.shpLed(4).fillColor(), r.rgb ? kGrey : kGreen);
        EXPECT_EQ(f.shpLed(5).fillColor(), r.rgb ? kGreen : kGrey);
        EXPECT_EQ(f.shpLed(7).fillColor(), r.rgb ? kGreen : kGrey);
        EXPECT_TRUE(b.st().StatusOpen);
    }
}

TEST(CardStatus, FirmwareAndGaugesFromTheBlock) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    for (auto [pos, v] : {std::pair{1, 0}, std::pair{3, 196}, std::pair{4, 255}, std::pair{5, 0},
                          std::pair{23, 48}, std::pair{24, 3}})
        b.link.card().setParamByte(pos, v);
    FrmStatus& f = b.open<FrmStatus>("frmStatus");
    ASSERT_EQ(f.grPar.rows(), 4);
    ASSERT_EQ(f.grPar.cols(), 2);
    const QStringList labels{QString::fromUtf8("Temperature \u00B0C"), " + 3.3 V", " + 5.0 V",
                             " + 3.3 V A"};
    const QStringList values{"-43.6", "3.266", "6.375", "0"};
    for (int r = 0; r < 4; ++r) {
        EXPECT_EQ(f.grPar.textMatrix(r, 0), labels[r]);
        EXPECT_EQ(f.grPar.textMatrix(r, 1), values[r]);
    }
    EXPECT_EQ(f.lblFWVersion.caption(), "0.03");
    EXPECT_EQ(f.grPar.colWidth(0), 80);
    EXPECT_EQ(f.grPar.colWidth(1), 66);

    // Refresh reads the values again.
    b.link.card().setParamByte(1, 42);
    b.link.card().setParamByte(4, 200);
    f.cmdRefresh.click();
    EXPECT_EQ(f.grPar.textMatrix(0, 1), "0");
    EXPECT_EQ(f.grPar.textMatrix(2, 1), "5");
}

// LEDs and switches follow bytes 9, 10 and 11 on every refresh.
TEST(CardStatus, LedsAndSwitchesFromTheirBytes) {
    struct Row {
        int s9, s10, s11;
        quint32 diag, tx, rx, dvi, rgb, shv, sog;
        const char* switches; // 1 on, 0 off, switches 0 to 9
    };
    const quint32 G = kGreen, E = kGrey, D = kRedDiagnostics, R = kRedError;
    for (const Row& r : {
             Row{0xA5, 0x40, 0xF0, D, E, E, E, E, E, E, "1010010101"},
             Row{0x00, 0xEA, 0x00, G, G, G, G, G, G, G, "0000000011"},
             Row{0xFF, 0x3F, 0x60, E, E, E, G, E, E, G, "1111111100"},
             Row{0x5A, 0x95, 0xB0, D, R, R, E, G, E, E, "0101101010"},
         }) {
        SCOPED_TRACE(r.switches);
        SessionBench b;
        FrmStatus& f = b.open<FrmStatus>("frmStatus");
        for (auto [pos, v] : {std::pair{9, r.s9}, std::pair{10, r.s10}, std::pair{11, r.s11}})
            b.link.card().setParamByte(pos, v);
        const qint64 t0 = b.link.host.now();
        b.link.clearTrace();
        f.cmdRefresh.click();
        EXPECT_EQ(b.link.sent(), QStringList{"50 41 52 52 00 00"});
        EXPECT_GE(b.link.host.now() - t0, 100);
        EXPECT_TRUE(f.cmdRefresh.enabled());
        const quint32 want[] = {r.diag, r.tx, r.rx, r.dvi, r.rgb, r.shv, r.sog};
        for (int i = 1; i <= 7; ++i)
            EXPECT_EQ(f.shpLed(i).fillColor(), want[i - 1]) << "LED " << i;
        for (int k = 0; k < 10; ++k)
            EXPECT_EQ(f.ucSwitchDig2.ucSwitchSH1.top(k), r.switches[k] == '1' ? 0 : 60) << k;
    }
}

TEST(CardStatus, RefreshKeepsVisibilityAndOneShvText) {
    SessionBench b(SimLink::Card{true, true, 1, 2, 3, "1024x768x75"});
    FrmStatus& f = b.open<FrmStatus>("frmStatus");
    ASSERT_FALSE(f.shpLed(2).visible());
    b.link.card().setParamByte(9, 0x80 | 0x40 | 0x04);
    b.link.card().setParamByte(10, 0x08); // Tx good: no matter, the LED is hidden and grey
    f.cmdRefresh.click();
    f.cmdRefresh.click();
    EXPECT_EQ(f.lblOpticType.caption(), " 1 fiber  SHV ");
    EXPECT_FALSE(f.shpLed(2).visible());
    EXPECT_FALSE(f.lblL1(2).visible());
    EXPECT_EQ(f.shpLed(2).fillColor(), kGrey);
    // A card turned two-fibre under the window: colours follow, visibility does not.
    b.link.card().setParamByte(9, 0x80);
    f.cmdRefresh.click();
    EXPECT_EQ(f.lblOpticType.caption(), " 2 fiber  SOG ");
    EXPECT_FALSE(f.shpLed(2).visible());
    EXPECT_EQ(f.shpLed(2).fillColor(), kGreen);
    f.mnuCloseDigStatus.click();
    EXPECT_FALSE(b.st().StatusOpen);
    EXPECT_FALSE(b.session->forms.isLoaded("frmStatus"));
}

TEST(CardStatus, SwitchTipShowsFor20Seconds) {
    SessionBench b;
    FrmStatus& f = b.open<FrmStatus>("frmStatus");
    f.ucSwitchDig2.ucSwitchSH1.pressSlider(3); // the row's own click: no tip
    EXPECT_FALSE(f.picTipSw2.visible());
    f.ucSwitchDig2.pressBody();
    EXPECT_TRUE(f.picTipSw2.visible());
    EXPECT_TRUE(f.Timer1.enabled());
    b.link.host.sleep(19990);
    b.session->forms.pollTimers();
    EXPECT_TRUE(f.picTipSw2.visible());
    b.link.host.sleep(10);
    b.session->forms.pollTimers();
    EXPECT_FALSE(f.picTipSw2.visible());
    EXPECT_FALSE(f.Timer1.enabled());
    // A click on the tip hides it at once.
    f.ucSwitchDig2.pressDirection();
    EXPECT_TRUE(f.picTipSw2.visible());
    f.picTipSw2.click();
    EXPECT_FALSE(f.picTipSw2.visible());
    EXPECT_FALSE(f.Timer1.enabled());
    EXPECT_FALSE(f.Timer2.enabled());
}

TEST(CardStatus, PinoutOpensOnlyWhenItsPictureExists) {
    struct Row {
        bool receiver;
        int fibres;
        const char* file;
    };
    for (const Row& r : {Row{true, 1, "RRGB1.svg"}, Row{false, 1, "TRGB1.svg"},
                         Row{true, 2, "rgbTx.svg"}, Row{false, 2, "rgbTx.svg"}}) {
        SCOPED_TRACE(r.file);
        SessionBench b(SimLink::Card{r.receiver, true, r.fibres, 2, 3, "1024x768x75"});
        FrmStatus& f = b.open<FrmStatus>("frmStatus");
        f.imCard.click();
        EXPECT_FALSE(b.session->forms.isLoaded("imCardPinout"));
        EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
        copyPictures(b.dir.path());
        f.imCard.click();
        auto* p = b.session->forms.get<ImCardPinout>("imCardPinout");
        ASSERT_NE(p, nullptr);
        EXPECT_TRUE(p->visible());
        EXPECT_EQ(p->caption(), "Pinout");
        EXPECT_EQ(fileOf(p->picPinout), r.file);
        // Loaded once; the picture is set again on every click.
        p->picPinout.setPicture(QString());
        f.imCard.click();
        EXPECT_EQ(b.session->forms.get<ImCardPinout>("imCardPinout"), p);
        EXPECT_EQ(fileOf(p->picPinout), r.file);
    }
}

TEST(CardStatus, PinoutZoomsWithinTheScreenAndAbove5500) {
    SessionBench b; // a desktop 1024 high
    ASSERT_TRUE(b.start());
    auto& p = dynamic_cast<ImCardPinout&>(b.session->forms.show("imCardPinout"));
    ASSERT_EQ(p.height(), 480);
    struct Step {
        MenuItem* item;
        int width, height;
    };
    for (const Step& s : {Step{&p.mnuIncreise, 864, 576}, Step{&p.mnuIncreise, 1037, 691},
                          Step{&p.mnuIncreise, 1244, 829}, Step{&p.mnuIncreise, 1493, 995},
                          Step{&p.mnuIncreise, 1493, 995}, Step{&p.mnuDecreise, 1194, 796},
                          Step{&p.mnuDecreise, 955, 637}, Step{&p.mnuDecreise, 764, 510},
                          Step{&p.mnuDecreise, 611, 408}, Step{&p.mnuDecreise, 611, 408}}) {
        s.item->click();
        EXPECT_EQ(p.width(), s.width);
        EXPECT_EQ(p.height(), s.height);
    }
    // Opened smaller, it shrinks no further.
    p.move(0, 0, 400, 300);
    p.mnuDecreise.click();
    EXPECT_EQ(p.height(), 300);
    const qint64 t0 = b.link.host.now();
    p.mnuClosePinout.click();
    EXPECT_FALSE(b.session->forms.isLoaded("imCardPinout"));
    EXPECT_GE(b.link.host.now() - t0, 1);
}

TEST(CardStatus, PrintMessages) {
    SessionBench b;
    FrmStatus& f = b.open<FrmStatus>("frmStatus");
    // Cancelled printer dialog.
    f.mnuPrintStatusDigCard.click();
    EXPECT_EQ(b.link.dialogs.messages(),
              QStringList{"Error number 32755 occurred Cancel was selected."});
    // A printer that cannot be used.
    b.link.dialogs.clear();
    setWindowPrinter([](Form&) { throw RunTimeError(482, "Printer error"); });
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrintStatusDigCard.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Printer is unabled"});
    // Any other error.
    b.link.dialogs.clear();
    setWindowPrinter([](Form&) { throw RunTimeError(75, "Path/File access error"); });
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrintStatusDigCard.click();
    EXPECT_EQ(b.link.dialogs.messages(),
              QStringList{"Error number 75 occurred Path/File access error"});
    // A good print prints this window and says nothing.
    b.link.dialogs.clear();
    QString printed;
    setWindowPrinter([&](Form& w) { printed = w.name(); });
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrintStatusDigCard.click();
    EXPECT_EQ(printed, "frmStatus");
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
    setWindowPrinter(nullptr);
}
