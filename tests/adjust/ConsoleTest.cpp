// Display Adjustment on the virtual card: what it reads at load, the register each step writes,
// Default and Save into both tables and the card memory, the demonstration state and placing.
#include "ConsoleBench.h"

#include "session/FrmStart.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::ConsoleBench;
using velmorak::test::usualCard;
using velmorak::test::wree;

namespace {
struct Range {
    int min, max, value;
};
void expectRange(const UcScrollChange& s, const Range& r) {
    EXPECT_EQ(s.Min(), r.min) << s.name().toStdString();
    EXPECT_EQ(s.Max(), r.max) << s.name().toStdString();
    EXPECT_EQ(s.Value(), r.value) << s.name().toStdString();
}
} // namespace

TEST(Console, LoadReadsTheChipsIntoTheSteppers) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    ASSERT_EQ(b.st().Connected, -1);
    usualCard(b);
    FrmConsole& f = b.open();
    EXPECT_EQ(f.caption(), "Adjustment Interface");
    EXPECT_EQ(f.AdjustEnabled, 1);
    EXPECT_EQ(f.lblRez.caption(), "1024x768x75");
    EXPECT_TRUE(f.cmdSave.enabled());
    EXPECT_TRUE(f.cmdDefault.enabled());
    // Factory divider 1311: 1248..1374; the card's 1299 is 51 into it.
    expectRange(f.ucScrlCoarse, {1248, 1374, 51});
    expectRange(f.ucScrlPhase, {0, 31, 11});
    // Offsets 32, 40, 48 (mean 40); gains 128, 112, 97 (mean 112).
    expectRange(f.ucScrlR, {0, 127, 95});
    expectRange(f.ucScrlG, {0, 127, 87});
    expectRange(f.ucScrlB, {0, 127, 79});
    expectRange(f.ucScrlBrite, {0, 127, 87});
    expectRange(f.ucScrlContrast, {0, 127, 15});
    EXPECT_EQ(f.GainMean, 112);
    EXPECT_EQ(f.BriteMean, 40);
    // Factory H 288: 161..415; the card's 304 is 143 into it. V 0x9A has its top bit dropped.
    expectRange(f.ucScrlHPoz, {161, 415, 143});
    expectRange(f.ucScrlVPoz, {0, 127, 26});
    EXPECT_EQ(f.txtSerial.text(), "AB123");
    EXPECT_EQ(f.ucScrlR.lblValue.caption(), " 74");
    EXPECT_EQ(f.ChipImage.size() >= 14, true);
}

// The ranges around the factory values, and how the card's own values shift them.
TEST(Console, LoadRanges) {
    struct Row {
        const char* what;
        int def01, def02, def32, def33; // factory row
        int reg1, reg2, tx32, tx33;     // the card
        Range coarse, hpoz;
    };
    // clang-format off
    const Row table[] = {
        {"inside", 0x51, 0xF0, 0x20, 1, 0x51, 0x30, 0x30, 1, {1248, 1374, 51}, {161, 415, 143}},
        // H 448 is more than 254 above Min 161: the range ends at H.
        {"H far right", 0x51, 0xF0, 0x20, 1, 0x51, 0x30, 0xC0, 1, {1248, 1374, 51}, {194, 448, 254}},
        // H 100 below Min 161: the range begins at H.
        {"H left", 0x51, 0xF0, 0x20, 1, 0x51, 0x30, 100, 0, {1248, 1374, 51}, {100, 354, 0}},
        // H equal to Min.
        {"H at Min", 0x51, 0xF0, 0x20, 1, 0x51, 0x30, 161, 0, {1248, 1374, 51}, {161, 415, 0}},
        // Factory H 100: no lower bound above 0, Max 227.
        {"low factory H", 0x51, 0xF0, 100, 0, 0x51, 0x30, 120, 0, {1248, 1374, 51}, {0, 227, 120}},
        // Factory H 450: Max stays 511.
        {"high factory H", 0x51, 0xF0, 0xC2, 1, 0x51, 0x30, 0xC2, 1, {1248, 1374, 51}, {323, 511, 127}},
        // Factory divider 48: Min keeps its design 0, Max 111; the card at 50.
        {"low divider", 0x03, 0x00, 0x20, 1, 0x03, 0x20, 0x30, 1, {0, 111, 50}, {161, 415, 143}},
        // The card at 4090, above Max: the range is 4027..4095.
        {"card divider high", 0x51, 0xF0, 0x20, 1, 0xFF, 0xA0, 0x30, 1, {4027, 4095, 63}, {161, 415, 143}},
        // The card at 1200, below Min: 1137..1263.
        {"card divider low", 0x51, 0xF0, 0x20, 1, 0x4B, 0x00, 0x30, 1, {1137, 1263, 63}, {161, 415, 143}},
        // The card at 40, below Min 1248: Min cannot go below 0.
        {"card divider tiny", 0x51, 0xF0, 0x20, 1, 0x02, 0x80, 0x30, 1, {0, 103, 40}, {161, 415, 143}},
    };
    // clang-format on
    for (const Row& r : table) {
        SCOPED_TRACE(r.what);
        ConsoleBench b;
        ASSERT_TRUE(b.start());
        b.row("tblDefValues",
              {{"01", r.def01}, {"02", r.def02}, {"32H", r.def32}, {"33H", r.def33}});
        b.chip({{32, 1, r.reg1}, {32, 2, r.reg2}, {96, 0x32, r.tx32}, {96, 0x33, r.tx33}});
        FrmConsole& f = b.open();
        expectRange(f.ucScrlCoarse, r.coarse);
        expectRange(f.ucScrlHPoz, r.hpoz);
    }
}

// Each stepper's step to the right and to the left, on the wire, from the usual card.
TEST(Console, EachStepWritesItsRegisters) {
    struct Row {
        const char* stepper;
        bool right;
        QStringList frames;
        qint16 FrmConsole::*dirty;
    };
    using F = FrmConsole;
    const Row table[] = {
        {"ucScrlPhase", true, {wree(32, 4, 96)}, &F::DirtyPhase},
        {"ucScrlPhase", false, {wree(32, 4, 80)}, &F::DirtyPhase},
        // 1300 = 0x514: 51H, then 40H.
        {"ucScrlCoarse", true, {wree(32, 1, 0x51), wree(32, 2, 0x40)}, &F::DirtyCoarse},
        {"ucScrlCoarse", false, {wree(32, 1, 0x51), wree(32, 2, 0x20)}, &F::DirtyCoarse},
        // A step right on a colour lowers its offset by 2, a step left raises it.
        {"ucScrlR", true, {wree(32, 11, 62)}, &F::DirtyR},
        {"ucScrlR", false, {wree(32, 11, 66)}, &F::DirtyR},
        {"ucScrlG", true, {wree(32, 12, 78)}, &F::DirtyG},
        {"ucScrlB", false, {wree(32, 13, 98)}, &F::DirtyB},
        // One gain for all three.
        {"ucScrlContrast",
         true,
         {wree(32, 8, 111), wree(32, 9, 111), wree(32, 10, 111)},
         &F::DirtyContrast},
        // 305: low byte 31H; 33H keeps its upper bits A4 and takes bit 8.
        {"ucScrlHPoz", true, {wree(96, 0x32, 0x31), wree(96, 0x33, 0xA5)}, &F::DirtyHPoz},
        {"ucScrlHPoz", false, {wree(96, 0x32, 0x2F), wree(96, 0x33, 0xA5)}, &F::DirtyHPoz},
        {"ucScrlVPoz", true, {wree(96, 0x34, 27)}, &F::DirtyVPoz},
        // Brightness moves the three offsets and writes through them.
        {"ucScrlBrite", true, {wree(32, 11, 62), wree(32, 12, 78), wree(32, 13, 94)}, &F::DirtyG},
        {"ucScrlBrite", false, {wree(32, 11, 66), wree(32, 12, 82), wree(32, 13, 98)}, &F::DirtyB},
    };
    for (const Row& r : table) {
        ConsoleBench b;
        ASSERT_TRUE(b.start());
        usualCard(b);
        FrmConsole& f = b.open();
        auto& s = f.control<UcScrollChange>(r.stepper);
        SCOPED_TRACE(s.name().toStdString() + (r.right ? " right" : " left"));
        b.link.clearTrace();
        EXPECT_EQ(f.*r.dirty, 0);
        r.right ? s.pressRight() : s.pressLeft();
        EXPECT_EQ(b.writes(), r.frames);
        EXPECT_EQ(f.*r.dirty, 1);
        EXPECT_EQ(b.writes().size(), b.link.sent().size()); // nothing else on the wire
    }
}

// Brightness at a colour's bound still moves the other two; the colour goes past its bound.
TEST(Console, BrightnessIgnoresTheColourBounds) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    b.chip({{32, 11, 0}}); // red offset 0: red stepper at 127
    FrmConsole& f = b.open();
    ASSERT_EQ(f.ucScrlR.Value(), 127);
    b.link.clearTrace();
    f.ucScrlBrite.pressRight();
    EXPECT_EQ(f.ucScrlR.Value(), 128);
    EXPECT_EQ(f.ucScrlG.Value(), 88);
    EXPECT_EQ(b.writes(), QStringList({wree(32, 11, 0xFE), wree(32, 12, 78), wree(32, 13, 94)}));
}

// Phase and coarse wait 1 ms before writing; every write waits 10 ms before its frame and 40 ms
// after it.
TEST(Console, StepTimeline) {
    struct Row {
        const char* stepper;
        int ms;
    };
    for (const Row& r : {Row{"ucScrlPhase", 51}, Row{"ucScrlCoarse", 101}, Row{"ucScrlVPoz", 50},
                         Row{"ucScrlContrast", 150}}) {
        ConsoleBench b;
        ASSERT_TRUE(b.start());
        usualCard(b);
        FrmConsole& f = b.open();
        const qint64 before = b.link.host.sleptMs();
        f.control<UcScrollChange>(r.stepper).pressRight();
        EXPECT_EQ(b.link.host.sleptMs() - before, r.ms) << r.stepper;
    }
}

// A held arrow changes the value at the press without telling the window; each repeat writes,
// and the next one is due 200 ms after the write ends; the release writes the last value again.
TEST(Console, HeldArrowWritesOnEveryRepeat) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    b.link.clearTrace();
    const qint64 t0 = b.link.host.now();
    f.ucScrlVPoz.rightDown();
    while (b.link.host.now() - t0 < 1050) {
        b.link.host.sleep(5);
        b.session->forms.pollTimers();
    }
    f.ucScrlVPoz.rightUp();
    f.ucScrlVPoz.rightClick();
    // Repeats at 600 (written by 650) and 850 (by 900); the next would be at 1100.
    EXPECT_EQ(b.writes(),
              QStringList({wree(96, 0x34, 28), wree(96, 0x34, 29), wree(96, 0x34, 29)}));
    EXPECT_EQ(f.ucScrlVPoz.Value(), 29);
}

// The strips open and close their test windows, their tips follow, and closing the adjustment
// window takes the test windows it opened with it.
TEST(ConsoleStrips, OpenCloseAndTips) {
    ConsoleBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FrmConsole& f = b.open();
    const QString show = "Click on it to show 'TEST BAR'";
    const QString close = "Click on it to close 'TEST BAR'";
    EXPECT_EQ(f.picSharp.toolTipText(), show);
    EXPECT_EQ(f.impicColor.toolTipText(), show);
    EXPECT_TRUE(f.impicColor.picture().endsWith("colorC.bmp"));
    EXPECT_TRUE(f.impicGray.picture().endsWith("colorG.bmp"));
    f.picSharp.click();
    EXPECT_TRUE(b.session->forms.isLoaded("frmTest"));
    EXPECT_NE(b.st().SharpTestStep, 0);
    EXPECT_EQ(f.picSharp.toolTipText(), close);
    f.impicGray.click();
    EXPECT_TRUE(b.session->forms.isLoaded("frmTestC"));
    EXPECT_EQ(f.impicGray.toolTipText(), close);
    EXPECT_EQ(f.impicColor.toolTipText(), show);
    f.picSharp.click();
    EXPECT_FALSE(b.session->forms.isLoaded("frmTest"));
    EXPECT_EQ(f.picSharp.toolTipText(), show);
    f.picSharp.click();
    ASSERT_TRUE(b.session->forms.isLoaded("frmTest"));
    f.cmdClose.click();
    EXPECT_FALSE(b.session->forms.isLoaded("frmTest"));
    EXPECT_FALSE(b.session->forms.isLoaded("frmTestC"));
}
