#include "laser/LaserForm.h"

#include "forms/Forms.h"
#include "laser/LaserMaps.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/Placement.h"
#include "link/Transport.h"
#include "platform/Host.h"
#include "platform/Settings.h"

namespace velmorak {

LaserForm::LaserForm(const QString& name, const QString& caption, AppContext& ctx,
                     const RegisterMap& map)
    : Form(name), rows(addArray<UcBitsField>(QString::fromLatin1(map.array), {0})), c_(ctx),
      map_(map) {
    setCaption(caption);
    for (const RegisterGrid& g : map.grids) {
        add<Frame>(QString::fromLatin1(g.frame));
        add<Grid>(QString::fromLatin1(g.grid));
    }
    // The scroll bars and texts that lie over the "Control" column.
    for (const RegisterRow& row : map.rows) {
        if (!row.control) continue;
        for (const QString& n : QString::fromLatin1(row.control).split(u',')) {
            if (n.startsWith(QLatin1String("HScrl")))
                add<ScrollBar>(n).setMin(0);
            else
                add<TextBox>(n);
        }
    }
    cmdLoad.setCaption(QStringLiteral("&Load"));
    cmdRead.setCaption(QStringLiteral("&Read"));
    cmdDefault.setCaption(QStringLiteral("&Default Settings"));
    cmdLoad.setEnabled(false);
    cmdRead.setEnabled(false);
    txtMsg.setVisible(false);
    txtMsg.setLocked(true);
    lblCSerN.setCaption(QStringLiteral("Serial #"));
    txtSerial.setMaxLength(5);
    mnuFile.setCaption(QStringLiteral("&File"));
    mnuLoad.setCaption(QStringLiteral("&Load"));
    mnuRead.setCaption(QStringLiteral("&Read"));
    mnuSaveN.setCaption(QStringLiteral("&Save Serial#"));
    mnuClose.setCaption(QStringLiteral("&Close"));
    for (MenuItem* m : {&mnuLoad, &mnuRead, &mnuSaveN, &mnuClose})
        mnuFile.addChild(*m);

    // The menu entries act as their buttons do, and only when those could be pressed.
    mnuLoad.onClick.connect([this] {
        if (cmdLoad.enabled()) cmdLoad.onClick();
    });
    mnuRead.onClick.connect([this] {
        if (cmdRead.enabled()) cmdRead.onClick();
    });
    mnuSaveN.onClick.connect([this] { saveSerial(); });
    mnuClose.onClick.connect([this] {
        if (c_.port.isOpen()) c_.port.close();
        unload();
    });
    txtSerial.onChange.connect([this] { serialChanged(); });
    txtSerial.onKeyPress.connect([](int& key) { serialKey(key); });
}

Grid& LaserForm::gridOf(int row) const {
    for (const RegisterGrid& g : map_.grids)
        if (row >= g.first && row <= g.last) return control<Grid>(QString::fromLatin1(g.grid));
    return control<Grid>(QString::fromLatin1(map_.grids[0].grid));
}

int LaserForm::gridRowOf(int row) const {
    for (const RegisterGrid& g : map_.grids)
        if (row >= g.first && row <= g.last) return row - g.first + 1;
    return 0;
}

void LaserForm::buildTable() {
    buildRows(*this, map_);
    for (UcBitsField& r : rows) {
        const int i = r.index();
        r.onClickBit.connect([this, i] { rowClicked(i); });
    }
}

void LaserForm::enableAfterAction() {
    setActionsEnabled(true);
    if (!c_.st.Connected) {
        cmdRead.setEnabled(false);
        cmdLoad.setEnabled(false);
    }
}

QByteArray LaserForm::loadFromCard(bool setSerialBase) {
    cmdRead.setEnabled(true);
    cmdLoad.setEnabled(true);
    const QByteArray image = readImage();
    if (image.isEmpty() || image[0] == '\0')
        blankCard();
    else
        SetToTable(image);
    if (setSerialBase) c_.st.ChipBase = kLaserSerialBase;
    txtSerial.setText(QString::fromLatin1(
        c_.fn.ReadEE(kLaserSerialBase, kLaserSerialLength).left(kLaserSerialLength)));
    return image;
}

void LaserForm::restoreLayout() {
    placeFromLayout(*this, c_.settings, c_.screen, name());
}

void LaserForm::formActivate() {
    c_.st.ChipBase = kLaserBase;
}

void LaserForm::formUnload(bool& cancel) {
    (void)cancel;
    c_.settings.save(name(), QStringLiteral("Layout"),
                     QString::number(left()) + u',' + QString::number(top()));
}

void LaserForm::showMessage(const QString& text, int ms) {
    txtMsg.setText(text);
    txtMsg.setVisible(true);
    c_.host.pump();
    c_.host.sleep(ms);
    txtMsg.setVisible(false);
}

void LaserForm::writeImage(const QByteArray& image) {
    c_.st.ChipBase = kLaserBase;
    c_.fn.WriteEEBlock(kLaserBase, image);
}

QByteArray LaserForm::readImage() {
    c_.st.ChipBase = kLaserBase;
    return c_.fn.ReadEE(kLaserBase, kLaserReadLength);
}

bool LaserForm::sameImage(const QByteArray& reply, const QByteArray& image, bool fifth) {
    if (reply.size() < 7 || image.size() < 7) return false;
    if (reply.left(4) != image.left(4) || reply.mid(5, 2) != image.mid(5, 2)) return false;
    return !fifth || (quint8(reply[4]) & 127) == (quint8(image[4]) & 127);
}

void LaserForm::saveSerial() {
    setActionsEnabled(false);
    c_.st.ChipBase = kLaserSerialBase;
    const QByteArray sent = txtSerial.text().toLatin1();
    c_.fn.WriteEEBlock(kLaserSerialBase, sent);
    const QByteArray reply = c_.fn.ReadEE(kLaserSerialBase, kLaserSerialLength);
    // The whole reply goes to the box; being longer than 5, the box keeps the text it had.
    if (reply.left(kLaserSerialLength) == sent.left(kLaserSerialLength))
        txtSerial.setText(QString::fromLatin1(reply));
    else
        txtSerial.setText(QStringLiteral("00000"));
    showMessage(QStringLiteral("OK"), 2000);
    enableAfterAction();
}

void LaserForm::serialChanged() {
    const qsizetype n = txtSerial.text().size();
    if (n > kLaserSerialLength)
        txtSerial.setText(PrevSerial);
    else if (n >= 1)
        PrevSerial = txtSerial.text();
}

void LaserForm::serialKey(int& key) {
    if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z') || key == 8 || key == 127) return;
    if (key >= 'a' && key <= 'z')
        key -= 32;
    else
        key = 0;
}

} // namespace velmorak
