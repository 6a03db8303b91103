// The drawn windows: every control has its widget, and assistive technology finds each by
// name, with a human name beside it.
#include "session/SessionBench.h"

#include "cardinfo/FrmMemCard.h"
#include "cardinfo/FrmStatus.h"
#include "cardinfo/ui/CardInfoViews.h"
#include "cardinfo/ui/CardWidgets.h"
#include "forms/ui/FormWindow.h"
#include "support/DrawnWindows.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

void drawCardInfo(SessionBench& b) {
    test::drawWindows(b.session->forms, {{"frmStatus", buildFrmStatusView},
                                         {"imCardPinout", buildImCardPinoutView},
                                         {"frmMem_card", buildFrmMemCardView}});
}

void press(QWidget* w, QPoint at) {
    QMouseEvent e(QEvent::MouseButtonPress, at, w->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                  Qt::NoModifier);
    QCoreApplication::sendEvent(w, &e);
}

} // namespace

TEST(CardInfoViews, EveryControlBoundAndNamed) {
    SessionBench b;
    drawCardInfo(b);
    for (const char* name : {"frmStatus", "imCardPinout", "frmMem_card"}) {
        SCOPED_TRACE(name);
        test::expectDrawnAndNamed(b.open<Form>(name));
    }
}

TEST(CardInfoViews, PressesOnTheDrawnSwitchAndPicture) {
    SessionBench b;
    drawCardInfo(b);
    auto& f = b.open<FrmStatus>("frmStatus");
    FormWindow* v = test::drawnView(f);
    ASSERT_NE(v, nullptr);
    QCoreApplication::processEvents();
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
