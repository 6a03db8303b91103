// Where the test windows go on a 1280-pixel-wide screen, all three windows 200 wide. Twips at 15
// to the pixel: the strip starts 23 px past the picture and is 33 px wide; the overlap is 7 px.
#include "adjust/TestGeometry.h"

#include <gtest/gtest.h>

using namespace velmorak::testgeo;

TEST(TestGeometry, SetOfThreeAtTheRightEdge) {
    const SetLefts l = setLefts(1280, 200);
    EXPECT_EQ(l.test, 1080);
    EXPECT_EQ(l.color, 880);
    EXPECT_EQ(l.gray, 680);
}

TEST(TestGeometry, BesideTheAdjustmentWindowOrAStrip) {
    const QRect pic(24, 10, 40, 30);
    const struct {
        const char* what;
        bool colour; // frmTestC (leaving room for frmTest), else frmTest
        QRect console;
        int left, width;
    } cases[] = {
        {"sharp: room on the right", false, {100, 0, 600, 400}, 700, -1},
        {"sharp: right edge exactly reached", false, {480, 0, 600, 400}, 1080, -1},
        {"sharp: no room on the right", false, {900, 0, 300, 400}, 700, -1},
        {"sharp: exactly as wide as the screen", false, {0, 0, 1080, 400}, 1080, -1},
        {"sharp: too wide, a strip", false, {50, 0, 1100, 400}, 50 + 24 + 40 + 23, 33},
        {"colour: both fit on the right", true, {100, 0, 600, 400}, 893, -1},
        {"colour: exactly fits on the right", true, {280, 0, 600, 400}, 1073, -1},
        {"colour: only frmTest fits", true, {400, 0, 600, 400}, 200, -1},
        {"colour: frmTest just fits", true, {480, 0, 600, 400}, 280, -1},
        {"colour: not even frmTest fits", true, {600, 0, 600, 400}, 200, -1},
        {"colour: all three as wide as the screen", true, {0, 0, 880, 400}, 1073, -1},
        {"colour: too wide, a strip", true, {10, 0, 881, 400}, 10 + 24 + 40 + 23, 33},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const Beside b = c.colour ? besideColor(1280, c.console, pic, 200, 200)
                                  : besideSharp(1280, c.console, pic, 200);
        EXPECT_EQ(b.left, c.left);
        EXPECT_EQ(b.width, c.width);
        EXPECT_EQ(b.strip, c.width > 0);
    }
    // A wider frmTest counts even when closed: it pushes the colour window left.
    EXPECT_EQ(besideColor(1280, {100, 0, 500, 400}, pic, 500, 200).left, -100);
}
