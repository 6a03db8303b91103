// The drawn test windows: bound and named for assistive technology, the maximised state learning
// the screen's usable height, and the releases, double clicks and keys of a user reaching the
// windows' logic.
#include "session/SessionBench.h"
#include "support/SimProcess.h"

#include "adjust/TestBars.h"
#include "adjust/TestWindows.h"
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
using velmorak::test::SessionBench;

namespace {

struct Bench : SessionBench {
    Bench() {
        // The bar files lie beside the database, as they do beside an installed program's.
        for (const char* file : {"colorC.bmp", "colorG.bmp"})
            QFile::copy(test::buildDir() + "/" + file, dir.filePath(file));
        views.add("frmTest", buildFrmTestView);
        views.add("frmTestC", buildFrmTestBarsView);
        views.add("frmTestG", buildFrmTestBarsView);
        views.install(session->forms);
        EXPECT_TRUE(start());
    }
    QWidget* window(const char* name) {
        Form* f = session->forms.get(name);
        auto* v = f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
        return v ? v->window() : nullptr;
    }
    QWidget* picture(const char* name) {
        auto* v = dynamic_cast<FormWindow*>(session->forms.get(name)->view());
        return qobject_cast<QWidget*>(v->binding().boundTo("impicT"));
    }
    ViewRegistry views;
};

void mouse(QWidget* w, QEvent::Type type) {
    const QPointF at(5, 5);
    QMouseEvent e(type, at, w->mapToGlobal(at), Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                  Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

void keyRelease(QWidget* w, int key) {
    QKeyEvent e(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

} // namespace

TEST(TestViews, SetDrawnBoundAndNamed) {
    Bench b;
    b.frm().mnuTests.fireClick();
    QApplication::processEvents();
    const int usable = QGuiApplication::primaryScreen()->availableGeometry().height();
    for (const char* name : {"frmTest", "frmTestC", "frmTestG"}) {
        SCOPED_TRACE(name);
        Form* f = b.session->forms.get(name);
        ASSERT_NE(f, nullptr);
        auto* v = dynamic_cast<FormWindow*>(f->view());
        ASSERT_NE(v, nullptr);
        EXPECT_EQ(v->binding().report().join("\n").toStdString(), "");
        EXPECT_EQ(v->window()->windowTitle(), f->caption());
        EXPECT_TRUE(v->window()->isVisible());
        // The maximised state told the form the usable height; the window is back to normal.
        EXPECT_EQ(f->height(), usable);
        EXPECT_FALSE(v->window()->isMaximized());
        QAccessible::setActive(true);
        QWidget* named = f->find("impicT") ? b.picture(name) : v->window();
        ASSERT_NE(named, nullptr);
        QAccessibleInterface* a = QAccessible::queryAccessibleInterface(named);
        ASSERT_NE(a, nullptr);
        EXPECT_FALSE(a->text(QAccessible::Name).isEmpty());
        if (f->find("impicT")) {
            EXPECT_EQ(named->accessibleDescription(), "impicT");
        }
        EXPECT_TRUE(v->window()->grab().save(test::buildDir() + "/tests/" + name + ".png"));
    }
    // The stripes are painted at their own size from the corner.
    const QImage shot = b.window("frmTest")->grab().toImage();
    EXPECT_EQ(shot.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(shot.pixel(1, 0), qRgb(0, 0, 0));
    EXPECT_EQ(shot.pixel(2, 5), qRgb(255, 255, 255));
    // The bar picture shows the colour file: white at its left edge.
    const QImage bars = b.picture("frmTestC")->grab().toImage();
    EXPECT_EQ(bars.pixel(1, bars.height() / 2), qRgb(255, 255, 255));
}

TEST(TestViews, ReleasesDoubleClicksAndKeysReachTheWindows) {
    Bench b;
    b.frm().mnuTests.fireClick();
    QApplication::processEvents();
    QWidget* test = b.window("frmTest");
    ASSERT_NE(test, nullptr);
    const struct {
        QEvent::Type type;
        int key;
        int step;
    } steps[] = {
        {QEvent::MouseButtonRelease, 0, 1},  {QEvent::MouseButtonRelease, 0, 0},
        {QEvent::MouseButtonDblClick, 0, 1}, {QEvent::KeyRelease, Qt::Key_Space, 0},
        {QEvent::KeyRelease, Qt::Key_A, 0},  {QEvent::KeyRelease, Qt::Key_Space, 1},
        {QEvent::MouseButtonPress, 0, 1},
    };
    for (const auto& s : steps) {
        if (s.type == QEvent::KeyRelease)
            keyRelease(test, s.key);
        else
            mouse(test, s.type);
        EXPECT_EQ(b.st().SharpTestStep, s.step) << int(s.type) << " " << s.key;
    }
    // The set's picture ignores the mouse; the grey window's background as well.
    mouse(b.picture("frmTestC"), QEvent::MouseButtonRelease);
    mouse(b.picture("frmTestG"), QEvent::MouseButtonRelease);
    mouse(b.window("frmTestG"), QEvent::MouseButtonRelease);
    EXPECT_NE(b.session->forms.get("frmTestC"), nullptr);
    EXPECT_NE(b.session->forms.get("frmTestG"), nullptr);
    keyRelease(test, Qt::Key_Escape);
    EXPECT_EQ(b.session->forms.get("frmTest"), nullptr);
    EXPECT_EQ(b.session->forms.get("frmTestC"), nullptr);
    EXPECT_EQ(b.session->forms.get("frmTestG"), nullptr);
    EXPECT_FALSE(b.frm().mnuTests.checked());
}

TEST(TestViews, AReleaseOnTheColourPictureClosesItBesideTheConsole) {
    Bench b;
    Form console("frmConsole");
    console.move(100, 0, 600, 400);
    TestBars(b.session->context).pictureClick(TestPicture::Color, console, {});
    QApplication::processEvents();
    ASSERT_NE(b.session->forms.get("frmTestC"), nullptr);
    mouse(b.picture("frmTestC"), QEvent::MouseButtonRelease);
    EXPECT_EQ(b.session->forms.get("frmTestC"), nullptr);
    EXPECT_EQ(b.st().ColorTestStep, 0);
}
