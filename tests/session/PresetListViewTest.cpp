// The list of resolutions drawn: its widgets, toolbar, menu and keys.
#include "SessionBench.h"

#include "forms/ui/FormWindow.h"
#include "resdb/FrmSettings.h"
#include "resdb/ui/FrmSettingsView.h"
#include "session/ui/FrmStartView.h"
#include "support/DrawnWindows.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QTableWidget>
#include <QToolButton>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

FormWindow* openDrawn(SessionBench& b, FrmSettings*& f) {
    drawWindows(b.session->forms,
                {{"frmStart", buildFrmStartView}, {"frmSettings", buildFrmSettingsView}});
    if (!b.start()) return nullptr;
    b.frm().mnuDatabase.click();
    f = b.session->forms.get<FrmSettings>("frmSettings");
    return f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
}

} // namespace

TEST(PresetListView, EveryControlDrawnAndNamed) {
    SessionBench b;
    FrmSettings* f = nullptr;
    FormWindow* view = openDrawn(b, f);
    ASSERT_NE(view, nullptr);
    expectDrawnAndNamed(*f, "List of Resolutions");
    auto* w = qobject_cast<QMainWindow*>(view->window());
    ASSERT_NE(w, nullptr);
    QStringList menus;
    for (QAction* a : w->menuBar()->actions())
        menus << a->text();
    EXPECT_EQ(menus, (QStringList{"&Print", "&Refresh", "E&xit"}));
    for (const char* name : {"Toolbar1_refresh", "Toolbar1_print_tbl", "Toolbar1_exit_tbl"}) {
        SCOPED_TRACE(name);
        auto* tb = w->findChild<QToolButton*>(name);
        ASSERT_NE(tb, nullptr);
        EXPECT_FALSE(tb->icon().isNull());
        EXPECT_EQ(tb->toolTip(), f->control<Button>(name).caption());
    }
    auto* grid = w->findChild<QTableWidget*>("DBGrid1");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->rowCount(), 26);
    EXPECT_EQ(grid->item(1, 0)->text(), "640x480x60");
    savePicture(*f, "frmSettings");
}

// The key chords work wherever the focus is, and the toolbar's buttons reach the logic.
TEST(PresetListView, KeysAndToolbar) {
    SessionBench b;
    FrmSettings* f = nullptr;
    FormWindow* view = openDrawn(b, f);
    ASSERT_NE(view, nullptr);
    auto* grid = view->window()->findChild<QTableWidget*>("DBGrid1");
    ASSERT_NE(grid, nullptr);
    b.link.dialogs.answerText(QString("Lumen"));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier, "E");
    QApplication::sendEvent(grid, &key);
    EXPECT_TRUE(f->cmdRemove.visible());
    auto* remove = view->window()->findChild<QWidget*>("cmdRemove");
    ASSERT_NE(remove, nullptr);
    EXPECT_FALSE(remove->isHidden());

    f->cboPresets.userSelect(3);
    view->window()->findChild<QToolButton*>("Toolbar1_refresh")->click();
    EXPECT_EQ(f->cboPresets.listIndex(), -1);
    view->window()->findChild<QToolButton*>("Toolbar1_exit_tbl")->click();
    EXPECT_FALSE(b.session->forms.isLoaded("frmSettings"));
}
