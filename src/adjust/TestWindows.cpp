#include "adjust/TestWindows.h"

#include "adjust/TestBars.h"
#include "link/AppContext.h"
#include "link/CardState.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace velmorak {

FrmTest::FrmTest(AppContext& ctx) : Form(QStringLiteral("frmTest")), c_(ctx) {
    setCaption(QStringLiteral("Test"));
    move(0, 0, kWidth, 400);
}

// With the set open a click toggles between the window's place in the set and the full screen.
void FrmTest::toggle() {
    CardState& st = c_.st;
    if (st.SharpTestStep != 0) {
        setWindowState(WindowState::Normal);
        move(st.TestW, top(), st.TestH, height());
        st.SharpTestStep = 0;
    } else {
        fullScreen();
        st.SharpTestStep = 1;
    }
}

void FrmTest::fullScreen() {
    setWindowState(WindowState::Normal);
    move(0, 0, c_.screen.width(), c_.screen.height());
}

// Opened beside the adjustment window, a few clicks close it; the strip stays until its picture
// is clicked again.
void FrmTest::mouseUp() {
    CardState& st = c_.st;
    if (st.TestBarsOn) {
        toggle();
        return;
    }
    if (st.SharpTestStep == 0 || st.SharpTestStep == 5) return;
    if (st.SharpTestStep < 3)
        ++st.SharpTestStep;
    else
        unload();
}

void FrmTest::dblClick() {
    if (c_.st.TestBarsOn) {
        toggle();
        return;
    }
    fullScreen();
    c_.st.SharpTestStep = 2;
}

int FrmTest::keyUp(int keyCode) {
    if (keyCode == Qt::Key_Escape)
        TestBars(c_).closeSet();
    else if (keyCode == Qt::Key_Space)
        mouseUp();
    return 0;
}

void FrmTest::formUnload(bool& cancel) {
    (void)cancel;
    c_.st.SharpTestStep = 0;
}

FrmTestBars::FrmTestBars(AppContext& ctx, const QString& name, const QString& caption,
                         QString appPath)
    : Form(name), c_(ctx), appPath_(std::move(appPath)) {
    setCaption(caption);
    move(0, 0, kWidth, 400);
}

bool FrmTestBars::isColor() const {
    return name() == QLatin1String("frmTestC");
}

void FrmTestBars::loadBars(const QString& file) {
    impicT.setPicture(file.isEmpty() ? QString() : testPictureFile(appPath_, file));
}

void FrmTestBars::mouseUp() {
    if (isColor() && c_.st.ColorTestStep != 5) unload();
}

void FrmTestBars::pictureMouseUp() {
    const int step = isColor() ? c_.st.ColorTestStep : c_.st.GrayTestStep;
    const bool stays = isColor() ? step == 0 || step == 5 || step == 15 : step == 0;
    if (!stays) unload();
}

void FrmTestBars::formUnload(bool& cancel) {
    (void)cancel;
    (isColor() ? c_.st.ColorTestStep : c_.st.GrayTestStep) = 0;
}

QString testPictureFile(const QString& appPath, const QString& file) {
    QStringList places{appPath};
    if (QCoreApplication::instance()) {
        const QString bin = QCoreApplication::applicationDirPath();
        places << bin << bin + QStringLiteral("/../share/velmorak");
    }
    for (const QString& dir : places) {
        const QString path = dir + QLatin1Char('/') + file;
        if (QFileInfo::exists(path)) return QFileInfo(path).absoluteFilePath();
    }
    return appPath + QLatin1Char('/') + file;
}

} // namespace velmorak
