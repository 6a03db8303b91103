// The test windows in a whole session on a 1280 x 1024 screen whose maximised windows are 984
// high: the set from the menus, releases, double clicks and keys, the console's pictures.
#include "session/SessionBench.h"

#include "adjust/TestBars.h"
#include "adjust/TestWindows.h"
#include "registers/FrmAD9888.h"

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

constexpr int kUsable = 984;
const QRect kFull(0, 0, 1280, 1024);

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

struct BarsBench : test::SessionBench {
    BarsBench() {
        session->forms.setViewFactory([](Form& f) { return new MaximisingView(f); });
        EXPECT_TRUE(start());
    }
    Form* win(const char* name) { return session->forms.get(name); }
    FrmTest& test() { return dynamic_cast<FrmTest&>(*win("frmTest")); }
    FrmTestBars& bars(const char* name) { return dynamic_cast<FrmTestBars&>(*win(name)); }
    TestBars t() { return TestBars(session->context); }
    bool noneOpen() { return !win("frmTest") && !win("frmTestC") && !win("frmTestG"); }
    // The adjustment window as its pictures' clicks see it.
    Form console{"frmConsole"};
    void click(TestPicture p, int left, int width) {
        console.move(left, 30, width, 500);
        t().pictureClick(p, console, QRect(20, 40, 60, 30));
    }
};

QRect rectOf(const Form& f) {
    return {f.left(), f.top(), f.width(), f.height()};
}

enum Do { Up, Dbl, Space };
void act(FrmTest& t, Do d) {
    if (d == Up) t.mouseUp();
    if (d == Dbl) t.dblClick();
    if (d == Space) {
        EXPECT_EQ(t.keyUp(Qt::Key_Space), 0);
    }
}

} // namespace

TEST(TestWindows, SetOpensAtTheRightWithTheUsableHeightAndCloses) {
    BarsBench b;
    b.frm().mnuTests.click();
    EXPECT_TRUE(b.frm().mnuTests.checked());
    EXPECT_EQ(b.st().TestBarsOn, 1);
    EXPECT_EQ(rectOf(*b.win("frmTest")), QRect(1080, 0, 200, kUsable));
    EXPECT_EQ(rectOf(*b.win("frmTestC")), QRect(880, 0, 200, kUsable));
    EXPECT_EQ(rectOf(*b.win("frmTestG")), QRect(680, 0, 200, kUsable));
    EXPECT_TRUE(b.win("frmTestG")->visible());
    EXPECT_TRUE(b.bars("frmTestC").impicT.picture().endsWith("/colorC.bmp"));
    EXPECT_TRUE(b.bars("frmTestG").impicT.picture().endsWith("/colorG.bmp"));
    EXPECT_EQ(b.st().TestW, 1080);
    EXPECT_EQ(b.st().TestH, 200);
    EXPECT_EQ(b.st().SharpTestStep + b.st().ColorTestStep, 0);
    b.frm().mnuTests.click();
    EXPECT_FALSE(b.frm().mnuTests.checked());
    EXPECT_EQ(b.st().TestBarsOn, 0);
    EXPECT_TRUE(b.noneOpen());

    // The flat panel window's twin, and its unload; then the main window's.
    auto& panel = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    panel.mnuTestBars.click();
    EXPECT_EQ(b.win("frmTestG")->left(), 680);
    panel.mnuClose.click();
    EXPECT_TRUE(b.noneOpen() && b.st().TestBarsOn == 0);
    b.frm().mnuTests.click();
    b.session->forms.unload("frmStart");
    EXPECT_TRUE(b.noneOpen() && b.st().TestBarsOn == 0);
}

TEST(TestWindows, InTheSetEachClickTogglesFullScreen) {
    // Back in its place the window keeps the full screen's top and height.
    const QRect back(1080, 0, 200, 1024);
    const struct {
        std::vector<Do> steps;
        QRect at;
        int step;
    } cases[] = {
        {{Up}, kFull, 1},    {{Space}, kFull, 1},     {{Dbl}, kFull, 1},
        {{Up, Up}, back, 0}, {{Dbl, Space}, back, 0}, {{Up, Dbl, Space}, kFull, 1},
    };
    for (const auto& c : cases) {
        BarsBench b;
        b.frm().mnuTests.click();
        for (Do d : c.steps)
            act(b.test(), d);
        EXPECT_EQ(rectOf(b.test()), c.at) << c.steps.size();
        EXPECT_EQ(b.st().SharpTestStep, c.step) << c.steps.size();
    }
}

TEST(TestWindows, BesideTheConsoleClicksCountToClosing) {
    const struct {
        const char* what;
        int width; // of the adjustment window: 1100 makes a strip
        std::vector<Do> steps;
        int step; // 0: closed
        bool full;
    } cases[] = {
        {"one click", 600, {Up}, 2, false},
        {"two clicks", 600, {Up, Space}, 3, false},
        {"three clicks close", 600, {Up, Up, Up}, 0, false},
        {"double click fills the screen", 600, {Dbl}, 2, true},
        {"then two more close", 600, {Dbl, Up, Up}, 0, false},
        {"a strip ignores clicks", 1100, {Up, Space, Up}, 5, false},
        {"a strip fills the screen on a double click", 1100, {Dbl, Up}, 3, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        BarsBench b;
        b.click(TestPicture::Sharp, 100, c.width);
        EXPECT_EQ(rectOf(b.test()).left(), c.width == 600 ? 700 : 100 + 20 + 60 + 23);
        for (Do d : c.steps)
            act(b.test(), d);
        EXPECT_EQ(b.st().SharpTestStep, c.step);
        EXPECT_EQ(b.win("frmTest") != nullptr, c.step != 0);
        if (c.full) {
            EXPECT_EQ(rectOf(b.test()), kFull);
        }
    }
}

TEST(TestWindows, EscClosesAllThreeAndEveryKeyIsConsumed) {
    for (bool fromMenu : {true, false}) {
        BarsBench b;
        if (fromMenu) {
            b.frm().mnuTests.click();
        } else {
            b.frm().mnuTests.setChecked(true);
            b.click(TestPicture::Sharp, 100, 600);
            b.click(TestPicture::Color, 100, 600);
        }
        for (int key : {int(Qt::Key_A), int(Qt::Key_Return)})
            EXPECT_EQ(b.test().keyUp(key), 0);
        EXPECT_NE(b.win("frmTestC"), nullptr);
        EXPECT_EQ(b.test().keyUp(Qt::Key_Escape), 0);
        EXPECT_TRUE(b.noneOpen());
        EXPECT_EQ(b.st().TestBarsOn + b.st().SharpTestStep + b.st().ColorTestStep, 0);
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
        {"frmTestC", 0, Window, true},    {"frmTestC", 1, Window, true},
        {"frmTestC", 5, Window, false},   {"frmTestC", 15, Window, true},
        {"frmTestC", 0, Picture, false},  {"frmTestC", 1, Picture, true},
        {"frmTestC", 5, Picture, false},  {"frmTestC", 11, Picture, true},
        {"frmTestC", 15, Picture, false}, {"frmTestG", 0, Picture, false},
        {"frmTestG", 1, Picture, true},   {"frmTestG", 1, Window, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.name << " " << c.step << " " << c.where);
        BarsBench b;
        qint16& step = c.name[7] == 'C' ? b.st().ColorTestStep : b.st().GrayTestStep;
        b.session->forms.show(c.name);
        step = qint16(c.step);
        c.where == Window ? b.bars(c.name).mouseUp() : b.bars(c.name).pictureMouseUp();
        EXPECT_EQ(b.win(c.name) == nullptr, c.closes);
        EXPECT_EQ(step, c.closes ? 0 : c.step); // unloading clears the window's own step
    }
}

TEST(TestWindows, ConsolePicturesOpenSwitchCloseAndTellByTheirTips) {
    const QString show = "Click on it to show 'TEST BAR'",
                  close = "Click on it to close 'TEST BAR'";
    const auto C = TestPicture::Color, G = TestPicture::Gray, S = TestPicture::Sharp;
    const struct {
        int width, left, barsWidth;
        std::vector<std::pair<TestPicture, int>> clicks; // and ColorTestStep after it
    } cases[] = {
        {600, 893, 200, {{C, 1}, {G, 11}, {G, 0}}},
        {600, 893, 200, {{G, 11}, {C, 1}, {C, 0}}},
        {1000, 100 + 20 + 60 + 23, 33, {{C, 5}, {G, 15}, {C, 5}, {C, 0}}},
    };
    for (const auto& c : cases) {
        BarsBench b;
        for (const auto& [which, step] : c.clicks) {
            SCOPED_TRACE(testing::Message() << c.width << " step " << step);
            b.click(which, 100, c.width);
            EXPECT_EQ(b.st().ColorTestStep, step);
            ASSERT_EQ(b.win("frmTestC") != nullptr, step != 0);
            if (step) {
                EXPECT_TRUE(b.bars("frmTestC")
                                .impicT.picture()
                                .endsWith(step < 10 ? "colorC.bmp" : "colorG.bmp"));
                EXPECT_EQ(rectOf(*b.win("frmTestC")), QRect(c.left, 0, c.barsWidth, kUsable));
            }
            EXPECT_EQ(b.t().tip(C), step == 1 || step == 5 ? close : show);
            EXPECT_EQ(b.t().tip(G), step == 11 || step == 15 ? close : show);
        }
    }
    BarsBench b;
    b.click(S, 900, 300);
    EXPECT_EQ(rectOf(b.test()), QRect(700, 0, 200, kUsable));
    EXPECT_EQ(b.t().tip(S), close);
    b.click(S, 900, 300);
    EXPECT_EQ(b.win("frmTest"), nullptr);
    EXPECT_EQ(b.t().tip(S), show);
}

TEST(TestWindows, ClosingTheConsoleClosesWhatItOpened) {
    const struct {
        bool set, sharp, grey;
    } cases[] = {
        {false, true, true}, {false, true, false}, {false, false, true}, {true, false, false}};
    for (const auto& c : cases) {
        BarsBench b;
        if (c.set) b.frm().mnuTests.click();
        if (c.sharp) b.click(TestPicture::Sharp, 100, 600);
        if (c.grey) b.click(TestPicture::Gray, 100, 600);
        b.t().consoleUnloaded();
        // Only the menu's set stays.
        EXPECT_EQ(b.win("frmTest") != nullptr, c.set);
        EXPECT_EQ(b.win("frmTestC") != nullptr, c.set);
    }
}

TEST(TestWindows, FlatPanelEntriesToggleOneFullScreenWindowEach) {
    const struct {
        const char* menu;
        const char* window;
        qint16 CardState::*step;
    } cases[] = {{"mnuSharp", "frmTest", &CardState::SharpTestStep},
                 {"mnuColor", "frmTestC", &CardState::ColorTestStep},
                 {"mnuGray", "frmTestG", &CardState::GrayTestStep}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.menu);
        BarsBench b;
        auto& panel = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
        auto& item = panel.control<MenuItem>(c.menu);
        item.click(); // under a hidden menu: out of the user's reach
        EXPECT_EQ(b.win(c.window), nullptr);
        item.fireClick();
        EXPECT_TRUE(item.checked());
        EXPECT_EQ(rectOf(*b.win(c.window)), kFull);
        EXPECT_EQ(b.st().*c.step, 1);
        item.fireClick();
        EXPECT_FALSE(item.checked());
        EXPECT_EQ(b.win(c.window), nullptr);
        EXPECT_EQ(b.st().*c.step, 0);
    }
}
