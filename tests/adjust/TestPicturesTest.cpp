// The pictures of the test windows and the step table of the colour/grey window.
#include "adjust/TestBars.h"
#include "adjust/TestWindows.h"
#include "adjust/ui/TestViews.h"
#include "support/SimProcess.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace velmorak;

TEST(TestPictures, StripeBitmapIsOnePixelColumnsWhiteFirst) {
    const QImage img = stripeBitmap();
    EXPECT_EQ(img.size(), QSize(1927, 1674));
    const QRgb w = qRgb(255, 255, 255), k = qRgb(0, 0, 0);
    const QRgb first[] = {w, k, w, k, w, k, w, k, w, k};
    for (int y : {0, 837, 1673}) {
        for (int x = 0; x < 10; ++x)
            EXPECT_EQ(img.pixel(x, y), first[x]) << x << "," << y;
        EXPECT_EQ(img.pixel(1925, y), k);
        EXPECT_EQ(img.pixel(1926, y), w);
    }
}

TEST(TestPictures, BarFilesDrawnByTheBuild) {
    const QImage colour(test::buildDir() + "/colorC.bmp");
    const QImage grey(test::buildDir() + "/colorG.bmp");
    ASSERT_EQ(colour.width(), FrmTestBars::kPictureWidth);
    ASSERT_EQ(grey.width(), FrmTestBars::kPictureWidth);
    EXPECT_EQ(colour.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_GT(colour.pixelColor(colour.width() / 2 - 1, 0).saturation(), 200);
    // Grey: no colour, darker step by step to black.
    int last = 256;
    for (int x = 0; x < grey.width(); x += 12) {
        EXPECT_EQ(grey.pixelColor(x, 0).saturation(), 0);
        EXPECT_LT(grey.pixelColor(x, 0).value(), last);
        last = grey.pixelColor(x, 0).value();
    }
    EXPECT_EQ(last, 0);
}

TEST(TestPictures, ColourAndGreyPicturesShareOneWindow) {
    using A = BarsStep;
    const auto C = TestPicture::Color, G = TestPicture::Gray;
    const struct {
        TestPicture which;
        int step;
        A::Action action;
        int next, strip;
    } cases[] = {
        {C, 0, A::Place, 1, 5},   {C, 11, A::Switch, 1, 0}, {C, 15, A::Switch, 5, 0},
        {C, 1, A::Close, 0, 0},   {C, 5, A::Close, 0, 0},   {C, 3, A::Close, 0, 0},
        {G, 0, A::Place, 11, 15}, {G, 1, A::Switch, 11, 0}, {G, 5, A::Switch, 15, 0},
        {G, 11, A::Close, 0, 0},  {G, 15, A::Close, 0, 0},  {G, 2, A::Close, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << (c.which == C ? "colour " : "grey ") << c.step);
        const BarsStep s = barsStep(c.which, c.step);
        EXPECT_EQ(s.action, c.action);
        if (c.action == A::Close) continue;
        EXPECT_EQ(s.step, c.next);
        if (c.action == A::Place) {
            EXPECT_EQ(s.stripStep, c.strip);
        }
        EXPECT_EQ(s.colour, c.which == C);
    }
}
