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
#include "support/DrawnWindows.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

void drawLasers(SessionBench& b) {
    drawWindows(b.session->forms, {{"frmStart", buildFrmStartView},
                                   {"frmLaser", buildFrmLaserView},
                                   {"frmLaserOmron", buildFrmLaserOmronView}});
}

} // namespace

TEST(LaserViews, EveryControlIsBoundAndNamed) {
    struct Case {
        const char* form;
        int major;
        const char* bar;     // a scroll bar of a row
        const char* rowName; // its accessible name
    };
    for (const Case& c : {Case{"frmLaser", 2, "HScrl1", "VCSEL Bias Output Current"},
                          Case{"frmLaserOmron", 12, "HScrlIMAX1", "IMAX[4:5]"}}) {
        SCOPED_TRACE(c.form);
        SimLink::Card card;
        card.major = c.major;
        SessionBench b(card);
        drawLasers(b);
        Form& f = b.open<Form>(c.form);
        expectDrawnAndNamed(f);
        QWidget* w = drawnView(f)->window();
        auto* bar = w->findChild<QScrollBar*>(c.bar);
        ASSERT_NE(bar, nullptr);
        EXPECT_EQ(bar->accessibleName(), c.rowName);
        auto* serial = w->findChild<QLineEdit*>("txtSerial");
        ASSERT_NE(serial, nullptr);
        EXPECT_EQ(serial->accessibleName(), "Serial #");
        EXPECT_EQ(serial->text(), "L4821");
        auto* load = w->findChild<QPushButton*>("cmdLoad");
        ASSERT_NE(load, nullptr);
        EXPECT_EQ(load->text(), "&Load");
        EXPECT_TRUE(load->isEnabled());
        savePicture(f, c.form);
    }
}

// The enabled channels' cells are drawn pale green, and a click that disables one clears it.
TEST(LaserViews, ChannelCellsFollowTheirBits) {
    SessionBench b;
    drawLasers(b);
    auto& f = b.open<FrmLaser>("frmLaser");
    auto* grid = drawnView(f)->window()->findChild<RegisterGridView*>("FlexGrP");
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
