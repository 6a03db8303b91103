// Monitor Info drawn: every control has its widget, named for assistive technology.
#include "MonitorBench.h"

#include "forms/ui/FormWindow.h"
#include "monitor/ui/FrmReadEEMonView.h"
#include "session/ui/FrmStartView.h"
#include "sim/VirtualCard.h"
#include "support/DrawnWindows.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::MonitorBench;

TEST(MonitorView, EveryControlIsDrawnAndNamed) {
    MonitorBench b;
    b.link.card().setMonitorMemory(0, defaultEdid(DefaultEdid::Dvi));
    test::drawWindows(b.session->forms, {{"frmStart", buildFrmStartView},
                                         {"frmReadEEMon", [](Form& f) {
                                              return buildFrmReadEEMonView(f, nullptr);
                                          }}});
    FrmReadEEMon& f = b.open();
    test::expectDrawnAndNamed(f, "Read Monitor Info");
    QWidget* w = test::drawnView(f)->window();
    auto* table = w->findChild<QTableWidget*>("grTable");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 9);
    EXPECT_EQ(table->item(8, 16)->text(), "13");
    EXPECT_EQ(table->accessibleName(), "Monitor data");
    auto* decoded = w->findChild<QListWidget*>("lstDecoded");
    ASSERT_NE(decoded, nullptr);
    EXPECT_EQ(decoded->accessibleName(), "Decoded monitor data");
    EXPECT_FALSE(decoded->findItems("Monitor name: Kestrel 19", Qt::MatchExactly).isEmpty());
    auto* rcs = w->findChild<QLabel*>("lblRCS");
    ASSERT_NE(rcs, nullptr);
    EXPECT_EQ(rcs->text(), "13");
    EXPECT_EQ(rcs->accessibleName(), "Control Sum");
    for (const char* name : {"cmdDefault", "cmdDefaultR", "cmdClose"}) {
        auto* button = w->findChild<QPushButton*>(name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_TRUE(button->isVisible()) << name;
    }
    EXPECT_FALSE(w->findChild<QPushButton*>("cmdTransmit")->isVisible());
    test::savePicture(f, "frmReadEEMon");
}
