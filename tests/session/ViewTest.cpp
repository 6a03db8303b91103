// The main window drawn over its logic: every control has its widget, and a picture to look at.
#include "SessionBench.h"

#include "forms/ui/FormWindow.h"
#include "registers/FrmAD9888.h"
#include "registers/FrmRLReg.h"
#include "registers/ui/FrmAD9888View.h"
#include "registers/ui/FrmRLRegView.h"
#include "resdb/ui/FrmInputBoxView.h"
#include "session/ui/FrmStartView.h"
#include "support/SimProcess.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QScrollBar>
#include <QTabWidget>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

// Starts the session with the real main window drawn.
FormWindow* startWithView(SessionBench& b) {
    ViewRegistry views;
    views.add("frmStart", buildFrmStartView);
    views.add("frmInputBox", buildFrmInputBoxView);
    views.add("frmAD9888", buildFrmAD9888View);
    views.add("frmRLReg", buildFrmRLRegView);
    views.install(b.session->forms);
    if (!b.start()) return nullptr;
    return dynamic_cast<FormWindow*>(b.frm().view());
}

} // namespace

TEST(FrmStartView, EveryControlHasItsWidgetAndTheWindowIsDrawn) {
    SessionBench b;
    FormWindow* view = startWithView(b);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
    auto* w = qobject_cast<QMainWindow*>(view->window());
    ASSERT_NE(w, nullptr);
    QStringList menus;
    for (QAction* a : w->menuBar()->actions())
        menus << a->text();
    EXPECT_EQ(menus, (QStringList{"&File", "&Settings", "&View", "&Presets"}));
    EXPECT_TRUE(w->windowTitle().startsWith("Velmorak Software Version"));
    QApplication::processEvents();
    const QString png = velmorak::test::buildDir() + "/tests/frmStart.png";
    EXPECT_TRUE(w->grab().save(png));
}

// Keys typed anywhere in the window reach the window's logic first.
TEST(FrmStartView, UnlockKeysArriveFromAWidget) {
    SessionBench b({}, QString());
    FormWindow* view = startWithView(b);
    ASSERT_NE(view, nullptr);
    auto* txtCom = view->window()->findChild<QLineEdit*>("txtCom");
    ASSERT_NE(txtCom, nullptr);
    b.link.dialogs.answerText(QString("lumen"));
    QKeyEvent key(QEvent::KeyPress, Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier, "E");
    QApplication::sendEvent(txtCom, &key);
    EXPECT_TRUE(b.frm().mnuPanel.visible());
    EXPECT_EQ(txtCom->text(), " 5");
}

TEST(FrmInputBoxView, EveryControlHasItsWidget) {
    SessionBench b({}, QString());
    ASSERT_NE(startWithView(b), nullptr);
    Form& box = b.session->forms.show("frmInputBox");
    auto* view = dynamic_cast<FormWindow*>(box.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
    EXPECT_EQ(view->window()->windowTitle(), "Enter the Name");
}

// The flat panel window against the card: every control drawn, each tab pictured, and a user's
// moves on the widgets reach the rows.
TEST(FrmAD9888View, TabsRowsAndControls) {
    SessionBench b;
    ASSERT_NE(startWithView(b), nullptr);
    auto& f = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    auto* view = dynamic_cast<FormWindow*>(f.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
    auto* tabs = view->window()->findChild<QTabWidget*>("TabStrip1");
    ASSERT_NE(tabs, nullptr);
    for (int t = 0; t < 4; ++t) {
        tabs->setCurrentIndex(t);
        EXPECT_EQ(f.TabStrip1.selectedIndex(), t + 1);
        EXPECT_TRUE(f.control<Frame>(QString("fraT%1").arg(t + 1)).visible());
        QApplication::processEvents();
        const QString png =
            velmorak::test::buildDir() + QString("/tests/frmAD9888-tab%1.png").arg(t + 1);
        EXPECT_TRUE(view->window()->grab().save(png));
    }
    tabs->setCurrentIndex(0);
    auto* clamp = view->window()->findChild<QScrollBar*>("HScrlClPl");
    ASSERT_NE(clamp, nullptr);
    EXPECT_EQ(clamp->value(), f.byteOf(6));
    clamp->setValue(99);
    EXPECT_EQ(f.byteOf(6), 99);
    EXPECT_TRUE(view->controlRect("cmdSave").has_value());
}

// The single-register tool: every control drawn, a picture, and the slider moving the cells.
TEST(FrmRLRegView, ControlsAndSlider) {
    SessionBench b;
    ASSERT_NE(startWithView(b), nullptr);
    b.session->forms.show("frmAD9888");
    auto& f = dynamic_cast<FrmRLReg&>(b.session->forms.show("frmRLReg"));
    auto* view = dynamic_cast<FormWindow*>(f.view());
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view->binding().report().join("\n").toStdString(), "");
    EXPECT_EQ(view->window()->windowTitle(), "Load / Read Register");
    auto* slider = view->window()->findChild<QScrollBar*>("HScrlR");
    ASSERT_NE(slider, nullptr);
    slider->setValue(0x7F);
    EXPECT_EQ(f.ucBitsFieldR.ReadByte(), 0x7F);
    EXPECT_EQ(f.ucBitsFieldR.lblHex(), "7Fh");
    QApplication::processEvents();
    EXPECT_TRUE(view->window()->grab().save(velmorak::test::buildDir() + "/tests/frmRLReg.png"));
}
