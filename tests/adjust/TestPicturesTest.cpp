// The pictures of the test windows: the stripe bitmap and the bar files drawn at build time.
#include "adjust/TestBars.h"
#include "adjust/TestWindows.h"
#include "adjust/ui/TestViews.h"
#include "support/SimProcess.h"

#include <QImage>
#include <gtest/gtest.h>

using namespace velmorak;

TEST(TestPictures, StripeBitmapIsOnePixelColumnsWhiteFirst) {
    const QImage img = stripeBitmap();
    EXPECT_EQ(img.width(), 1927);
    EXPECT_EQ(img.height(), 1674);
    const QRgb white = qRgb(255, 255, 255), black = qRgb(0, 0, 0);
    const struct {
        int x;
        QRgb colour;
    } columns[] = {{0, white}, {1, black}, {2, white},    {3, black},   {7, black},
                   {8, white}, {9, black}, {1925, black}, {1926, white}};
    for (int y : {0, 1, 837, 1673})
        for (const auto& c : columns)
            EXPECT_EQ(img.pixel(c.x, y), c.colour) << "x " << c.x << " y " << y;
}

TEST(TestPictures, BarFilesBesideTheProgram) {
    // Drawn by the build beside the executables: a colour bar and a grey ramp.
    const QImage colour(test::buildDir() + "/colorC.bmp");
    const QImage grey(test::buildDir() + "/colorG.bmp");
    ASSERT_FALSE(colour.isNull());
    ASSERT_FALSE(grey.isNull());
    EXPECT_EQ(colour.width(), FrmTestBars::kPictureWidth);
    EXPECT_EQ(grey.width(), FrmTestBars::kPictureWidth);
    // Colour: white at the left, black at the right, a saturated colour between.
    EXPECT_EQ(colour.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(colour.pixel(colour.width() - 1, colour.height() - 1), qRgb(0, 0, 0));
    const QColor mid = colour.pixelColor(colour.width() / 2 - 1, 10);
    EXPECT_GT(mid.saturation(), 200);
    // Grey: no colour anywhere, darker from left to right.
    int last = 256;
    for (int x = 0; x < grey.width(); x += 12) {
        const QColor c = grey.pixelColor(x, grey.height() / 2);
        EXPECT_EQ(c.saturation(), 0) << x;
        EXPECT_LT(c.value(), last) << x;
        last = c.value();
    }
    EXPECT_EQ(last, 0);
}

TEST(TestPictures, ColourAndGreyPicturesShareOneWindow) {
    using A = BarsStep;
    const struct {
        TestPicture which;
        int step;
        A::Action action;
        int next, strip;
        bool colour;
    } cases[] = {
        {TestPicture::Color, 0, A::Place, 1, 5, true},
        {TestPicture::Color, 11, A::Switch, 1, 0, true},
        {TestPicture::Color, 15, A::Switch, 5, 0, true},
        {TestPicture::Color, 1, A::Close, 0, 0, true},
        {TestPicture::Color, 5, A::Close, 0, 0, true},
        {TestPicture::Color, 3, A::Close, 0, 0, true},
        {TestPicture::Gray, 0, A::Place, 11, 15, false},
        {TestPicture::Gray, 1, A::Switch, 11, 0, false},
        {TestPicture::Gray, 5, A::Switch, 15, 0, false},
        {TestPicture::Gray, 11, A::Close, 0, 0, false},
        {TestPicture::Gray, 15, A::Close, 0, 0, false},
        {TestPicture::Gray, 2, A::Close, 0, 0, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << (c.which == TestPicture::Color ? "colour " : "grey ") << c.step);
        const BarsStep s = barsStep(c.which, c.step);
        EXPECT_EQ(s.action, c.action);
        if (c.action == A::Close) continue;
        EXPECT_EQ(s.step, c.next);
        if (c.action == A::Place) {
            EXPECT_EQ(s.stripStep, c.strip);
        }
        EXPECT_EQ(s.colour, c.colour);
    }
}
