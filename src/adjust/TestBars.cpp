#include "adjust/TestBars.h"

#include "adjust/TestGeometry.h"
#include "adjust/TestWindows.h"
#include "forms/Forms.h"
#include "link/AppContext.h"
#include "link/CardState.h"
#include "platform/Host.h"

namespace velmorak {

namespace {
const QString kTest = QStringLiteral("frmTest");
const QString kTestC = QStringLiteral("frmTestC");
const QString kTestG = QStringLiteral("frmTestG");

QString barsFile(bool colour) {
    return QString::fromLatin1(colour ? FrmTestBars::kColorFile : FrmTestBars::kGrayFile);
}
} // namespace

BarsStep barsStep(TestPicture which, int step) {
    const bool colour = which == TestPicture::Color;
    if (step == 0)
        return colour ? BarsStep{BarsStep::Place, 1, 5, true}
                      : BarsStep{BarsStep::Place, 11, 15, false};
    // The other picture on view: the same window switches to this one.
    const int other = colour ? 11 : 1;
    if (step == other) return {BarsStep::Switch, colour ? 1 : 11, 0, colour};
    if (step == other + 4) return {BarsStep::Switch, colour ? 5 : 15, 0, colour};
    return {BarsStep::Close, 0, 0, colour};
}

TestBars::TestBars(AppContext& c) : c_(c) {}

int TestBars::widthOf(const QString& name, int designed) const {
    const Form* f = c_.forms.get(name);
    return f ? f->width() : designed;
}

int TestBars::fitHeight(Form& f) {
    const int left = f.left(), top = f.top(), width = f.width();
    f.setWindowState(WindowState::Maximized);
    const int h = f.height();
    // Back in the normal state the window stands where it stood.
    f.setWindowState(WindowState::Normal);
    f.move(left, top, width, h);
    return h;
}

void TestBars::toggleSet(MenuItem& tick, Form& caller) {
    if (c_.st.TestBarsOn) {
        closeSet();
        tick.setChecked(false);
    } else {
        openSet(tick, caller);
    }
}

void TestBars::openSet(MenuItem& tick, Form& caller) {
    CardState& st = c_.st;
    tick.setChecked(true);
    c_.host.pump();
    Form& test = c_.forms.load(kTest);
    auto& color = c_.forms.load<FrmTestBars>(kTestC);
    auto& gray = c_.forms.load<FrmTestBars>(kTestG);
    const testgeo::SetLefts lefts = testgeo::setLefts(c_.screen.width(), test.width());
    test.setLeft(lefts.test);
    color.setLeft(lefts.color);
    gray.setLeft(lefts.gray);
    c_.host.pump();
    for (Form* f : {&test, static_cast<Form*>(&color), static_cast<Form*>(&gray)})
        f->move(f->left(), 0, f->width(), c_.screen.height());
    st.TestBarsOn = 1;
    test.show();
    color.show();
    color.loadBars(barsFile(true));
    gray.show();
    gray.loadBars(barsFile(false));
    const int h = fitHeight(test);
    color.setHeight(h);
    gray.setHeight(h);
    st.TestW = test.left();
    st.TestH = test.width();
    caller.show();
}

void TestBars::closeSet() {
    c_.st.TestBarsOn = 0;
    for (const QString& name : {kTest, kTestC, kTestG})
        c_.forms.unload(name);
    // Both menus that open the set lose their tick.
    for (const QString& owner : {QStringLiteral("frmStart"), QStringLiteral("frmAD9888")})
        if (Form* f = c_.forms.get(owner)) {
            const QString item = owner == QLatin1String("frmStart") ? QStringLiteral("mnuTests")
                                                                    : QStringLiteral("mnuTestBars");
            if (auto* m = dynamic_cast<MenuItem*>(f->find(item))) m->setChecked(false);
        }
}

void TestBars::pictureClick(TestPicture which, Form& console, const QRect& picture) {
    if (which == TestPicture::Sharp)
        sharpClick(console, picture);
    else
        barsClick(which, console, picture);
}

void TestBars::sharpClick(Form& console, const QRect& picture) {
    CardState& st = c_.st;
    if (st.SharpTestStep != 0) {
        st.SharpTestStep = 0;
        c_.forms.unload(kTest);
        return;
    }
    c_.host.pump();
    Form& test = c_.forms.load(kTest);
    const QRect con(console.left(), console.top(), console.width(), console.height());
    const testgeo::Beside at = testgeo::besideSharp(c_.screen.width(), con, picture, test.width());
    test.move(at.left, 0, at.width < 0 ? test.width() : at.width, c_.screen.height());
    st.SharpTestStep = qint16(at.strip ? 5 : 1);
    test.show();
    fitHeight(test);
}

void TestBars::barsClick(TestPicture which, Form& console, const QRect& picture) {
    CardState& st = c_.st;
    const BarsStep next = barsStep(which, st.ColorTestStep);
    if (next.action == BarsStep::Close) {
        st.ColorTestStep = 0;
        c_.forms.unload(kTestC);
        return;
    }
    auto& bars = c_.forms.load<FrmTestBars>(kTestC);
    if (next.action == BarsStep::Switch) {
        bars.loadBars(QString());
        st.ColorTestStep = qint16(next.step);
        bars.loadBars(barsFile(next.colour));
        return;
    }
    const QRect con(console.left(), console.top(), console.width(), console.height());
    const testgeo::Beside at = testgeo::besideColor(c_.screen.width(), con, picture,
                                                    widthOf(kTest, FrmTest::kWidth), bars.width());
    bars.move(at.left, 0, at.width < 0 ? bars.width() : at.width, c_.screen.height());
    st.ColorTestStep = qint16(at.strip ? next.stripStep : next.step);
    bars.show();
    bars.loadBars(barsFile(next.colour));
    fitHeight(bars);
}

QString TestBars::tip(TestPicture which) const {
    const CardState& st = c_.st;
    bool open = false;
    switch (which) {
    case TestPicture::Sharp:
        open = st.SharpTestStep != 0;
        break;
    case TestPicture::Color:
        open = st.ColorTestStep == 1 || st.ColorTestStep == 5;
        break;
    case TestPicture::Gray:
        open = st.ColorTestStep == 11 || st.ColorTestStep == 15;
        break;
    }
    return open ? QStringLiteral("Click on it to close 'TEST BAR'")
                : QStringLiteral("Click on it to show 'TEST BAR'");
}

void TestBars::consoleUnloaded() {
    if (c_.st.SharpTestStep != 0) c_.forms.unload(kTest);
    if (c_.st.ColorTestStep != 0) c_.forms.unload(kTestC);
}

// The flat panel window's own entries: one window at a time, over the whole screen.
void TestBars::menuToggle(TestPicture which, MenuItem& tick) {
    static const QString names[] = {kTest, kTestC, kTestG};
    const QString& name = names[int(which)];
    if (c_.forms.isLoaded(name)) {
        tick.setChecked(false);
        c_.forms.unload(name);
        return;
    }
    tick.setChecked(true);
    Form& f = c_.forms.load(name);
    f.setWindowState(WindowState::Normal);
    f.move(0, 0, c_.screen.width(), c_.screen.height());
    CardState& st = c_.st;
    switch (which) {
    case TestPicture::Sharp:
        st.SharpTestStep = 1;
        f.show();
        break;
    case TestPicture::Color:
        st.ColorTestStep = 1;
        f.show();
        static_cast<FrmTestBars&>(f).loadBars(barsFile(true));
        break;
    case TestPicture::Gray:
        st.GrayTestStep = 1;
        f.show();
        static_cast<FrmTestBars&>(f).loadBars(barsFile(false));
        break;
    }
}

} // namespace velmorak
