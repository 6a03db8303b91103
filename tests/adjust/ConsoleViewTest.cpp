// The drawn Display Adjustment: every control bound and named, the stepper driven by mouse and
// keys as a user does.
#include "ConsoleBench.h"

#include "adjust/ui/AdjustViews.h"
#include "adjust/ui/StepperView.h"
#include "forms/ui/FormWindow.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::ConsoleBench;
using velmorak::test::usualCard;
using velmorak::test::wree;

namespace {

struct ViewBench : ConsoleBench {
    ViewBench() {
        views.add("frmConsole", buildFrmConsoleView);
        views.install(session->forms);
    }
    FormWindow* show() {
        open();
        auto* v = dynamic_cast<FormWindow*>(session->forms.get("frmConsole")->view());
        QCoreApplication::processEvents();
        return v;
    }
    ViewRegistry views;
};

void mouse(QWidget* w, QEvent::Type t, QPoint at) {
    QMouseEvent e(t, at, w->mapToGlobal(at), Qt::LeftButton,
                  t == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(w, &e);
}

void key(QWidget* w, int k) {
    QKeyEvent e(QEvent::KeyPress, k, Qt::NoModifier);
    QCoreApplication::sendEvent(w, &e);
}

} // namespace

TEST(ConsoleView, EveryControlBoundAndNamed) {
    ViewBench b;
    ASSERT_TRUE(b.start());
    FormWindow* v = b.show();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->binding().report(), QStringList());
    Form& f = *b.session->forms.get("frmConsole");
    for (Control* c : f.controls()) {
        if (!c->visual()) continue;
        QObject* o = v->binding().boundTo(c->fullName());
        ASSERT_NE(o, nullptr) << c->fullName().toStdString();
        auto* w = qobject_cast<QWidget*>(o);
        ASSERT_NE(w, nullptr);
        EXPECT_EQ(w->accessibleDescription(), c->fullName());
        QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
        ASSERT_NE(a, nullptr);
        if (!qobject_cast<QLabel*>(w)) {
            EXPECT_FALSE(a->text(QAccessible::Name).isEmpty()) << c->fullName().toStdString();
        }
    }
}

// Press and release on an arrow is one step and one write; the arrow keys do the same.
TEST(ConsoleView, StepperTakesMouseAndKeys) {
    ViewBench b;
    ASSERT_TRUE(b.start());
    usualCard(b);
    FormWindow* v = b.show();
    ASSERT_NE(v, nullptr);
    auto& f = dynamic_cast<FrmConsole&>(*b.session->forms.get("frmConsole"));
    auto* phase = qobject_cast<StepperView*>(v->binding().boundTo("ucScrlPhase"));
    ASSERT_NE(phase, nullptr);
    ASSERT_GT(phase->width(), 100);
    // The model lays itself out in the widget's size.
    EXPECT_EQ(f.ucScrlPhase.width(), phase->width());
    EXPECT_EQ(phase->rightArrowRect().left(), phase->width() - 10 - phase->height());
    b.link.clearTrace();
    const QPoint right = phase->rightArrowRect().center();
    mouse(phase, QEvent::MouseButtonPress, right);
    EXPECT_TRUE(f.ucScrlPhase.imRite.picture().endsWith("ARRRD.ICO"));
    EXPECT_EQ(f.ucScrlPhase.Value(), 12);
    EXPECT_TRUE(b.writes().isEmpty());
    mouse(phase, QEvent::MouseButtonRelease, right);
    EXPECT_TRUE(f.ucScrlPhase.imRite.picture().endsWith("ARRR.ICO"));
    EXPECT_EQ(b.writes(), QStringList({wree(32, 4, 96)}));
    // A press on the track is no step.
    mouse(phase, QEvent::MouseButtonPress, {phase->width() / 2, phase->height() / 2});
    mouse(phase, QEvent::MouseButtonRelease, {phase->width() / 2, phase->height() / 2});
    EXPECT_EQ(f.ucScrlPhase.Value(), 12);
    key(phase, Qt::Key_Left);
    key(phase, Qt::Key_Left);
    EXPECT_EQ(f.ucScrlPhase.Value(), 10);
    EXPECT_EQ(b.writes(), QStringList({wree(32, 4, 96), wree(32, 4, 88), wree(32, 4, 80)}));
}
