// The drawn windows: every control has its widget, and assistive technology finds each by
// name, with a human name beside it.
#include "session/SessionBench.h"

#include "cardinfo/FrmMemCard.h"
#include "cardinfo/FrmStatus.h"
#include "cardinfo/ui/CardInfoViews.h"
#include "cardinfo/ui/CardWidgets.h"
#include "forms/ui/FormWindow.h"

#include <QAccessible>
#include <QAction>
#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

struct Bench : SessionBench {
    Bench() {
        views.add("frmStatus", buildFrmStatusView);
        views.add("imCardPinout", buildImCardPinoutView);
        views.add("frmMem_card", buildFrmMemCardView);
        views.install(session->forms);
    }
    FormWindow* show(const QString& name) {
        auto* v = dynamic_cast<FormWindow*>(session->forms.show(name).view());
        QCoreApplication::processEvents();
        return v;
    }
    ViewRegistry views;
};

void press(QWidget* w, QPoint at) {
    QMouseEvent e(QEvent::MouseButtonPress, at, w->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                  Qt::NoModifier);
    QCoreApplication::sendEvent(w, &e);
}

} // namespace

TEST(CardInfoViews, EveryControlBoundAndNamed) {
    Bench b;
    ASSERT_TRUE(b.start());
    for (const char* name : {"frmStatus", "imCardPinout", "frmMem_card"}) {
        SCOPED_TRACE(name);
        FormWindow* v = b.show(name);
        ASSERT_NE(v, nullptr);
        EXPECT_EQ(v->binding().report(), QStringList());
        Form& f = *b.session->forms.get(name);
        for (Control* c : f.controls()) {
            if (!c->visual()) continue;
            QObject* o = v->binding().boundTo(c->fullName());
            ASSERT_NE(o, nullptr) << c->fullName().toStdString();
            if (auto* w = qobject_cast<QWidget*>(o)) {
                EXPECT_EQ(w->accessibleDescription(), c->fullName());
                QAccessibleInterface* a = QAccessible::queryAccessibleInterface(w);
                ASSERT_NE(a, nullptr);
                // A label's name is its caption, which may be empty until the card speaks.
                if (!qobject_cast<QLabel*>(w)) {
                    EXPECT_FALSE(a->text(QAccessible::Name).isEmpty())
                        << c->fullName().toStdString();
                }
            }
        }
    }
}

TEST(CardInfoViews, PressesOnTheDrawnSwitchAndPicture) {
    Bench b;
    ASSERT_TRUE(b.start());
    FormWindow* v = b.show("frmStatus");
    ASSERT_NE(v, nullptr);
    auto& f = dynamic_cast<FrmStatus&>(*b.session->forms.get("frmStatus"));
    auto* sw = qobject_cast<SwitchView*>(v->binding().boundTo("ucSwitchDig2"));
    ASSERT_NE(sw, nullptr);
    // On slider 4: the row's zone, no tip.
    press(sw, sw->sliderRect(4).center());
    EXPECT_EQ(f.ucSwitchDig2.ucSwitchSH1.Zone(), 4);
    EXPECT_FALSE(f.picTipSw2.visible());
    // On the direction mark: the tip shows over the window.
    press(sw, sw->directionRect().center());
    EXPECT_TRUE(f.picTipSw2.visible());
    auto* tip = qobject_cast<PictureView*>(v->binding().boundTo("picTipSw2"));
    ASSERT_NE(tip, nullptr);
    EXPECT_TRUE(tip->isVisible());
    press(tip, tip->rect().center());
    EXPECT_FALSE(f.picTipSw2.visible());
    EXPECT_FALSE(tip->isVisible());
    // The slider drawing follows the switch's state.
    f.ucSwitchDig2.SetValue(4, false);
    EXPECT_EQ(f.ucSwitchDig2.ucSwitchSH1.top(4), 60);
}
