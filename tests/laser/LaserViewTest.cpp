// The two laser windows drawn over their logic: every control bound, names for assistive
// technology, the colours of the "Control" cells, and a picture of each.
#include "LaserBench.h"

#include "forms/ui/FormWindow.h"
#include "laser/FrmLaser.h"
#include "laser/FrmLaserOmron.h"
#include "laser/LaserMaps.h"
#include "laser/ui/LaserViews.h"
#include "registers/ui/RegisterGridView.h"
#include "session/ui/FrmStartView.h"
#include "support/SimProcess.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

FormWindow* viewOf(SessionBench& b, const char* form) {
    return dynamic_cast<FormWindow*>(b.session->forms.get(form)->view());
}

bool startWithViews(SessionBench& b) {
    ViewRegistry views;
    views.add("frmStart", buildFrmStartView);
    views.add("frmLaser", buildFrmLaserView);
    views.add("frmLaserOmron", buildFrmLaserOmronView);
    views.install(b.session->forms);
    return b.start();
}

} // namespace

TEST(LaserViews, EveryControlIsBoundAndNamed) {
    struct Case {
        const char* form;
        int major;
        const char* bar;     // a scroll bar of a row
        const char* rowName; // its accessible name
        const char* png;
    };
    for (const Case& c : {Case{"frmLaser", 2, "HScrl1", "VCSEL Bias Output Current", "frmLaser"},
                          Case{"frmLaserOmron", 12, "HScrlIMAX1", "IMAX[4:5]", "frmLaserOmron"}}) {
        SCOPED_TRACE(c.form);
        SimLink::Card card;
        card.major = c.major;
        SessionBench b(card);
        ASSERT_TRUE(startWithViews(b));
        b.session->forms.show(c.form);
        FormWindow* view = viewOf(b, c.form);
        ASSERT_NE(view, nullptr);
        EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
        QWidget* w = view->window();
        auto* bar = w->findChild<QScrollBar*>(c.bar);
        ASSERT_NE(bar, nullptr);
        EXPECT_EQ(bar->accessibleName(), c.rowName);
        EXPECT_EQ(bar->accessibleDescription(), c.bar);
        auto* serial = w->findChild<QLineEdit*>("txtSerial");
        ASSERT_NE(serial, nullptr);
        EXPECT_EQ(serial->accessibleName(), "Serial #");
        EXPECT_EQ(serial->text(), "L4821");
        auto* load = w->findChild<QPushButton*>("cmdLoad");
        ASSERT_NE(load, nullptr);
        EXPECT_EQ(load->text(), "&Load");
        EXPECT_TRUE(load->isEnabled());
        QApplication::processEvents();
        EXPECT_TRUE(w->grab().save(buildDir() + "/tests/" + c.png + ".png"));
    }
}

// The enabled channels' cells are drawn pale green, and a click that disables one clears it.
TEST(LaserViews, ChannelCellsFollowTheirBits) {
    SessionBench b;
    ASSERT_TRUE(startWithViews(b));
    auto& f = dynamic_cast<FrmLaser&>(b.session->forms.show("frmLaser"));
    auto* grid = viewOf(b, "frmLaser")->window()->findChild<RegisterGridView*>("FlexGrP");
    ASSERT_NE(grid, nullptr);
    auto backOf = [&](int row) {
        for (QLabel* l : grid->findChildren<QLabel*>())
            if (l->text() == grid->cellText(row + 1, 3))
                return l->autoFillBackground()
                           ? l->palette().color(QPalette::Window).rgb() & 0xFFFFFF
                           : Grid::kDefaultBack;
        return quint32(0);
    };
    EXPECT_EQ(grid->cellText(19, 3), "Channel 4 Enabled");
    EXPECT_EQ(backOf(18), kPaleGreen);
    f.rows(18).click(4);
    EXPECT_EQ(grid->cellText(19, 3), "Channel 4 Disabled");
    EXPECT_EQ(backOf(18), Grid::kDefaultBack);
}
