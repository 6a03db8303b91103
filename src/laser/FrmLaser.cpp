#include "laser/FrmLaser.h"

#include "laser/LaserMaps.h"
#include "link/CardState.h"
#include "platform/Host.h"

namespace velmorak {

namespace {

const RegisterMap& kMap = kOldLaserMap;
constexpr int kRows = 23;

// The bit whose state a row's "Control" text tells.
int testBit(const RegisterRow& row) {
    return row.kind == RegisterRow::Field ? row.shown : row.edit;
}

} // namespace

FrmLaser::FrmLaser(AppContext& ctx)
    : LaserForm(QStringLiteral("frmLaser"), QStringLiteral("Laser Driver "), ctx, kMap) {
    move(0, 0, 860, 700);
    cmdPrevios.setCaption(QStringLiteral("&SaveToM"));
    cmdRestore.setCaption(QStringLiteral("&RestoreFrM"));
    for (const OldLaserSlider& s : kOldLaserSliders) {
        auto& bar = control<ScrollBar>(QString::fromLatin1(s.bar));
        bar.setMax(s.max);
        control<TextBox>(QString::fromLatin1(s.text)).setLocked(true);
        // A change and a scroll do the same.
        bar.onChange.connect([this, &s] { sliderMoved(s); });
        bar.onScroll.connect([this, &s] { sliderMoved(s); });
    }
    cmdLoad.onClick.connect([this] { loadClick(); });
    cmdRead.onClick.connect([this] { readClick(); });
    cmdDefault.onClick.connect([this] {
        writeDefaults();
        c_.host.sleep(500);
    });
    cmdPrevios.onClick.connect([this] {
        setActionsEnabled(false);
        SavedImage = buildImage();
        enableAfterAction();
    });
    cmdRestore.onClick.connect([this] {
        setActionsEnabled(false);
        SetToTable(SavedImage);
        enableAfterAction();
    });
}

void FrmLaser::formLoad() {
    LoadFrReg();
    c_.host.pump();
    if (c_.st.Connected) {
        SavedImage = loadFromCard(false);
    } else {
        SavedImage = QByteArray(1, '\0');
    }
    restoreLayout();
}

void FrmLaser::LoadFrReg() {
    buildTable();
    for (int r = 0; r < kRows; ++r)
        setControlCell(r);
    // While the table is first built the laser reads as enabled, in full green.
    FlexGrP.setTextMatrix(17, 3, QStringLiteral("Enabled"));
    FlexGrP.setCellBackColor(17, 3, kFullGreen);
}

void FrmLaser::setActionsEnabled(bool on) {
    for (Button* b : {&cmdRead, &cmdDefault, &cmdPrevios, &cmdRestore, &cmdLoad})
        b->setEnabled(on);
    mnuLoad.setEnabled(on);
    mnuRead.setEnabled(on);
}

void FrmLaser::SetToTable(const QByteArray& image) {
    spreadImage(rows, kMap, image);
    for (int r = 0; r < kRows; ++r)
        rowClicked(r);
}

void FrmLaser::writeDefaults() {
    for (int r = 0; r < kRows; ++r)
        rows(r).WriteByte(kMap.rows[size_t(r)].defaultValue);
    for (int r = 0; r < kRows; ++r)
        rowClicked(r);
}

void FrmLaser::loadClick() {
    setActionsEnabled(false);
    cmdLoad.setCaption(QStringLiteral("Loading"));
    const QByteArray image = buildImage();
    writeImage(image);
    // With "Clear Registers" set the laser clears itself: nothing to compare.
    if (quint8(image[3]) & 16) {
        txtMsg.setText(QStringLiteral("Reset"));
    } else {
        const QByteArray reply = readImage();
        txtMsg.setText(sameImage(reply, image, true) ? QStringLiteral("Load OK")
                                                     : QStringLiteral("Failure"));
        if (!noReply(reply)) {
            SetToTable(reply);
            c_.host.sleep(100);
        }
    }
    showMessage(txtMsg.text(), 1500);
    setActionsEnabled(true);
    cmdLoad.setCaption(QStringLiteral("&Load"));
}

void FrmLaser::readClick() {
    setActionsEnabled(false);
    const QByteArray reply = readImage();
    if (!noReply(reply)) {
        SetToTable(reply);
        c_.host.sleep(500);
    }
    setActionsEnabled(true);
    showMessage(QStringLiteral("Read OK"), 2000);
}

void FrmLaser::setControlCell(int r) {
    const RegisterRow& row = kMap.rows[size_t(r)];
    if (!row.word1) return;
    const bool on = rows(r).ReadByte() & testBit(row);
    FlexGrP.setTextMatrix(r + 1, 3, QString::fromLatin1(on ? row.word1 : row.word0));
    if (oldLaserGreenRow(r))
        FlexGrP.setCellBackColor(r + 1, 3, on ? kPaleGreen : Grid::kDefaultBack);
}

void FrmLaser::rowClicked(int r) {
    if (r < 0 || r >= kRows) return;
    const RegisterRow& row = kMap.rows[size_t(r)];
    setControlCell(r);
    const int carrier = registerRowOf(kMap, r);
    if (carrier != r) {
        UcBitsField& c = rows(carrier);
        c.WriteByte(qint16((c.ReadByte() & ~row.shown) + (rows(r).ReadByte() & row.shown)));
        if (r == 1) {
            const OldLaserSlider& mod = *oldLaserSliderOfRow(2);
            control<TextBox>(QString::fromLatin1(mod.text))
                .setText(valueText(mod, rows(2).ReadByte() & mod.max));
        }
    }
    if (const OldLaserSlider* s = oldLaserSliderOfRow(r)) {
        const int v = (rows(r).ReadByte() >> s->shift) & s->max;
        control<ScrollBar>(QString::fromLatin1(s->bar)).setValue(v);
        control<TextBox>(QString::fromLatin1(s->text)).setText(valueText(*s, v));
    }
}

QString FrmLaser::valueText(const OldLaserSlider& s, int v) {
    if (s.table == 1) return TextTable1(v);
    // The high range reads 3 mA above the low one.
    if (s.table == 2) return TextTable2(v, (rows(2).ReadByte() & 64) ? 3 : 0);
    return QString::number(v);
}

void FrmLaser::sliderMoved(const OldLaserSlider& s) {
    const int v = control<ScrollBar>(QString::fromLatin1(s.bar)).value();
    const int field = v << s.shift;
    if (s.row != s.carrier) rows(s.row).WriteByte(qint16(field));
    UcBitsField& c = rows(s.carrier);
    c.WriteByte(qint16((c.ReadByte() & s.keep) + field));
    control<TextBox>(QString::fromLatin1(s.text)).setText(valueText(s, v));
}

} // namespace velmorak
