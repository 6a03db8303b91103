// The rules that turn the parameter block's bytes into colours, texts and switch positions.
#include "cardinfo/StatusRules.h"
#include "cardinfo/UcSwitch.h"

#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::StatusRules;

TEST(StatusRules, TemperatureIsTwoTermsCutToFiveCharacters) {
    struct Row {
        int raw;
        const char* shown;
    };
    for (const Row& r : {Row{0, "-43.6"}, Row{42, "0"}, Row{43, "1.04"}, Row{41, "-1.04"},
                         Row{76, "35.36"}, Row{100, "60.32"}, Row{10, "-33.2"}, Row{255, "221.5"}})
        EXPECT_EQ(temperatureText(r.raw), r.shown) << r.raw;
}

TEST(StatusRules, VoltagesAreCutNotRounded) {
    struct Row {
        int raw, divisor;
        const char* shown;
    };
    for (const Row& r :
         {Row{196, 60, "3.266"}, Row{198, 60, "3.3"}, Row{200, 40, "5"}, Row{255, 40, "6.375"},
          Row{0, 60, "0"}, Row{1, 60, "0.016"}, Row{255, 60, "4.25"}, Row{7, 40, "0.175"}})
        EXPECT_EQ(voltageText(r.raw, r.divisor), r.shown) << r.raw << "/" << r.divisor;
}

TEST(StatusRules, FirmwareMajorIsACharacterFrom48) {
    struct Row {
        int major, minor;
        const char* shown;
    };
    for (const Row& r :
         {Row{0x31, 5, "1.05"}, Row{2, 17, "2.17"}, Row{47, 3, "47.03"}, Row{48, 3, "0.03"},
          Row{57, 10, "9.10"}, Row{65, 0, "A.00"}, Row{0, 0, "0.00"}, Row{2, 123, "2.123"}})
        EXPECT_EQ(FirmwareVer(qint16(r.major), qint16(r.minor)), r.shown) << r.major;
}

TEST(StatusRules, LedColoursFromTheirBits) {
    struct Row {
        int s10;
        quint32 diag, tx, rx;
    };
    for (const Row& r : {
             Row{0x30, kGrey, kGrey, kGrey},                   // no information anywhere
             Row{0x2A, kGreen, kGreen, kGreen},                // all good
             Row{0x15, kRedDiagnostics, kRedError, kRedError}, // all faults
             Row{0x0C, kRedDiagnostics, kGrey, kGrey},         // Tx both bits: grey
             Row{0xE3, kGreen, kGrey, kGrey},                  // switches above change nothing
             Row{0x09, kRedDiagnostics, kGreen, kRedError},
             Row{0x06, kRedDiagnostics, kRedError, kGreen},
         }) {
        EXPECT_EQ(diagnosticsColour(r.s10), r.diag) << std::hex << r.s10;
        EXPECT_EQ(errorColour(r.s10, 2), r.tx) << std::hex << r.s10;
        EXPECT_EQ(errorColour(r.s10, 0), r.rx) << std::hex << r.s10;
    }
    // The two reds are told apart by one step of green.
    EXPECT_EQ(kRedDiagnostics, 0xFF0000u);
    EXPECT_EQ(kRedError, 0xFF0100u);
    // Mode LEDs light on a clear bit.
    EXPECT_EQ(activeLowColour(0x70, 7), kGreen);
    EXPECT_EQ(activeLowColour(0x70, 6), kGrey);
    EXPECT_EQ(activeLowColour(0x80, 4), kGreen);
}

TEST(StatusRules, SwitchesFromBytes9And10) {
    // 0xA5 = 1010 0101: switches 0, 2, 5 and 7 on; 0x40: switch 9 on, 8 off.
    const bool want[10] = {true, false, true, false, false, true, false, true, false, true};
    for (int k = 0; k < 10; ++k)
        EXPECT_EQ(switchState(k, 0xA5, 0x40), want[k]) << k;
    EXPECT_TRUE(switchState(8, 0, 0x80));
    EXPECT_FALSE(switchState(9, 0xFF, 0x80));
}

TEST(UcSwitch, SetSwitchMovesTheSliderAndReadsBack) {
    UcSwitchSH sh("ucSwitchSH1");
    sh.SetSwitch(3, false);
    EXPECT_EQ(sh.top(3), 60);
    EXPECT_FALSE(sh.SetSwitch(3));
    sh.SetSwitch(3, true);
    EXPECT_EQ(sh.top(3), 0);
    EXPECT_TRUE(sh.SetSwitch(3));
    sh.SetSwitch(11, false);
    EXPECT_FALSE(sh.SetSwitch(11));
    EXPECT_THROW(sh.SetSwitch(12, true), RunTimeError);
    EXPECT_THROW((void)sh.SetSwitch(-1), RunTimeError);
}

TEST(UcSwitch, ZoneAfterAPress) {
    struct Row {
        int width;
        double x;
        int zone;
    };
    for (const Row& r : {Row{250, 0, 0}, Row{250, 19.9, 0}, Row{250, 20, 1}, Row{250, 239.5, 11},
                         Row{250, 249, 12}, Row{100, 99, 12}, Row{120, 55.7, 5}}) {
        UcSwitchSH sh("ucSwitchSH1");
        sh.resize(r.width);
        int clicks = 0;
        sh.onClick.connect([&] { ++clicks; });
        sh.pressBackground(r.x);
        EXPECT_EQ(sh.Zone(), r.zone) << r.width << " " << r.x;
        EXPECT_EQ(clicks, 1);
    }
    UcSwitchSH sh("ucSwitchSH1");
    sh.resize(240);
    sh.pressSlider(7);
    EXPECT_EQ(sh.Zone(), 7);
    // Sliders stand one step apart; the first at the left edge.
    EXPECT_EQ(sh.sliderLeft(0), 0);
    EXPECT_EQ(sh.sliderLeft(1), 20);
    EXPECT_EQ(sh.sliderLeft(11), 220);
}

TEST(UcSwitch, FramedSwitchSizesItsRowAndClicksOnItsOwnParts) {
    UcSwitchD10 d("ucSwitchDig2");
    d.resize(210, 54);
    EXPECT_EQ(d.width(), 218);
    EXPECT_EQ(d.height(), 62);
    // Ten and a half steps of the body: twelve sliders span 240.
    EXPECT_EQ(d.ucSwitchSH1.width(), 240);
    EXPECT_EQ(d.ucSwitchSH1.sliderLeft(10), 200);
    int clicks = 0;
    d.onClick.connect([&] { ++clicks; });
    d.pressBody();
    d.pressDirection();
    d.pressBackground();
    EXPECT_EQ(clicks, 3);
    d.ucSwitchSH1.pressSlider(2); // the row's own click is not the frame's
    EXPECT_EQ(clicks, 3);
    d.SetValue(4, false);
    EXPECT_EQ(d.ucSwitchSH1.top(4), 60);
    d.SetValue(4, true);
    EXPECT_TRUE(d.ucSwitchSH1.SetSwitch(4));
}
