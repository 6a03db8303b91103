#include "adjust/FrmConsole.h"

#include "adjust/TestWindows.h"
#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "platform/Settings.h"
#include "resdb/Database.h"
#include "resdb/Recordset.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace velmorak {

namespace {
constexpr int kAd9888 = 32;
constexpr int kTransmitter = 96;
constexpr int kSerial = 88;

// The arrows beside the database, else in the installed data folder.
QString arrowFolder(const QString& appPath) {
    const QString probe = QStringLiteral("/ARRL.ICO");
    if (QFileInfo::exists(appPath + probe) || !QCoreApplication::instance()) return appPath;
    const QString installed =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/velmorak");
    return QFileInfo::exists(installed + probe) ? QFileInfo(installed).absoluteFilePath() : appPath;
}
} // namespace

const std::vector<FrmConsole::Rule>& FrmConsole::rules() {
    using F = FrmConsole;
    static const std::vector<Rule> table = {
        {"ucScrlCoarse",
         Kind::Coarse,
         &F::DirtyCoarse,
         &F::DirtyPhase,
         true,
         {{kAd9888, 1, "01"}, {kAd9888, 2, "02"}}},
        {"ucScrlPhase", Kind::Phase, &F::DirtyPhase, &F::DirtyPhase, true, {{kAd9888, 4, "04"}}},
        {"ucScrlContrast",
         Kind::Contrast,
         &F::DirtyContrast,
         &F::DirtyContrast,
         false,
         {{kAd9888, 8, "08"}, {kAd9888, 9, "09"}, {kAd9888, 10, "0AH"}}},
        {"ucScrlR", Kind::Offset, &F::DirtyR, &F::DirtyR, false, {{kAd9888, 11, "0BH"}}},
        {"ucScrlG", Kind::Offset, &F::DirtyG, &F::DirtyG, false, {{kAd9888, 12, "0CH"}}},
        {"ucScrlB", Kind::Offset, &F::DirtyB, &F::DirtyB, false, {{kAd9888, 13, "0DH"}}},
        {"ucScrlHPoz",
         Kind::HPoz,
         &F::DirtyHPoz,
         &F::DirtyHPoz,
         false,
         {{kTransmitter, 50, "32H"}, {kTransmitter, 51, "33H"}}},
        {"ucScrlVPoz",
         Kind::VPoz,
         &F::DirtyVPoz,
         &F::DirtyVPoz,
         false,
         {{kTransmitter, 52, "34H"}}},
    };
    return table;
}

UcScrollChange& FrmConsole::stepper(const Rule& r) const {
    return control<UcScrollChange>(QString::fromLatin1(r.control));
}

std::vector<int> FrmConsole::bytesOf(const Rule& r, int upper33) const {
    const UcScrollChange& s = stepper(r);
    const int v = s.Value();
    const int m = s.Max();
    const int p = v + s.Min();
    switch (r.kind) {
    case Kind::Coarse:
        return {p / 16, (p & 15) * 16};
    case Kind::Phase:
        return {v * 8};
    case Kind::Contrast:
        return {m - v, m - v, m - v};
    case Kind::Offset:
        return {(m - v) * 2};
    case Kind::HPoz:
        return {p & 255, upper33 + ((p / 256) & 1)};
    case Kind::VPoz:
        return {p};
    }
    return {};
}

FrmConsole::FrmConsole(AppContext& ctx, QString appPath)
    : Form(QStringLiteral("frmConsole")), c_(ctx), appPath_(std::move(appPath)) {
    setCaption(QStringLiteral("Adjustment Interface"));
    move(0, 0, 560, 470);
    frPhase.setCaption(QStringLiteral(" PHASE ADJUSTMENT"));
    lblFine.setCaption(QStringLiteral("Fine"));
    lblCoarse.setCaption(QStringLiteral("Coarse"));
    frColor.setCaption(QStringLiteral("COLOR"));
    frBrite.setCaption(QStringLiteral("BRIGHTNESS"));
    frContrast.setCaption(QStringLiteral("CONTRAST"));
    frVPoz.setCaption(QStringLiteral("V. POSITION"));
    frHPoz.setCaption(QStringLiteral("H. POSITION"));
    lblSerial.setCaption(QStringLiteral("Laser S/N:"));
    lblCardSN.setCaption(QStringLiteral("Card S/N:"));
    frSharp.setCaption(QStringLiteral("Sharpness"));
    frTestColor.setCaption(QStringLiteral("Colors"));
    frTestGray.setCaption(QStringLiteral("Gray"));
    txtSerial.setLocked(true);
    txtCardSN.setLocked(true);
    cmdDefault.setCaption(QStringLiteral("&Default"));
    cmdSave.setCaption(QStringLiteral("&Save"));
    cmdClose.setCaption(QStringLiteral("&Close"));
    cmdClose.setCancel(true);

    struct Design {
        UcScrollChange* s;
        qint16 max;
        quint32 colour;
    };
    const QString arrows = arrowFolder(appPath_);
    for (const Design& d :
         {Design{&ucScrlPhase, 31, 0xC0C0C0}, Design{&ucScrlCoarse, 15, 0xC0C0C0},
          Design{&ucScrlR, 127, 0xFFC0C0}, Design{&ucScrlG, 127, 0xC0FFC0},
          Design{&ucScrlB, 127, 0x80FFFF}, Design{&ucScrlBrite, 127, 0xC0C0C0},
          Design{&ucScrlContrast, 127, 0xC0C0C0}, Design{&ucScrlVPoz, 127, 0xC0C0C0},
          Design{&ucScrlHPoz, 511, 0xC0C0C0}}) {
        d.s->setPictureFolder(arrows);
        d.s->resize(300, 20);
        d.s->setMax(d.max);
        d.s->setColorChange(d.colour);
        d.s->setPercent(true);
        d.s->setValue(0);
    }

    for (const Rule& r : rules()) {
        UcScrollChange& s = stepper(r);
        s.onClickLeft.connect([this, &r] { step(r); });
        s.onClickRight.connect([this, &r] { step(r); });
    }
    ucScrlBrite.onClickLeft.connect([this] { brightness(-1); });
    ucScrlBrite.onClickRight.connect([this] { brightness(1); });
    for (TestPicture t : {TestPicture::Sharp, TestPicture::Color, TestPicture::Gray}) {
        strip(t).onClick.connect([this, t] { stripClick(t); });
        stripHover(t);
    }
    impicColor.setPicture(testPictureFile(appPath_, QString::fromLatin1(FrmTestBars::kColorFile)));
    impicGray.setPicture(testPictureFile(appPath_, QString::fromLatin1(FrmTestBars::kGrayFile)));
    cmdDefault.onClick.connect([this] { defaultClick(); });
    cmdSave.onClick.connect([this] { saveClick(); });
    cmdClose.onClick.connect([this] { unload(); });
}

bool FrmConsole::connected() const {
    return c_.st.Connected != 0;
}

void FrmConsole::box(const QString& text) {
    c_.dialogs.messageBox(text, MsgButtons::OK, c_.st.AppTitle);
}

int FrmConsole::codeOf(const QByteArray& image, int position) const {
    // Position counts from 1; beyond the text reads as 0.
    if (position < 1 || position > image.size()) return 0;
    return static_cast<unsigned char>(image[position - 1]);
}

// --- load

void FrmConsole::formLoad() {
    CardState& st = c_.st;
    if (!connected()) return demoState();
    AdjustEnabled = 1;
    st.SharpTestStep = 0;
    lblRez.setCaption(st.CurPreset);
    if (st.CurPreset.isEmpty()) {
        st.CardParams = c_.fn.ReadParams(24);
        if (!isLoaded()) return;
        if (st.CardParams.size() < 18) {
            st.DemoMode = 1;
            return demoState();
        }
        if (st.DemoMode == 1) return demoState();
        const QString name = c_.findRezName(st.CardParams);
        if (name.isEmpty()) {
            c_.dialogs.messageBox(QStringLiteral("Video signal is not valid!"), MsgButtons::OK,
                                  st.AppTitle, MsgIcon::Critical);
            unload();
            return;
        }
        st.CurPreset = name;
        lblRez.setCaption(name);
    } else if (st.DemoMode == 1) {
        return demoState();
    }
    if (!readRanges()) return;
    readChip();
}

// The ranges of the position and the divider around the factory values of the resolution.
bool FrmConsole::readRanges() {
    Recordset rs = c_.db().OpenRecordset(QStringLiteral("tblDefValues"));
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), c_.st.CurPreset);
    // A name missing from the table reads as a row of zeros.
    auto col = [&](const char* f) {
        return rs.NoMatch() ? 0 : int(rs.Fields(QString::fromLatin1(f)).Value().toInt());
    };
    const int defH = (col("33H") & 1) * 256 + col("32H");
    const int defDiv = col("01") * 16 + (col("02") & 240) / 16;
    rs.Close();
    if (defH - 127 > 0) ucScrlHPoz.setMin(qint16(defH - 127));
    if (defH + 127 < 512) ucScrlHPoz.setMax(qint16(defH + 127));
    if (defDiv - 63 > 0) ucScrlCoarse.setMin(qint16(defDiv - 63));
    if (defDiv + 63 < 4096) ucScrlCoarse.setMax(qint16(defDiv + 63));
    return true;
}

void FrmConsole::readChip() {
    if (connected()) cmdSave.setEnabled(true);
    ChipImage = c_.fn.ReadEE(kAd9888, 32);
    if (!isLoaded() || ChipImage.size() < 2) return;
    const QByteArray& ci = ChipImage;
    UcScrollChange& co = ucScrlCoarse;
    const int cur = codeOf(ci, 2) * 16 + (codeOf(ci, 3) & 240) / 16;
    if (cur <= co.Min()) {
        co.setMax(qint16(cur + 63));
        co.setMin(qint16(cur - 63 > 0 ? cur - 63 : 0));
    } else if (cur >= co.Max()) {
        co.setMax(qint16(cur + 63 < 4096 ? cur + 63 : 4095));
        co.setMin(qint16(cur - 63));
    }
    co.setValue(qint16(cur - co.Min()));

    ucScrlPhase.setValue(qint16(codeOf(ci, 5) / 8));
    RedOffset = qint16(codeOf(ci, 12) / 2);
    GreenOffset = qint16(codeOf(ci, 13) / 2);
    BlueOffset = qint16(codeOf(ci, 14) / 2);
    ucScrlR.setValue(qint16(ucScrlR.Max() - RedOffset));
    ucScrlG.setValue(qint16(ucScrlG.Max() - GreenOffset));
    ucScrlB.setValue(qint16(ucScrlB.Max() - BlueOffset));
    BriteMean = qint16((RedOffset + GreenOffset + BlueOffset) / 3);
    ucScrlBrite.setValue(qint16(ucScrlBrite.Max() - BriteMean));
    RedGain = qint16(codeOf(ci, 9));
    GreenGain = qint16(codeOf(ci, 10));
    BlueGain = qint16(codeOf(ci, 11));
    GainMean = qint16((RedGain + GreenGain + BlueGain) / 3);
    ucScrlContrast.setValue(qint16(ucScrlContrast.Max() - GainMean));
    readTransmitter();
}

void FrmConsole::readTransmitter() {
    TxImage = c_.fn.ReadEE(kTransmitter, 8);
    if (!isLoaded() || TxImage.size() < 2) return;
    UcScrollChange& hp = ucScrlHPoz;
    const int h = codeOf(TxImage, 1) + (codeOf(TxImage, 2) & 1) * 256;
    const int vp = codeOf(TxImage, 3) & 127;
    if (h - hp.Min() >= 1) {
        if (h - hp.Min() > 254) {
            hp.setMin(qint16(h - 254));
            hp.setMax(qint16(h));
        }
        hp.setValue(qint16(h - hp.Min()));
    }
    if (h <= hp.Min()) {
        hp.setMin(qint16(h));
        hp.setMax(qint16(h + 254));
        hp.setValue(qint16(h - hp.Min()));
    }
    ucScrlVPoz.setValue(qint16(vp));

    const QByteArray serial = c_.fn.ReadEE(kSerial, 5);
    if (!isLoaded()) return;
    if (serial.size() >= 2) txtSerial.setText(QString::fromLatin1(serial.left(5)));
    placeWindow();
}

void FrmConsole::demoState() {
    AdjustEnabled = 0;
    c_.st.SharpTestStep = 0;
    c_.st.CurPreset = QStringLiteral("DEMO");
    lblRez.setCaption(QStringLiteral("DEMO"));
    cmdSave.setEnabled(false);
    cmdDefault.setEnabled(false);
    placeWindow();
}

// Half the window may hang off the right and bottom edges, none off the left and top.
void FrmConsole::placeWindow() {
    const QString layout = c_.settings.get(name(), QStringLiteral("Layout"));
    const int comma = int(layout.indexOf(u','));
    if (comma < 0) return;
    int x = std::max(0, ToInt32(Val(layout.left(comma)), OnOverflow::Clamp));
    int y = std::max(0, ToInt32(Val(layout.mid(comma + 1)), OnOverflow::Clamp));
    x = std::min(x, c_.screen.width() - width() / 2);
    y = std::min(y, c_.screen.height() - height() / 2);
    move(x, y);
}

void FrmConsole::formUnload(bool& cancel) {
    (void)cancel;
    c_.settings.save(name(), QStringLiteral("Layout"),
                     QString::number(left()) + QStringLiteral(",") + QString::number(top()));
    TestBars(c_).consoleUnloaded();
}

// --- the test picture strips

PictureBox& FrmConsole::strip(TestPicture which) {
    switch (which) {
    case TestPicture::Sharp:
        return picSharp;
    case TestPicture::Color:
        return impicColor;
    case TestPicture::Gray:
        break;
    }
    return impicGray;
}

// The strips side by side under the steppers of a 560 x 470 window.
QRect FrmConsole::designedStrip(TestPicture which) {
    return QRect(20 + 176 * int(which), 392, 160, 28);
}

void FrmConsole::stripClick(TestPicture which) {
    const std::optional<QRect> drawn =
        view() ? view()->controlRect(strip(which).name()) : std::nullopt;
    TestBars(c_).pictureClick(which, *this, drawn.value_or(designedStrip(which)));
    if (!isLoaded()) return;
    for (TestPicture t : {TestPicture::Sharp, TestPicture::Color, TestPicture::Gray})
        stripHover(t);
}

void FrmConsole::stripHover(TestPicture which) {
    strip(which).setToolTipText(TestBars(c_).tip(which));
}

// --- steps

void FrmConsole::step(const Rule& r) {
    this->*r.dirty = 1;
    if (AdjustEnabled) writeRule(r);
}

void FrmConsole::writeRule(const Rule& r) {
    if (r.settle) c_.host.sleep(1);
    TxByte33 = qint16(codeOf(TxImage, 2) & 254);
    const std::vector<int> bytes = bytesOf(r, TxByte33);
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (!isLoaded()) return;
        c_.fn.WriteEE(qint16(r.targets[i].base), qint16(r.targets[i].reg),
                      QByteArray(1, char(bytes[i] & 0xFF)));
    }
}

// The three offsets move together; the stepper itself writes nothing.
void FrmConsole::brightness(int delta) {
    for (UcScrollChange* s : {&ucScrlR, &ucScrlG, &ucScrlB})
        s->setValue(qint16(s->Value() + delta));
    for (const Rule& r : rules())
        if (r.kind == Kind::Offset) {
            if (!isLoaded()) return;
            step(r);
        }
}

} // namespace velmorak
