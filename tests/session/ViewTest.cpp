// The main window drawn over its logic: every control has its widget, and a picture to look at.
#include "SessionBench.h"

#include "forms/ui/FormWindow.h"
#include "registers/FrmAD9888.h"
#include "registers/FrmRLReg.h"
#include "registers/UcBitsField.h"
#include "registers/ui/BitsFieldView.h"
#include "registers/ui/FrmAD9888View.h"
#include "registers/ui/FrmRLRegView.h"
#include "registers/ui/FrmTransmitterView.h"
#include "registers/ui/RegisterGridView.h"
#include "resdb/ui/FrmInputBoxView.h"
#include "session/ui/FrmPortsView.h"
#include "session/ui/FrmStartView.h"
#include "support/DrawnWindows.h"
#include "support/SimProcess.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QThread>
#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

namespace {

// The windows drawn here, with the start of each title and, where named, a picture to look at.
struct Drawn {
    const char* form;
    ViewRegistry::Builder build;
    const char* title;
    const char* png;
};
const Drawn kDrawn[] = {
    {"frmStart", buildFrmStartView, "Velmorak Software Version", "frmStart"},
    {"frmAD9888", buildFrmAD9888View, "Velmorak Optimization", nullptr},
    {"frmTransmitter", buildFrmTransmitterView, "PanelLink Transmitter", nullptr},
    {"frmRLReg", buildFrmRLRegView, "Load / Read Register", "frmRLReg"},
    {"frmInputBox", buildFrmInputBoxView, "Enter the Name", nullptr},
    {"frmPorts", buildFrmPortsView, "Serial Ports", "frmPorts"},
};

// Starts the session with the real main window drawn; with all, every window is shown too.
FormWindow* startWithView(SessionBench& b, bool all = false) {
    ViewRegistry views;
    for (const Drawn& d : kDrawn)
        views.add(QString::fromLatin1(d.form), d.build);
    views.install(b.session->forms);
    if (!b.start()) return nullptr;
    for (const Drawn& d : kDrawn)
        if (all) b.session->forms.show(QString::fromLatin1(d.form));
    return dynamic_cast<FormWindow*>(b.frm().view());
}

} // namespace

// Every window: each control has its widget, the title is right, and a picture to look at.
TEST(Views, EveryControlHasItsWidgetAndTheWindowIsDrawn) {
    SessionBench b;
    ASSERT_NE(startWithView(b, true), nullptr);
    Forms& forms = b.session->forms;
    for (const Drawn& d : kDrawn) {
        SCOPED_TRACE(d.form);
        expectDrawnAndNamed(*forms.get(d.form), d.title);
        if (d.png) savePicture(*forms.get(d.form), d.png);
    }
    auto* w = qobject_cast<QMainWindow*>(dynamic_cast<FormWindow*>(b.frm().view())->window());
    ASSERT_NE(w, nullptr);
    QStringList menus;
    for (QAction* a : w->menuBar()->actions())
        menus << a->text();
    EXPECT_EQ(menus, (QStringList{"&File", "&Settings", "&View", "&Presets", "&Help"}));
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

// Each tab of the flat panel window pictured, and a user's moves on the widgets of both register
// windows reach the rows.
TEST(RegisterViews, TabsSlidersAndRows) {
    SessionBench b;
    ASSERT_NE(startWithView(b), nullptr);
    auto& f = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    auto* view = dynamic_cast<FormWindow*>(f.view());
    ASSERT_NE(view, nullptr);
    auto* tabs = view->window()->findChild<QTabWidget*>("TabStrip1");
    ASSERT_NE(tabs, nullptr);
    for (int t = 0; t < 4; ++t) {
        tabs->setCurrentIndex(t);
        EXPECT_EQ(f.TabStrip1.selectedIndex(), t + 1);
        EXPECT_TRUE(f.control<Frame>(QString("fraT%1").arg(t + 1)).visible());
        QApplication::processEvents();
        const QString png = buildDir() + QString("/tests/frmAD9888-tab%1.png").arg(t + 1);
        EXPECT_TRUE(view->window()->grab().save(png));
    }
    tabs->setCurrentIndex(0);
    auto* clamp = view->window()->findChild<QScrollBar*>("HScrlClPl");
    ASSERT_NE(clamp, nullptr);
    EXPECT_EQ(clamp->value(), f.byteOf(6));
    clamp->setValue(99);
    EXPECT_EQ(f.byteOf(6), 99);
    EXPECT_TRUE(view->controlRect("cmdSave").has_value());

    auto& rl = dynamic_cast<FrmRLReg&>(b.session->forms.show("frmRLReg"));
    auto* slider = dynamic_cast<FormWindow*>(rl.view())->window()->findChild<QScrollBar*>("HScrlR");
    ASSERT_NE(slider, nullptr);
    slider->setValue(0x7F);
    EXPECT_EQ(rl.ucBitsFieldR.ReadByte(), 0x7F);
    EXPECT_EQ(rl.ucBitsFieldR.lblHex(), "7Fh");
}

namespace {

// Every node of a window's accessibility tree by its description, menu items included.
void walkAccessible(QAccessibleInterface* i, QHash<QString, QAccessibleInterface*>& out,
                    int depth = 0) {
    if (!i || !i->isValid() || depth > 40) return;
    const QString key = i->text(QAccessible::Description);
    if (!key.isEmpty() && !out.contains(key)) out.insert(key, i);
    for (int k = 0; k < i->childCount(); ++k)
        walkAccessible(i->child(k), out, depth + 1);
}

QHash<QString, QAccessibleInterface*> accessibleControls(QWidget* window) {
    QAccessible::setActive(true);
    QHash<QString, QAccessibleInterface*> out;
    walkAccessible(QAccessible::queryAccessibleInterface(window), out);
    return out;
}

// Counts the user events of a control's model.
Connection countEvents(Control* c, int& n) {
    auto bump = [&n] { ++n; };
    if (auto* b = dynamic_cast<Button*>(c)) return b->onClick.connect(bump);
    if (auto* x = dynamic_cast<CheckBox*>(c)) return x->onClick.connect(bump);
    if (auto* m = dynamic_cast<MenuItem*>(c)) return m->onClick.connect(bump);
    if (auto* s = dynamic_cast<ScrollBar*>(c)) return s->onChange.connect(bump);
    if (auto* r = dynamic_cast<UcBitsField*>(c)) return r->onClickBit.connect(bump);
    if (auto* t = dynamic_cast<TextBox*>(c)) return t->onChange.connect(bump);
    return Connection();
}

// Lets queued clicks (a pressed button flashes first) run.
void settle(const std::function<bool()>& done) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < 2000) {
        QApplication::processEvents();
        QThread::msleep(5);
    }
}

FormWindow* viewOf(Form& f) {
    return dynamic_cast<FormWindow*>(f.view());
}

} // namespace

// Assistive technology finds every control of every window by its name and acts on it as a
// user's click or move does.
TEST(AccessibleWindows, EveryControlFoundByNameAndActionsReachTheLogic) {
    SessionBench b;
    ASSERT_NE(startWithView(b, true), nullptr);
    Forms& forms = b.session->forms;
    for (const Drawn& d : kDrawn) {
        SCOPED_TRACE(d.form);
        Form* f = forms.get(d.form);
        ASSERT_NE(f, nullptr);
        FormWindow* view = viewOf(*f);
        ASSERT_NE(view, nullptr);
        const auto found = accessibleControls(view->window());
        int checked = 0;
        for (Control* c : f->controls()) {
            auto* w = view->binding().boundTo(c->fullName());
            if (!w) continue;
            QAccessibleInterface* i = found.value(c->fullName());
            EXPECT_NE(i, nullptr) << c->fullName().toStdString() << " not in the tree";
            if (!i) continue;
            ++checked;
            // A label or frame that shows no text has nothing to name.
            const bool blank =
                (dynamic_cast<Label*>(c) && static_cast<Label*>(c)->caption().isEmpty()) ||
                dynamic_cast<Frame*>(c) || dynamic_cast<Grid*>(c) || dynamic_cast<StatusBar*>(c) ||
                dynamic_cast<PictureBox*>(c) || dynamic_cast<Shape*>(c);
            if (!blank) {
                EXPECT_FALSE(i->text(QAccessible::Name).trimmed().isEmpty())
                    << c->fullName().toStdString() << " has no human name " << i->role() << " "
                    << (i->object() ? i->object()->metaObject()->className() : "-");
            }
        }
        EXPECT_GT(checked, 4);
    }

    auto* ad = viewOf(*forms.get("frmAD9888"));
    const auto adTree = accessibleControls(ad->window());
    auto* rowRed = adTree.value("ucBitsField1(12)");
    ASSERT_NE(rowRed, nullptr);
    EXPECT_EQ(rowRed->text(QAccessible::Name).toStdString(), "Red Offset");
    // Field rows are named without their indent; a slider's number says it is its value.
    const auto txTree = accessibleControls(viewOf(*forms.get("frmTransmitter"))->window());
    for (auto [control, name] : {std::pair{"ucBitsField1(9)", ": VEN"},
                                 {"ucBitsField1(32)", ": DE_GEN"},
                                 {"HScrl32", "DE_DLY [7:0]"},
                                 {"txt33", "DE_DLY [7:0], value"}}) {
        auto* i = txTree.value(control);
        ASSERT_NE(i, nullptr) << control;
        EXPECT_EQ(i->text(QAccessible::Name).toStdString(), name) << control;
    }

    enum How { Press, Toggle, Value, Bit, Text };
    struct Act {
        const char* window;
        const char* control;
        How how;
        int arg;
        int events; // model events it fires
    };
    const Act acts[] = {
        {"frmAD9888", "ChkChange", Toggle, 0, 1},
        {"frmAD9888", "ChkChange", Toggle, 0, 1},
        {"frmAD9888", "HScrlBrR", Value, 40, 1},
        {"frmAD9888", "HScrlClDur", Value, 30, 1},
        {"frmAD9888", "ucBitsField1(12)", Bit, 3, 1},
        {"frmAD9888", "ucBitsField1(38)", Bit, 6, 0}, // a status bit: no click
        {"frmAD9888", "cmdDefault", Press, 0, 1},
        {"frmAD9888", "mnuRead", Press, 0, 1},
        {"frmRLReg", "ChkChange", Toggle, 0, 1},
        {"frmRLReg", "HScrlR", Value, 0x55, 1},
        {"frmRLReg", "ucBitsFieldR", Bit, 7, 1},
        {"frmStart", "cmdSync", Press, 0, 1},
        {"frmAD9888", "txtPLLc", Text, 1400, 1},
        {"frmTransmitter", "HScrl32", Value, 300, 1},
        {"frmTransmitter", "ucBitsField1(22)", Bit, 4, 1},
        {"frmTransmitter", "ucBitsField1(18)", Bit, 2, 0}, // a status bit: no click
    };
    for (const Act& a : acts) {
        SCOPED_TRACE(std::string(a.window) + "." + a.control);
        Form* f = forms.get(a.window);
        ASSERT_NE(f, nullptr);
        const auto tree = accessibleControls(viewOf(*f)->window());
        QAccessibleInterface* i = tree.value(a.control);
        ASSERT_NE(i, nullptr);
        int events = 0;
        ScopedConnection count = countEvents(f->find(a.control), events);
        switch (a.how) {
        case Press:
            ASSERT_NE(i->actionInterface(), nullptr);
            i->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            break;
        case Toggle:
            ASSERT_NE(i->actionInterface(), nullptr);
            i->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
            break;
        case Value:
            ASSERT_NE(i->valueInterface(), nullptr);
            i->valueInterface()->setCurrentValue(a.arg);
            break;
        case Text: {
            QAccessibleEditableTextInterface* e = i->editableTextInterface();
            ASSERT_NE(e, nullptr);
            e->replaceText(0, i->textInterface()->characterCount(), QString::number(a.arg));
            break;
        }
        case Bit: {
            QAccessibleInterface* cell = nullptr;
            const QString name = i->text(QAccessible::Name) + QString(", bit %1").arg(a.arg);
            for (int k = 0; k < i->childCount(); ++k)
                if (i->child(k)->text(QAccessible::Name) == name) cell = i->child(k);
            ASSERT_NE(cell, nullptr) << name.toStdString();
            if (cell->actionInterface()->actionNames().isEmpty()) break; // disabled
            cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
            break;
        }
        }
        settle([&] { return events >= a.events && a.events > 0; });
        EXPECT_EQ(events, a.events);
        if (a.how == Text) {
            auto* t = dynamic_cast<TextBox*>(f->find(a.control));
            ASSERT_NE(t, nullptr);
            EXPECT_EQ(t->text(), QString::number(a.arg));
        }
        if (a.how == Value) {
            auto* s = dynamic_cast<ScrollBar*>(f->find(a.control));
            ASSERT_NE(s, nullptr);
            EXPECT_EQ(s->value(), a.arg);
        }
    }
    auto& fad = dynamic_cast<FrmAD9888&>(*forms.get("frmAD9888"));
    EXPECT_EQ(fad.ChkChange.value(), 0) << "toggled twice";
    EXPECT_TRUE(viewOf(fad)->window()->findChild<QCheckBox*>("ChkChange")->checkState() ==
                Qt::Unchecked);
    auto& rl = dynamic_cast<FrmRLReg&>(*forms.get("frmRLReg"));
    EXPECT_EQ(rl.ChkChange.value(), 1);
}

// Tab walks a register grid in reading order and leaves it; arrows move a focused scroll bar
// and Space flips a focused bit.
TEST(AccessibleWindows, TabWalksTheGridInReadingOrder) {
    SessionBench b;
    ASSERT_NE(startWithView(b), nullptr);
    auto& f = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    QWidget* win = viewOf(f)->window();
    QApplication::setActiveWindow(win);
    auto* grid = win->findChild<RegisterGridView*>("FlexGr1");
    ASSERT_NE(grid, nullptr);
    auto stop = [&](QWidget* w) -> QString {
        if (!w) return "none";
        if (auto* row = qobject_cast<BitsFieldView*>(w->parentWidget()))
            for (int bit = 0; bit < 8; ++bit)
                if (row->cell(bit) == w) return row->objectName() + QString(".%1").arg(bit);
        return w->objectName();
    };
    auto tab = [] {
        QKeyEvent k(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(QApplication::focusWidget(), &k);
    };
    grid->bitsRow(2)->cell(7)->setFocus();
    ASSERT_EQ(stop(QApplication::focusWidget()).toStdString(), "ucBitsField1(1).7");
    QStringList walked{stop(QApplication::focusWidget())};
    for (int n = 0; n < 200 && grid->isAncestorOf(QApplication::focusWidget()); ++n) {
        tab();
        walked << stop(QApplication::focusWidget());
    }
    EXPECT_FALSE(grid->isAncestorOf(QApplication::focusWidget())) << "Tab never left the grid";
    const QStringList head{"ucBitsField1(1).7", "ucBitsField1(1).6",
                           "ucBitsField1(1).5", "ucBitsField1(1).4",
                           "ucBitsField1(1).3", "ucBitsField1(1).2",
                           "ucBitsField1(1).1", "ucBitsField1(1).0",
                           "HScrlPLL",          "ucBitsField1(2).7",
                           "ucBitsField1(2).6", "ucBitsField1(2).5",
                           "ucBitsField1(2).4", "txtPLLc"};
    EXPECT_EQ(walked.mid(0, head.size()), head) << walked.join(' ').toStdString();
    QStringList controls;
    for (const QString& s : walked)
        if (!s.startsWith("ucBitsField1(")) controls << s;
    EXPECT_EQ(controls.mid(0, 13),
              (QStringList{"HScrlPLL", "txtPLLc", "cbo03_1", "cbo03_2", "HScrlPhA", "txtPhAdj",
                           "HScrlClPl", "HScrlClDur", "HScrlHsync", "HScrlCR", "txtRedC", "HScrlCG",
                           "txtGreenC"}))
        << walked.join(' ').toStdString();

    // Arrows on the focused bar, Space on a focused cell.
    auto* bar = win->findChild<QScrollBar*>("HScrlClPl");
    ASSERT_NE(bar, nullptr);
    bar->setFocus();
    EXPECT_EQ(QApplication::focusWidget(), bar);
    const int before = f.byteOf(6);
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QApplication::sendEvent(bar, &right);
    EXPECT_EQ(f.byteOf(6), before + 1);
    QWidget* cell = grid->bitsRow(7)->cell(2);
    cell->setFocus();
    const int clamp = f.byteOf(6);
    for (QEvent::Type t : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent space(t, Qt::Key_Space, Qt::NoModifier, " ");
        QApplication::sendEvent(cell, &space);
    }
    EXPECT_EQ(f.byteOf(6), clamp ^ 0x04);
}
