// The test picture windows in a whole session: the set from the menus, the clicks, keys and
// releases on each window, and the windows beside the adjustment window. The bench's screen is
// 1280 x 1024; a maximised window there is 984 high (the rest is the desktop's panel).
#include "session/SessionBench.h"

#include "adjust/TestBars.h"
#include "adjust/TestWindows.h"
#include "registers/FrmAD9888.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

constexpr int kUsable = 984;

// A window system that maximises a window to the usable part of the screen.
class MaximisingView : public FormView {
  public:
    explicit MaximisingView(Form& f)
        : link_(f.onPropertyChanged.connect([&f](Prop p) {
              if (p == Prop::WindowState && f.windowState() == WindowState::Maximized)
                  f.move(0, 0, 1280, kUsable);
          })) {}
    void show(bool) override {}
    void hide() override {}

  private:
    ScopedConnection link_;
};

struct Bench : SessionBench {
    Bench() {
        session->forms.setViewFactory([](Form& f) { return new MaximisingView(f); });
        EXPECT_TRUE(start());
    }
    Form* win(const char* name) { return session->forms.get(name); }
    FrmTest& test() { return dynamic_cast<FrmTest&>(*win("frmTest")); }
    FrmTestBars& bars(const char* name) { return dynamic_cast<FrmTestBars&>(*win(name)); }
    TestBars testBars() { return TestBars(session->context); }
    bool noneOpen() { return !win("frmTest") && !win("frmTestC") && !win("frmTestG"); }
};

QRect rectOf(const Form& f) {
    return {f.left(), f.top(), f.width(), f.height()};
}

enum class Do { Up, Dbl, Space };

void act(FrmTest& t, Do d) {
    switch (d) {
    case Do::Up:
        t.mouseUp();
        break;
    case Do::Dbl:
        t.dblClick();
        break;
    case Do::Space:
        EXPECT_EQ(t.keyUp(Qt::Key_Space), 0);
        break;
    }
}

// The adjustment window as the pictures' clicks see it.
struct Console : Form {
    Console(int left, int width) : Form("frmConsole") { move(left, 30, width, 500); }
};

} // namespace

TEST(TestWindows, SetOpensAtTheRightWithTheUsableHeightAndCloses) {
    Bench b;
    MenuItem& tick = b.frm().mnuTests;
    tick.click();
    EXPECT_TRUE(tick.checked());
    EXPECT_EQ(b.st().TestBarsOn, 1);
    const struct {
        const char* name;
        QRect at;
    } placed[] = {{"frmTest", {1080, 0, 200, kUsable}},
                  {"frmTestC", {880, 0, 200, kUsable}},
                  {"frmTestG", {680, 0, 200, kUsable}}};
    for (const auto& p : placed) {
        ASSERT_NE(b.win(p.name), nullptr) << p.name;
        EXPECT_EQ(rectOf(*b.win(p.name)), p.at) << p.name;
        EXPECT_TRUE(b.win(p.name)->visible()) << p.name;
        EXPECT_EQ(b.win(p.name)->windowState(), WindowState::Normal) << p.name;
    }
    EXPECT_EQ(b.win("frmTest")->caption(), "Test");
    EXPECT_EQ(b.win("frmTestC")->caption(), "Test Color");
    EXPECT_TRUE(b.bars("frmTestC").impicT.picture().endsWith("/colorC.bmp"));
    EXPECT_TRUE(b.bars("frmTestG").impicT.picture().endsWith("/colorG.bmp"));
    EXPECT_EQ(b.st().TestW, 1080);
    EXPECT_EQ(b.st().TestH, 200);
    // No step is taken by the set itself.
    EXPECT_EQ(b.st().SharpTestStep, 0);
    EXPECT_EQ(b.st().ColorTestStep, 0);

    tick.click();
    EXPECT_FALSE(tick.checked());
    EXPECT_EQ(b.st().TestBarsOn, 0);
    EXPECT_TRUE(b.noneOpen());
}

TEST(TestWindows, SetFromTheFlatPanelWindowAndItsUnload) {
    Bench b;
    auto& panel = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    panel.mnuTestBars.click();
    EXPECT_TRUE(panel.mnuTestBars.checked());
    EXPECT_FALSE(b.frm().mnuTests.checked());
    ASSERT_NE(b.win("frmTestG"), nullptr);
    EXPECT_EQ(b.win("frmTestG")->left(), 680);
    panel.mnuClose.click();
    EXPECT_EQ(b.st().TestBarsOn, 0);
    EXPECT_TRUE(b.noneOpen());

    // Closing the main window does the same.
    b.frm().mnuTests.click();
    ASSERT_FALSE(b.noneOpen());
    b.session->forms.unload("frmStart");
    EXPECT_EQ(b.st().TestBarsOn, 0);
    EXPECT_TRUE(b.noneOpen());
}

TEST(TestWindows, InTheSetEachClickTogglesFullScreen) {
    const QRect inSet(1080, 0, 200, kUsable);
    const QRect full(0, 0, 1280, 1024);
    // Back in its place the window keeps the full screen's top and height.
    const QRect back(1080, 0, 200, 1024);
    const struct {
        std::vector<Do> steps;
        QRect at;
        int step;
    } cases[] = {
        {{Do::Up}, full, 1},
        {{Do::Space}, full, 1},
        {{Do::Dbl}, full, 1},
        {{Do::Up, Do::Up}, back, 0},
        {{Do::Dbl, Do::Space}, back, 0},
        {{Do::Up, Do::Dbl, Do::Space}, full, 1},
        {{Do::Space, Do::Space, Do::Space, Do::Space}, back, 0},
    };
    for (const auto& c : cases) {
        Bench b;
        b.frm().mnuTests.click();
        ASSERT_EQ(rectOf(b.test()), inSet);
        for (Do d : c.steps)
            act(b.test(), d);
        ASSERT_NE(b.win("frmTest"), nullptr);
        EXPECT_EQ(rectOf(b.test()), c.at) << c.steps.size();
        EXPECT_EQ(b.st().SharpTestStep, c.step) << c.steps.size();
    }
}

TEST(TestWindows, BesideTheConsoleClicksCountToClosing) {
    const struct {
        const char* what;
        int width; // of the adjustment window: 600 fits beside, 1100 makes a strip
        std::vector<Do> steps;
        int step; // 0 with the window closed
        bool open;
        bool full;
    } cases[] = {
        {"one click", 600, {Do::Up}, 2, true, false},
        {"two clicks", 600, {Do::Up, Do::Space}, 3, true, false},
        {"three clicks close", 600, {Do::Up, Do::Up, Do::Up}, 0, false, false},
        {"double click fills the screen", 600, {Do::Dbl}, 2, true, true},
        {"then two more close", 600, {Do::Dbl, Do::Up, Do::Up}, 0, false, true},
        {"a strip ignores clicks", 1100, {Do::Up, Do::Space, Do::Up, Do::Up}, 5, true, false},
        {"a strip fills the screen on a double click", 1100, {Do::Dbl, Do::Up}, 3, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bench b;
        Console con(100, c.width);
        b.testBars().pictureClick(TestPicture::Sharp, con, QRect(20, 40, 60, 30));
        for (Do d : c.steps)
            act(b.test(), d);
        EXPECT_EQ(b.st().SharpTestStep, c.step);
        EXPECT_EQ(b.win("frmTest") != nullptr, c.open);
        if (c.open && c.full) {
            EXPECT_EQ(rectOf(b.test()), QRect(0, 0, 1280, 1024));
        }
    }
}

TEST(TestWindows, EscClosesAllThreeAndEveryKeyIsConsumed) {
    for (bool fromMenu : {true, false}) {
        SCOPED_TRACE(fromMenu ? "set" : "beside the console");
        Bench b;
        Console con(100, 600);
        if (fromMenu) {
            b.frm().mnuTests.click();
        } else {
            b.testBars().pictureClick(TestPicture::Sharp, con, {});
            b.testBars().pictureClick(TestPicture::Color, con, {});
            b.frm().mnuTests.setChecked(true);
        }
        for (int key : {int(Qt::Key_A), int(Qt::Key_Return), int(Qt::Key_F4)}) {
            EXPECT_EQ(b.test().keyUp(key), 0);
            EXPECT_NE(b.win("frmTest"), nullptr);
        }
        EXPECT_EQ(b.test().keyUp(Qt::Key_Escape), 0);
        EXPECT_TRUE(b.noneOpen());
        EXPECT_EQ(b.st().TestBarsOn, 0);
        EXPECT_EQ(b.st().SharpTestStep, 0);
        EXPECT_EQ(b.st().ColorTestStep, 0);
        EXPECT_FALSE(b.frm().mnuTests.checked());
    }
}

TEST(TestWindows, BarWindowsCloseOnReleasesByTheirStep) {
    enum Where { Window, Picture };
    const struct {
        const char* name;
        int step;
        Where where;
        bool closes;
    } cases[] = {
        {"frmTestC", 0, Window, true},   {"frmTestC", 1, Window, true},
        {"frmTestC", 5, Window, false},  {"frmTestC", 11, Window, true},
        {"frmTestC", 15, Window, true},  {"frmTestC", 0, Picture, false},
        {"frmTestC", 1, Picture, true},  {"frmTestC", 5, Picture, false},
        {"frmTestC", 11, Picture, true}, {"frmTestC", 15, Picture, false},
        {"frmTestG", 0, Picture, false}, {"frmTestG", 1, Picture, true},
        {"frmTestG", 1, Window, false},  {"frmTestG", 0, Window, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " step " << c.step
                                        << (c.where == Window ? " window" : " picture"));
        Bench b;
        const bool colour = QString(c.name) == "frmTestC";
        qint16& step = colour ? b.st().ColorTestStep : b.st().GrayTestStep;
        b.session->forms.show(c.name);
        step = qint16(c.step);
        FrmTestBars& w = b.bars(c.name);
        if (c.where == Window)
            w.mouseUp();
        else
            w.pictureMouseUp();
        EXPECT_EQ(b.win(c.name) == nullptr, c.closes);
        // Unloading clears the window's own step.
        EXPECT_EQ(step, c.closes ? 0 : c.step);
    }
}

TEST(TestWindows, PicturesOfTheConsoleOpenSwitchAndClose) {
    const QString show = "Click on it to show 'TEST BAR'";
    const QString close = "Click on it to close 'TEST BAR'";
    struct Click {
        TestPicture which;
        int step;         // ColorTestStep after the click (SharpTestStep for Sharp)
        const char* file; // frmTestC's picture, nullptr when closed
    };
    const struct {
        const char* what;
        int width;
        int left;
        int barsWidth;
        std::vector<Click> clicks;
    } cases[] = {
        {"colour, grey, closed",
         600,
         893,
         200,
         {{TestPicture::Color, 1, "colorC.bmp"},
          {TestPicture::Gray, 11, "colorG.bmp"},
          {TestPicture::Gray, 0, nullptr}}},
        {"grey, colour, closed by colour",
         600,
         893,
         200,
         {{TestPicture::Gray, 11, "colorG.bmp"},
          {TestPicture::Color, 1, "colorC.bmp"},
          {TestPicture::Color, 0, nullptr}}},
        {"strip: colour, grey, colour, closed",
         1000,
         100 + 20 + 60 + 23,
         33,
         {{TestPicture::Color, 5, "colorC.bmp"},
          {TestPicture::Gray, 15, "colorG.bmp"},
          {TestPicture::Color, 5, "colorC.bmp"},
          {TestPicture::Color, 0, nullptr}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bench b;
        Console con(100, c.width);
        TestBars t = b.testBars();
        EXPECT_EQ(t.tip(TestPicture::Color), show);
        EXPECT_EQ(t.tip(TestPicture::Gray), show);
        for (const Click& k : c.clicks) {
            t.pictureClick(k.which, con, QRect(20, 40, 60, 30));
            EXPECT_EQ(b.st().ColorTestStep, k.step);
            Form* w = b.win("frmTestC");
            ASSERT_EQ(w != nullptr, k.file != nullptr);
            if (w) {
                EXPECT_TRUE(b.bars("frmTestC").impicT.picture().endsWith(k.file));
                EXPECT_EQ(rectOf(*w), QRect(c.left, 0, c.barsWidth, kUsable));
            }
            const bool colourOn = k.step == 1 || k.step == 5;
            const bool greyOn = k.step == 11 || k.step == 15;
            EXPECT_EQ(t.tip(TestPicture::Color), colourOn ? close : show);
            EXPECT_EQ(t.tip(TestPicture::Gray), greyOn ? close : show);
        }
        EXPECT_EQ(b.win("frmTestG"), nullptr);
    }
}

TEST(TestWindows, SharpPictureOpensBesideAndClosesOnTheSecondClick) {
    Bench b;
    Console con(900, 300);
    TestBars t = b.testBars();
    t.pictureClick(TestPicture::Sharp, con, {});
    ASSERT_NE(b.win("frmTest"), nullptr);
    EXPECT_EQ(rectOf(b.test()), QRect(700, 0, 200, kUsable));
    EXPECT_EQ(b.st().SharpTestStep, 1);
    EXPECT_EQ(t.tip(TestPicture::Sharp), "Click on it to close 'TEST BAR'");
    t.pictureClick(TestPicture::Sharp, con, {});
    EXPECT_EQ(b.win("frmTest"), nullptr);
    EXPECT_EQ(b.st().SharpTestStep, 0);
    EXPECT_EQ(t.tip(TestPicture::Sharp), "Click on it to show 'TEST BAR'");
}

TEST(TestWindows, ClosingTheConsoleClosesWhatItOpened) {
    const struct {
        const char* what;
        bool sharp, colour, set;
        bool testLeft, barsLeft;
    } cases[] = {
        {"both pictures", true, true, false, false, false},
        {"only sharpness", true, false, false, false, false},
        {"only colour", false, true, false, false, false},
        {"the menu's set stays", false, false, true, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        Bench b;
        Console con(100, 600);
        TestBars t = b.testBars();
        if (c.set) b.frm().mnuTests.click();
        if (c.sharp) t.pictureClick(TestPicture::Sharp, con, {});
        if (c.colour) t.pictureClick(TestPicture::Gray, con, {});
        t.consoleUnloaded();
        EXPECT_EQ(b.win("frmTest") != nullptr, c.testLeft);
        EXPECT_EQ(b.win("frmTestC") != nullptr, c.barsLeft);
    }
}

TEST(TestWindows, FlatPanelEntriesToggleOneFullScreenWindowEach) {
    const struct {
        const char* menu;
        const char* window;
        qint16 CardState::*step;
        const char* file;
    } cases[] = {
        {"mnuSharp", "frmTest", &CardState::SharpTestStep, nullptr},
        {"mnuColor", "frmTestC", &CardState::ColorTestStep, "colorC.bmp"},
        {"mnuGray", "frmTestG", &CardState::GrayTestStep, "colorG.bmp"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.menu);
        Bench b;
        auto& panel = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
        auto& item = panel.control<MenuItem>(c.menu);
        // Under a hidden menu: out of the user's reach, yet working.
        item.click();
        EXPECT_EQ(b.win(c.window), nullptr);
        item.fireClick();
        EXPECT_TRUE(item.checked());
        ASSERT_NE(b.win(c.window), nullptr);
        EXPECT_EQ(rectOf(*b.win(c.window)), QRect(0, 0, 1280, 1024));
        EXPECT_EQ(b.st().*c.step, 1);
        if (c.file) {
            EXPECT_TRUE(b.bars(c.window).impicT.picture().endsWith(c.file));
        }
        item.fireClick();
        EXPECT_FALSE(item.checked());
        EXPECT_EQ(b.win(c.window), nullptr);
        EXPECT_EQ(b.st().*c.step, 0);
    }
}
