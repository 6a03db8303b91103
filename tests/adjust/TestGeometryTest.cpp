// Where the test windows go on a 1280-pixel-wide screen. Strip offsets: 350 twips = 23 px past
// the picture, 500 twips = 33 px wide; the colour window's overlap 100 twips = 7 px.
#include "adjust/TestGeometry.h"

#include <gtest/gtest.h>

using namespace velmorak::testgeo;

namespace {
constexpr int kScreen = 1280;

struct Case {
    const char* what;
    QRect console;
    QRect picture;
    int left;
    int width; // -1: the window keeps its width
    bool strip;
};
} // namespace

TEST(TestGeometry, SetOfThreeAtTheRightEdge) {
    const struct {
        int screen, width, test, color, gray;
    } cases[] = {
        {1280, 200, 1080, 880, 680},
        {1024, 200, 824, 624, 424},
        {800, 300, 500, 200, -100},
    };
    for (const auto& c : cases) {
        const SetLefts l = setLefts(c.screen, c.width);
        EXPECT_EQ(l.test, c.test) << c.screen;
        EXPECT_EQ(l.color, c.color) << c.screen;
        EXPECT_EQ(l.gray, c.gray) << c.screen;
    }
}

TEST(TestGeometry, SharpnessWindowBesideTheAdjustmentWindow) {
    // frmTest 200 wide.
    const Case cases[] = {
        {"room on the right", {100, 50, 600, 400}, {24, 10, 40, 30}, 700, -1, false},
        {"right edge exactly reached", {480, 50, 600, 400}, {24, 10, 40, 30}, 1080, -1, false},
        {"no room on the right: left of it", {900, 50, 300, 400}, {24, 10, 40, 30}, 700, -1, false},
        {"both exactly as wide as the screen",
         {0, 0, 1080, 400},
         {24, 10, 40, 30},
         1080,
         -1,
         false},
        {"too wide together: a strip", {50, 0, 1100, 400}, {24, 10, 40, 30}, 137, 33, true},
        {"strip follows the picture", {-20, 0, 1200, 400}, {300, 10, 60, 30}, 363, 33, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Beside b = besideSharp(kScreen, c.console, c.picture, 200);
        EXPECT_EQ(b.left, c.left);
        EXPECT_EQ(b.width, c.width);
        EXPECT_EQ(b.strip, c.strip);
    }
}

TEST(TestGeometry, ColourWindowLeavesRoomForTheSharpnessWindow) {
    // frmTest and frmTestC 200 wide each.
    const Case cases[] = {
        {"both fit on the right: overlapping frmTest's place",
         {100, 0, 600, 400},
         {},
         893,
         -1,
         false},
        {"exactly fits on the right", {280, 0, 600, 400}, {}, 1073, -1, false},
        {"only frmTest fits on the right", {400, 0, 600, 400}, {}, 200, -1, false},
        {"frmTest just fits, the colour window does not", {480, 0, 600, 400}, {}, 280, -1, false},
        {"not even frmTest fits on the right", {600, 0, 600, 400}, {}, 200, -1, false},
        {"all three exactly as wide as the screen", {0, 0, 880, 400}, {}, 1073, -1, false},
        {"too wide together: a strip", {10, 0, 900, 400}, {30, 5, 40, 20}, 103, 33, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Beside b = besideColor(kScreen, c.console, c.picture, 200, 200);
        EXPECT_EQ(b.left, c.left);
        EXPECT_EQ(b.width, c.width);
        EXPECT_EQ(b.strip, c.strip);
    }
}

TEST(TestGeometry, TheSharpnessWindowsWidthCounts) {
    // Adjustment window at 100, 500 wide: frmTest's width decides between the branches.
    const struct {
        int sharp, left;
        bool strip;
    } cases[] = {{200, 793, false}, {500, -100, false}, {580, -100, false}, {581, 33, true}};
    for (const auto& c : cases) {
        const Beside b = besideColor(kScreen, {100, 0, 500, 400}, {10, 0, 40, 20}, c.sharp, 200);
        EXPECT_EQ(b.strip, c.strip) << c.sharp;
        EXPECT_EQ(b.strip ? b.left - 100 - 10 - 40 : b.left, c.strip ? 23 : c.left) << c.sharp;
    }
}
