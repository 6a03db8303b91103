// A card pause (RealHost::sleep) keeps the windows painting while nothing of the program runs:
// timers, queued handlers, keys and closes that arrive wait for the end of the pause and then
// come in the order they arrived.
#include "forms/Boundary.h"
#include "forms/Controls.h"
#include "forms/Form.h"
#include "forms/Forms.h"
#include "forms/ui/FormWindow.h"
#include "platform/Host.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

class PaintCounter : public QWidget {
  public:
    int paints = 0;

  protected:
    void paintEvent(QPaintEvent*) override { ++paints; }
};

class frmPause : public Form {
  public:
    frmPause() : Form("frmPause") {}
    TextBox& txtName = add<TextBox>("txtName");
    bool unloaded = false;

  protected:
    void formUnload(bool&) override { unloaded = true; }
};

} // namespace

TEST(Freeze, TheWindowPaintsButTimersAndHandlersWaitForTheEndInOrder) {
    RealHost host;
    PaintCounter window;
    window.resize(120, 80);
    window.show();
    QCoreApplication::processEvents();

    QStringList ran;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] { ran << "tick"; });
    tick.start(5);
    // A handler reached during the pause keeps the arguments it was called with.
    QObject named;
    QObject::connect(&named, &QObject::objectNameChanged,
                     guarded([&](const QString& word) { ran << word; }));
    QMetaObject::invokeMethod(
        &named, [&] { named.setObjectName("first"); }, Qt::QueuedConnection);
    QTimer::singleShot(20, qApp, [&] { ran << "late"; });
    QMetaObject::invokeMethod(
        &named, [&] { named.setObjectName("second"); }, Qt::QueuedConnection);
    window.update();
    const int paintsBefore = window.paints;

    QElapsedTimer clock;
    clock.start();
    host.sleep(60);
    EXPECT_GE(clock.elapsed(), 60) << "the pause is never shortened";
    EXPECT_GT(window.paints, paintsBefore) << "an update asked before the pause is painted in it";
    EXPECT_TRUE(ran.isEmpty()) << ran.join(',').toStdString();

    QCoreApplication::processEvents();
    tick.stop();
    // Queued handlers in their order of arrival; each held timer fires once.
    EXPECT_EQ(ran, (QStringList{"first", "second", "tick", "late"}));
}

TEST(Freeze, KeysAndACloseDuringAPauseReachTheFormAfterIt) {
    RealHost host;
    Forms forms;
    forms.registerForm<frmPause>("frmPause");
    ViewRegistry views;
    QPointer<QMainWindow> made;
    views.add("frmPause", [&](Form&) {
        made = new QMainWindow;
        auto* central = new QWidget(made);
        central->setLayout(new QVBoxLayout);
        auto* edit = new QLineEdit(central);
        edit->setObjectName("txtName");
        central->layout()->addWidget(edit);
        made->setCentralWidget(central);
        return made.data();
    });
    views.install(forms);
    auto& f = forms.load<frmPause>("frmPause");
    f.show();
    ASSERT_TRUE(made);
    auto* edit = made->findChild<QLineEdit*>("txtName");
    edit->setFocus();
    QCoreApplication::processEvents();

    QCoreApplication::postEvent(edit, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, "a"));
    QCoreApplication::postEvent(edit, new QKeyEvent(QEvent::KeyPress, Qt::Key_B, {}, "b"));
    QCoreApplication::postEvent(made, new QCloseEvent);
    host.sleep(30);
    EXPECT_EQ(f.txtName.text(), "") << "no key typed during the pause";
    EXPECT_FALSE(f.unloaded) << "the window stays during the pause";
    EXPECT_TRUE(made && made->isVisible());

    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(f.txtName.text(), "ab");
    EXPECT_TRUE(f.unloaded);
    EXPECT_FALSE(forms.isLoaded("frmPause"));
    FormWindow::releasePending();
}
