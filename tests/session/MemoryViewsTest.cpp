// The progress window and the memory viewer drawn over their logic.
#include "SessionBench.h"

#include "forms/FrmWait.h"
#include "forms/ui/FormWindow.h"
#include "forms/ui/FrmWaitView.h"
#include "monitor/FrmReadEEPresets.h"
#include "monitor/ui/FrmReadEEPresetsView.h"
#include "session/ui/FrmStartView.h"
#include "support/DrawnWindows.h"

#include <QAccessible>
#include <QApplication>
#include <QProgressBar>
#include <QTableWidget>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

// What assistive technology is told of a widget: its human name and its control's name.
std::pair<QString, QString> told(QWidget* w) {
    QAccessibleInterface* i = QAccessible::queryAccessibleInterface(w);
    if (!i) return {};
    return {i->text(QAccessible::Name), i->text(QAccessible::Description)};
}

} // namespace

TEST(MemoryViews, ProgressAndDumpAreDrawnAndNamed) {
    SessionBench b;
    drawWindows(b.session->forms, {{"frmStart", buildFrmStartView},
                                   {"frmWait", buildFrmWaitView},
                                   {"frmReadEEPresets", buildFrmReadEEPresetsView}});
    ASSERT_TRUE(b.start());
    Forms& forms = b.session->forms;

    b.frm().move(100, 50, 560, 300);
    FrmWait& wait = FrmWait::showOver(forms, b.frm());
    // 320 x 70 centred over 560 x 300.
    EXPECT_EQ(std::make_pair(wait.left(), wait.top()), std::make_pair(220, 165));
    wait.ProgBar.setMax(32);
    wait.progress(7);
    expectDrawnAndNamed(wait, "Please wait...");
    auto* bar = drawnView(wait)->window()->findChild<QProgressBar*>("ProgBar");
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->maximum(), 32);
    EXPECT_EQ(bar->value(), 7);
    wait.progress(40); // beyond the end: held at it
    EXPECT_EQ(bar->value(), 32);
    EXPECT_EQ(told(bar), std::make_pair(QString("Progress"), QString("ProgBar")));
    forms.unload("frmWait");

    b.st().EEStartAddr = "&H20";
    Form& viewer = forms.show("frmReadEEPresets");
    expectDrawnAndNamed(viewer, "Read Memory");
    auto* grid = drawnView(viewer)->window()->findChild<QTableWidget*>("grTable");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->rowCount(), 33);
    EXPECT_EQ(grid->columnCount(), 33);
    EXPECT_EQ(grid->item(0, 0)->text(), "Address");
    EXPECT_EQ(grid->item(0, 32)->text(), "1F");
    EXPECT_EQ(grid->item(32, 0)->text(), "23E0");
    EXPECT_EQ(grid->item(1, 1)->text(), "255"); // erased memory
    EXPECT_GT(grid->columnWidth(0), grid->columnWidth(1));
    EXPECT_EQ(told(grid), std::make_pair(QString("Memory"), QString("grTable")));
    savePicture(viewer, "frmReadEEPresets");
    viewer.unload();
}
