// The drawn test windows: bound and named for assistive technology, the maximised state telling
// the usable height, and a user's releases, double clicks and keys reaching the logic.
#include "session/SessionBench.h"
#include "support/SimProcess.h"

#include "adjust/ui/TestViews.h"
#include "forms/ui/FormWindow.h"

#include <QAccessible>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScreen>
#include <gtest/gtest.h>

using namespace velmorak;

namespace {

struct BarViewsBench : test::SessionBench {
    BarViewsBench() {
        // The bar files lie beside the database, as they may beside the program.
        for (const char* file : {"colorC.bmp", "colorG.bmp"})
            QFile::copy(test::buildDir() + "/" + file, dir.filePath(file));
        for (const char* name : {"frmTestC", "frmTestG"})
            views.add(name, buildFrmTestBarsView);
        views.add("frmTest", buildFrmTestView);
        views.install(session->forms);
        EXPECT_TRUE(start());
        frm().mnuTests.fireClick();
        QApplication::processEvents();
    }
    // Views of windows closed by a user's event are freed on the next pass of the loop.
    ~BarViewsBench() { QApplication::processEvents(); }
    FormWindow* view(const char* name) {
        Form* f = session->forms.get(name);
        return f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
    }
    QWidget* picture(const char* name) {
        return qobject_cast<QWidget*>(view(name)->binding().boundTo("impicT"));
    }
    ViewRegistry views;
};

void send(QWidget* w, QEvent::Type type, int key = 0) {
    if (type == QEvent::KeyRelease) {
        QKeyEvent e(type, key, Qt::NoModifier);
        QApplication::sendEvent(w, &e);
        return;
    }
    QMouseEvent e(type, QPointF(5, 5), w->mapToGlobal(QPointF(5, 5)), Qt::LeftButton,
                  Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

} // namespace

TEST(TestViews, SetDrawnBoundAndNamed) {
    BarViewsBench b;
    const int usable = QGuiApplication::primaryScreen()->availableGeometry().height();
    QAccessible::setActive(true);
    for (const char* name : {"frmTest", "frmTestC", "frmTestG"}) {
        SCOPED_TRACE(name);
        FormWindow* v = b.view(name);
        ASSERT_NE(v, nullptr);
        EXPECT_EQ(v->binding().report().join("\n").toStdString(), "");
        EXPECT_TRUE(v->window()->isVisible());
        EXPECT_FALSE(v->window()->isMaximized());
        EXPECT_EQ(b.session->forms.get(name)->height(), usable);
        QWidget* named = name[7] ? b.picture(name) : v->window();
        ASSERT_NE(named, nullptr);
        EXPECT_FALSE(
            QAccessible::queryAccessibleInterface(named)->text(QAccessible::Name).isEmpty());
        EXPECT_TRUE(v->window()->grab().save(test::buildDir() + "/tests/" + name + ".png"));
    }
    EXPECT_EQ(b.picture("frmTestC")->accessibleDescription(), "impicT");
    // Stripes at their own size from the corner; the colour file's white bar at the left.
    const QImage stripes = b.view("frmTest")->window()->grab().toImage();
    EXPECT_EQ(stripes.pixel(0, 3), qRgb(255, 255, 255));
    EXPECT_EQ(stripes.pixel(1, 3), qRgb(0, 0, 0));
    const QImage bars = b.picture("frmTestC")->grab().toImage();
    EXPECT_EQ(bars.pixel(1, 3), qRgb(255, 255, 255));
}

TEST(TestViews, ReleasesDoubleClicksAndKeysReachTheWindows) {
    BarViewsBench b;
    QWidget* test = b.view("frmTest")->window();
    const struct {
        QEvent::Type type;
        int key, step;
    } steps[] = {{QEvent::MouseButtonRelease, 0, 1},  {QEvent::MouseButtonRelease, 0, 0},
                 {QEvent::MouseButtonDblClick, 0, 1}, {QEvent::KeyRelease, Qt::Key_Space, 0},
                 {QEvent::KeyRelease, Qt::Key_A, 0},  {QEvent::MouseButtonPress, 0, 0}};
    for (const auto& s : steps) {
        send(test, s.type, s.key);
        EXPECT_EQ(b.st().SharpTestStep, s.step) << int(s.type) << " " << s.key;
    }
    // In the set the pictures ignore the mouse; the colour window's background closes it.
    send(b.picture("frmTestC"), QEvent::MouseButtonRelease);
    send(b.picture("frmTestG"), QEvent::MouseButtonRelease);
    EXPECT_NE(b.view("frmTestC"), nullptr);
    send(b.view("frmTestC")->window(), QEvent::MouseButtonRelease);
    EXPECT_EQ(b.view("frmTestC"), nullptr);
    send(test, QEvent::KeyRelease, Qt::Key_Escape);
    EXPECT_EQ(b.view("frmTest"), nullptr);
    EXPECT_EQ(b.view("frmTestG"), nullptr);
    EXPECT_FALSE(b.frm().mnuTests.checked());
}
