// The stepper control: limits of a step, its label, its layout and the auto-repeat of a held
// arrow on the virtual clock.
#include "adjust/UcScrollChange.h"
#include "forms/Form.h"
#include "platform/Host.h"

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

struct StepperBench {
    VirtualHost host;
    Form form{"frmX"};
    UcScrollChange& s = form.add<UcScrollChange>("ucX");
    int changes = 0;
    int lefts = 0;
    int rights = 0;
    StepperBench() {
        form.setHost(&host);
        form.load();
        s.onPropertyChanged.connect([this](Prop p) {
            if (p == Prop::Value) ++changes;
        });
        s.onClickLeft.connect([this] { ++lefts; });
        s.onClickRight.connect([this] { ++rights; });
    }
    // Runs the timers each millisecond for ms milliseconds.
    void hold(int ms) {
        for (int i = 0; i < ms; ++i) {
            host.sleep(1);
            form.pollTimers(host.now());
        }
    }
};

} // namespace

TEST(Stepper, StepsStopShortOfTheSpanAndAtOne) {
    struct Row {
        int max, min, oneStep, start;
        bool right;
        int presses, end;
    };
    const Row table[] = {
        {127, 0, 1, 120, true, 10, 126}, // the span is never reached by steps
        {127, 0, 1, 5, false, 10, 1},    // 0 is not reached by steps
        {31, 0, 1, 30, true, 1, 30},
        {227, 100, 1, 125, true, 3, 126}, // Min shifts nothing: the span counts
        {127, 0, 4, 6, false, 2, 2},
        {127, 0, 4, 120, true, 3, 124},
        {127, 0, 1, 200, false, 1, 199}, // above Max a left step still counts down
        {127, 0, 1, 0, true, 2, 2},
    };
    for (const Row& r : table) {
        SCOPED_TRACE(testing::Message() << r.max << "/" << r.min << " from " << r.start);
        StepperBench b;
        b.s.setMax(qint16(r.max));
        b.s.setMin(qint16(r.min));
        b.s.setOneStep(qint16(r.oneStep));
        b.s.setValue(qint16(r.start));
        for (int i = 0; i < r.presses; ++i)
            r.right ? b.s.pressRight() : b.s.pressLeft();
        EXPECT_EQ(b.s.Value(), r.end);
        // Every press tells the host, whether the value moved or not.
        EXPECT_EQ(r.right ? b.rights : b.lefts, r.presses);
        EXPECT_EQ(r.right ? b.lefts : b.rights, 0);
    }
}

TEST(Stepper, NegativeValuesBecomeZeroAndTheLabelFollows) {
    struct Row {
        int max, min;
        bool percent;
        int value;
        const char* caption;
    };
    const Row table[] = {
        {127, 0, true, 63, " 49"},   {127, 0, true, 0, " 0"},      {127, 0, true, 126, " 99"},
        {127, 0, false, 63, " 63"},  {511, 256, true, 127, " 49"}, {127, 0, true, -5, " 0"},
        {127, 0, true, 254, " 200"}, {15, 0, false, -1, " 0"},
    };
    for (const Row& r : table) {
        SCOPED_TRACE(r.caption);
        StepperBench b;
        b.s.setMax(qint16(r.max));
        b.s.setMin(qint16(r.min));
        b.s.setPercent(r.percent);
        b.s.setValue(qint16(r.value));
        EXPECT_EQ(b.s.Value(), std::max(r.value, 0));
        EXPECT_EQ(b.s.lblValue.caption(), r.caption);
    }
}

TEST(Stepper, ZeroSpanFailsThePercentOnly) {
    StepperBench b;
    b.s.setMax(5);
    b.s.setMin(5);
    EXPECT_THROW(b.s.setValue(3), RunTimeError);
    b.s.setPercent(false);
    b.s.setValue(3);
    EXPECT_EQ(b.s.lblValue.caption(), " 3");
}

// A 300 x 20 control: right arrow at 270, label at 229, track from 20, 209 wide.
TEST(Stepper, LayoutAndStepWidth) {
    struct Row {
        int width, max, value;
        int step, fill;
    };
    const Row table[] = {
        {300, 127, 10, 2, 20}, // 209 / 127 = 1.65
        {300, 31, 3, 7, 21},   // 6.74
        {300, 255, 9, 1, 9},   // 0.82
        {300, 511, 100, 0, 0}, // 0.41
        {301, 84, 4, 2, 8},    // 210 / 84 = 2.5, half to even
        {301, 60, 4, 4, 16},   // 3.5
    };
    for (const Row& r : table) {
        SCOPED_TRACE(testing::Message() << r.width << " " << r.max);
        StepperBench b;
        b.s.setMax(qint16(r.max));
        b.s.setValue(qint16(r.value));
        b.s.resize(r.width, 20);
        EXPECT_EQ(b.s.rightArrowLeft(), r.width - 30);
        EXPECT_EQ(b.s.labelLeft(), r.width - 71);
        EXPECT_EQ(b.s.trackLeft(), 20);
        EXPECT_EQ(b.s.trackWidth(), r.width - 91);
        EXPECT_EQ(b.s.stepWidth(), r.step);
        EXPECT_EQ(b.s.fillWidth(), r.fill);
    }
}

// Max and Min alone do not redraw the bar; the next Value does.
TEST(Stepper, RangeChangesWaitForTheNextValue) {
    StepperBench b;
    b.s.resize(300, 20);
    b.s.setMax(127);
    b.s.setValue(10);
    EXPECT_EQ(b.s.fillWidth(), 20);
    b.s.setMax(31);
    EXPECT_EQ(b.s.fillWidth(), 20);
    EXPECT_EQ(b.s.lblValue.caption(), " 7");
    b.s.setValue(10);
    EXPECT_EQ(b.s.fillWidth(), 70);
    EXPECT_EQ(b.s.lblValue.caption(), " 32");
}

// Held for ms: one change at the press, then at 600 ms and every 200 ms; the release's click
// adds one event without a change.
TEST(Stepper, HeldArrowRepeatsAfter600ThenEvery200) {
    struct Row {
        int ms;
        int changes, events;
    };
    const Row table[] = {{0, 1, 1},   {599, 1, 1},  {600, 2, 2},  {799, 2, 2},
                         {800, 3, 3}, {1000, 4, 4}, {1999, 8, 8}, {2000, 9, 9}};
    for (bool right : {false, true}) {
        for (const Row& r : table) {
            SCOPED_TRACE(testing::Message() << (right ? "right " : "left ") << r.ms);
            StepperBench b;
            b.s.setValue(50);
            b.changes = 0;
            right ? b.s.rightDown() : b.s.leftDown();
            EXPECT_EQ(b.s.repeatState(), right ? 2 : 1);
            b.hold(r.ms);
            // Before the release the host has one event fewer than changes.
            EXPECT_EQ(right ? b.rights : b.lefts, r.changes - 1);
            right ? b.s.rightUp() : b.s.leftUp();
            EXPECT_EQ(b.s.repeatState(), 0);
            right ? b.s.rightClick() : b.s.leftClick();
            EXPECT_EQ(b.changes, r.changes);
            EXPECT_EQ(right ? b.rights : b.lefts, r.events);
            EXPECT_EQ(b.s.Value(), right ? 50 + r.changes : 50 - r.changes);
            // Released, nothing more comes.
            b.hold(1000);
            EXPECT_EQ(b.changes, r.changes);
            EXPECT_EQ(b.s.tmScrl.interval(), UcScrollChange::kFirstInterval);
        }
    }
}

// A second press after a long one starts again with the first interval.
TEST(Stepper, EveryPressStartsWithTheLongInterval) {
    StepperBench b;
    b.s.setValue(100);
    b.s.leftDown();
    b.hold(900);
    b.s.leftUp();
    b.s.leftClick();
    EXPECT_EQ(b.s.Value(), 100 - 3);
    b.s.leftDown();
    b.hold(599);
    EXPECT_EQ(b.s.Value(), 100 - 4);
    b.hold(1);
    EXPECT_EQ(b.s.Value(), 100 - 5);
    b.s.leftUp();
}

TEST(Stepper, ArrowPicturesFollowThePress) {
    StepperBench b;
    b.s.setPictureFolder("/app");
    struct Row {
        const char* left;
        const char* right;
    };
    auto expect = [&](const Row& r) {
        EXPECT_EQ(b.s.imLeft.picture(), QString("/app/") + r.left);
        EXPECT_EQ(b.s.imRite.picture(), QString("/app/") + r.right);
    };
    expect({"ARRL.ICO", "ARRR.ICO"});
    b.s.leftDown();
    expect({"ARRLD.ICO", "ARRR.ICO"});
    b.s.leftUp();
    expect({"ARRL.ICO", "ARRR.ICO"});
    b.s.rightDown();
    expect({"ARRL.ICO", "ARRRD.ICO"});
    b.s.rightUp();
    expect({"ARRL.ICO", "ARRR.ICO"});
}

TEST(Stepper, DisabledTakesNoPress) {
    StepperBench b;
    b.s.setValue(10);
    b.s.setEnabled(false);
    b.s.pressRight();
    b.s.leftDown();
    b.hold(1000);
    EXPECT_EQ(b.s.Value(), 10);
    EXPECT_EQ(b.lefts + b.rights, 0);
}
