#include "forms/Forms.h"
#include "platform/Host.h"

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

// Logs its hooks into a shared journal; may cancel its unload.
class LoggingForm : public Form {
  public:
    explicit LoggingForm(QStringList* log) : Form("frm"), log_(log) {}
    ~LoggingForm() override { *log_ << name() + " freed"; }
    bool cancelUnload = false;
    Button& cmdClose = add<Button>("cmdClose");
    ControlArray<Label>& lbl = addArray<Label>("lbl", {0, 1});
    Timer& tmrPoll = add<Timer>("tmrPoll");

  protected:
    void formLoad() override {
        *log_ << name() + " load";
        cmdClose.onClick.connect([this] { unload(); });
    }
    void formUnload(bool& cancel) override {
        *log_ << name() + " unload";
        cancel = cancelUnload;
    }
    void formActivate() override { *log_ << name() + " activate"; }
    void keyDown(int& key, Qt::KeyboardModifiers mods) override {
        *log_ << QStringLiteral("%1 key %2").arg(name()).arg(key);
        if (key == Qt::Key_F5 && mods == Qt::NoModifier) key = 0;
    }

  private:
    QStringList* log_;
};

class RecordingView : public FormView {
  public:
    explicit RecordingView(QStringList* log) : log_(log) {}
    ~RecordingView() override { *log_ << "view gone"; }
    void show(bool modal) override { *log_ << (modal ? "view modal" : "view show"); }
    void hide() override { *log_ << "view hide"; }

  private:
    QStringList* log_;
};

struct FormsFixture : ::testing::Test {
    QStringList log; // outlives the windows, which log their end
    VirtualHost host;
    Forms forms{&host};
    void SetUp() override {
        for (auto n : {"frmStart", "frmConnect", "frmStatus", "frmLaser", "frmSettings"})
            forms.registerForm(n, [this] { return std::make_unique<LoggingForm>(&log); });
    }
};

} // namespace

TEST_F(FormsFixture, LoadRunsFormLoadOnceAndKeepsLoadOrder) {
    EXPECT_EQ(forms.get("frmStatus"), nullptr);
    Form& a = forms.load("frmStatus");
    EXPECT_EQ(&forms.load("frmStatus"), &a);
    forms.show("frmStart");
    forms.load("frmLaser");
    EXPECT_EQ(log, QStringList(
                       {"frmStatus load", "frmStart load", "frmStart activate", "frmLaser load"}));
    EXPECT_EQ(forms.names(), QStringList({"frmStatus", "frmStart", "frmLaser"}));
    EXPECT_TRUE(forms.isLoaded("frmLaser"));
    EXPECT_TRUE(forms.get("frmStart")->visible());
    EXPECT_FALSE(a.visible());
    EXPECT_NE(forms.get<LoggingForm>("frmStart"), nullptr);
    try {
        forms.load("frmNowhere");
        ADD_FAILURE();
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.number(), 424);
    }
}

TEST_F(FormsFixture, UnloadHonoursCancelAndReloadGivesAFreshWindow) {
    auto& f = forms.load<LoggingForm>("frmStatus");
    f.lbl(1).setCaption("old");
    f.cancelUnload = true;
    EXPECT_FALSE(forms.unload("frmStatus"));
    EXPECT_TRUE(forms.isLoaded("frmStatus"));
    f.cancelUnload = false;
    EXPECT_TRUE(forms.unload("frmStatus"));
    EXPECT_FALSE(forms.isLoaded("frmStatus"));
    EXPECT_TRUE(forms.unload("frmStatus")) << "unloading a closed window is harmless";
    auto& again = forms.load<LoggingForm>("frmStatus");
    EXPECT_EQ(again.lbl(1).caption(), "");
    EXPECT_EQ(log.count("frmStatus load"), 2);
    EXPECT_EQ(log.count("frmStatus unload"), 2);
}

TEST_F(FormsFixture, UnloadAllButKeepsTheNamedAndSkipsCancelled) {
    for (auto n : {"frmStart", "frmConnect", "frmStatus", "frmLaser", "frmSettings"})
        forms.load(n);
    forms.get<LoggingForm>("frmLaser")->cancelUnload = true;
    log.clear();
    EXPECT_FALSE(forms.unloadAllBut({"frmStart", "frmConnect"}));
    EXPECT_EQ(log, QStringList({"frmSettings unload", "frmLaser unload", "frmStatus unload"}));
    EXPECT_EQ(forms.names(), QStringList({"frmStart", "frmConnect", "frmLaser"}));
    forms.get<LoggingForm>("frmLaser")->cancelUnload = false;
    EXPECT_TRUE(forms.unloadAll());
    EXPECT_EQ(forms.count(), 0);
}

// As when a pulled card unloads every window in the pump of an exchange: the window whose
// handler runs stays alive (the timer pass does not free it), its handler goes on harmlessly,
// and it is freed once the handler has returned.
TEST_F(FormsFixture, AWindowUnloadedUnderItsHandlerLivesUntilTheHandlerReturns) {
    host.onPump([this] { forms.pollTimers(); });
    auto& f = forms.load<LoggingForm>("frmStatus");
    f.cmdClose.onClick.connect([&] {
        host.pump(); // the wait of an exchange
        f.lbl(0).setCaption("after unload");
        f.show(); // loads and shows nothing
        host.pump();
        log << QString("still here: ") + f.lbl(0).caption();
    });
    f.cmdClose.click();
    EXPECT_FALSE(forms.isLoaded("frmStatus"));
    forms.pollTimers();
    EXPECT_EQ(log, QStringList({"frmStatus load", "frmStatus unload", "still here: after unload",
                                "frmStatus freed"}));
}

TEST_F(FormsFixture, ViewIsMadeOnFirstShowAndDisposedOnUnload) {
    int made = 0;
    forms.setViewFactory([&](Form& f) -> FormView* {
        ++made;
        return f.name() == "frmStart" ? new RecordingView(&log) : nullptr;
    });
    forms.show("frmStart");
    forms.get("frmStart")->hide();
    forms.show("frmStart", true);
    forms.show("frmStatus");
    EXPECT_EQ(made, 2);
    forms.unload("frmStart");
    EXPECT_EQ(log, QStringList({"frmStart load", "frmStart activate", "view show", "view hide",
                                "frmStart activate", "view modal", "frmStatus load",
                                "frmStatus activate", "frmStart unload", "view gone"}));
}

TEST_F(FormsFixture, KeyPreviewHandsKeysToTheWindow) {
    auto& f = forms.load<LoggingForm>("frmStart");
    EXPECT_FALSE(f.previewKey(Qt::Key_F5, Qt::NoModifier)) << "preview off";
    f.setKeyPreview(true);
    EXPECT_TRUE(f.previewKey(Qt::Key_F5, Qt::NoModifier));
    EXPECT_FALSE(f.previewKey(Qt::Key_F5, Qt::ShiftModifier));
    EXPECT_EQ(log.count(QStringLiteral("frmStart key %1").arg(Qt::Key_F5)), 2);
}

TEST_F(FormsFixture, TimersTickOnTheHostClockWhilePolled) {
    host.onPump([this] { forms.pollTimers(); });
    auto& f = forms.load<LoggingForm>("frmStatus");
    int ticks = 0;
    f.tmrPoll.onTick.connect([&] { ++ticks; });
    f.tmrPoll.setInterval(100);
    for (int i = 0; i < 350; ++i)
        host.pump();
    EXPECT_EQ(ticks, 3);
    f.tmrPoll.setEnabled(false);
    for (int i = 0; i < 200; ++i)
        host.pump();
    EXPECT_EQ(ticks, 3);
    f.tmrPoll.setEnabled(true); // counts a full interval from here
    for (int i = 0; i < 99; ++i)
        host.pump();
    EXPECT_EQ(ticks, 3);
    host.pump();
    EXPECT_EQ(ticks, 4);
}

TEST(FormGeometry, ResizeHookAndLookupErrors) {
    struct Sized : Form {
        Sized() : Form("frmSized") {}
        int resizes = 0;
        void formResize() override { ++resizes; }
    } f;
    int notes = 0;
    f.onPropertyChanged.connect([&](Prop p) { notes += p == Prop::Geometry; });
    f.move(10, 20);
    f.move(10, 20, 300, 200);
    f.setWidth(300);
    EXPECT_EQ(f.resizes, 1);
    EXPECT_EQ(notes, 2);
    EXPECT_THROW(f.setHeight(-1), InvalidPropertyValue);
    f.add<Button>("cmdA");
    EXPECT_THROW(f.add<Label>("cmdA"), std::logic_error);
    try {
        f.control<Button>("cmdB");
        ADD_FAILURE();
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.number(), 730);
    }
}
