// Monitor Info drawn: every control has its widget, named for assistive technology.
#include "MonitorBench.h"

#include "forms/ui/FormWindow.h"
#include "monitor/ui/FrmReadEEMonView.h"
#include "session/ui/FrmStartView.h"
#include "sim/VirtualCard.h"
#include "support/SimProcess.h"

#include <QApplication>
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
    ViewRegistry views;
    views.add("frmStart", buildFrmStartView);
    views.add("frmReadEEMon", [](Form& f) { return buildFrmReadEEMonView(f, nullptr); });
    views.install(b.session->forms);
    FrmReadEEMon& f = b.open();
    auto* view = dynamic_cast<FormWindow*>(f.view());
    ASSERT_NE(view, nullptr);
    QWidget* w = view->window();
    EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
    EXPECT_EQ(w->windowTitle(), "Read Monitor Info");
    auto* table = w->findChild<QTableWidget*>("grTable");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 9);
    EXPECT_EQ(table->item(8, 16)->text(), "13");
    EXPECT_EQ(table->accessibleName(), "Monitor data");
    EXPECT_EQ(table->accessibleDescription(), "grTable");
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
        EXPECT_EQ(button->accessibleDescription(), name);
        EXPECT_TRUE(button->isVisible()) << name;
    }
    EXPECT_FALSE(w->findChild<QPushButton*>("cmdTransmit")->isVisible());
    QApplication::processEvents();
    EXPECT_TRUE(w->grab().save(velmorak::test::buildDir() + "/tests/frmReadEEMon.png"));
}
