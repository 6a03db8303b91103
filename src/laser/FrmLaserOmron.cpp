#include "laser/FrmLaserOmron.h"

#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"

namespace velmorak {

namespace {

const RegisterMap& kMap = kNewLaserMap;
constexpr int kRows = 52;
constexpr Current kBoth[] = {Current::IMAX, Current::IMIN};

QString currentName(const char* prefix, int channel, Current which) {
    return QString::fromLatin1(prefix) + QLatin1String(which == Current::IMAX ? "IMAX" : "IMIN") +
           QString::number(channel);
}

} // namespace

FrmLaserOmron::FrmLaserOmron(AppContext& ctx)
    : LaserForm(QStringLiteral("frmLaserOmron"), QStringLiteral("Omron Laser Driver "), ctx, kMap) {
    move(0, 0, 900, 640);
    QStringList tabs;
    for (const RegisterGrid& g : kMap.grids)
        tabs << QString::fromLatin1(g.caption);
    TabStrip1.setTabs(tabs);
    TabStrip1.setToolTipText(QString::fromLatin1(kMap.tabText));
    TabStrip1.onClick.connect([this] {
        for (int t = 0; t < int(kMap.grids.size()); ++t)
            control<Frame>(QString::fromLatin1(kMap.grids[size_t(t)].frame))
                .setVisible(TabStrip1.selectedIndex() == t + 1);
    });
    for (TextBox* t : {&txtTC_MIN, &txtTC_MAX, &txtIWF})
        t->setLocked(true);
    for (int ch = 0; ch < 4; ++ch)
        for (Current w : kBoth) {
            ScrollBar& bar = currentBar(ch, w);
            bar.setMax(63);
            auto moved = [this, ch, w] {
                const int v = currentBar(ch, w).value();
                if (!fromText_) currentText(ch, w).setText(QString::number(v));
                codeToRows(ch, w, v);
            };
            bar.onChange.connect(moved);
            bar.onScroll.connect(moved);
            TextBox& text = currentText(ch, w);
            text.onKeyPress.connect([](int& key) {
                if (!((key >= '0' && key <= '9') || key == 8 || key == 127)) key = 0;
            });
            text.onChange.connect([this, ch, w] { currentTyped(ch, w); });
        }
    cmdLoad.onClick.connect([this] { loadClick(); });
    cmdRead.onClick.connect([this] { readClick(); });
    cmdDefault.onClick.connect([this] { defaultClick(); });
}

ScrollBar& FrmLaserOmron::currentBar(int channel, Current which) const {
    return control<ScrollBar>(currentName("HScrl", channel, which));
}

TextBox& FrmLaserOmron::currentText(int channel, Current which) const {
    return control<TextBox>(currentName("txt", channel, which));
}

void FrmLaserOmron::formLoad() {
    // The five pages, each built with its frame current.
    for (int t = 1; t <= int(kMap.grids.size()); ++t)
        TabStrip1.setSelectedIndex(t);
    buildTable();
    TabStrip1.setSelectedIndex(1);
    c_.host.pump();
    if (c_.st.Connected) loadFromCard(true);
    restoreLayout();
}

void FrmLaserOmron::setActionsEnabled(bool on) {
    for (Button* b : {&cmdRead, &cmdDefault, &cmdLoad})
        b->setEnabled(on);
    mnuLoad.setEnabled(on);
    mnuRead.setEnabled(on);
}

void FrmLaserOmron::SetToTable(const QByteArray& image) {
    spreadImage(rows, kMap, image);
    for (int r = 0; r < kRows; ++r)
        rowClicked(r);
}

void FrmLaserOmron::defaultClick() {
    for (Button* b : {&cmdLoad, &cmdRead, &cmdDefault})
        b->setEnabled(false);
    spreadList(rows, kMap, QString::fromLatin1(kNewLaserDefault));
    for (int r = 0; r < kRows; ++r)
        rowClicked(r);
    c_.host.sleep(200);
    cmdDefault.setEnabled(true);
    if (c_.st.Connected) {
        cmdRead.setEnabled(true);
        cmdLoad.setEnabled(true);
    }
}

void FrmLaserOmron::loadClick() {
    setActionsEnabled(false);
    cmdLoad.setCaption(QStringLiteral("Loading"));
    const QByteArray image = buildImage();
    writeImage(image);
    const QByteArray reply = readImage();
    // Only characters 1 to 4, 6 and 7 are compared.
    txtMsg.setText(sameImage(reply, image, false) ? QStringLiteral("Load OK")
                                                  : QStringLiteral("Failure"));
    if (!noReply(reply)) {
        SetToTable(reply);
        c_.host.sleep(100);
    }
    showMessage(txtMsg.text(), 1500);
    setActionsEnabled(true);
    cmdLoad.setCaption(QStringLiteral("&Load"));
    c_.host.sleep(2000);
    c_.dialogs.messageBox(QStringLiteral("Reapply power of this card to reset the LASER"),
                          MsgButtons::OK, c_.st.AppTitle);
}

void FrmLaserOmron::readClick() {
    setActionsEnabled(false);
    const QByteArray reply = readImage();
    if (!noReply(reply)) {
        SetToTable(reply);
        c_.host.sleep(500);
    }
    setActionsEnabled(true);
    showMessage(QStringLiteral("Read OK"), 2000);
}

void FrmLaserOmron::rowClicked(int r) {
    if (r < 0 || r >= kRows) return;
    const RegisterRow& row = kMap.rows[size_t(r)];
    Grid& grid = gridOf(r);
    grid.setRow(gridRowOf(r));
    grid.setCol(3);
    const int carrier = registerRowOf(kMap, r);
    if (carrier != r) {
        UcBitsField& c = rows(carrier);
        c.WriteByte(qint16((c.ReadByte() & ~row.shown) + (rows(r).ReadByte() & row.shown)));
    }
    if (r >= 2 && r <= 5) {
        const QByteArray image = buildImage();
        txtTC_MAX.setText(QString::number(tcMax(image)));
        txtTC_MIN.setText(QString::number(tcMin(image)));
        txtIWF.setText(QString::number(iwf(image)));
    }
    for (int ch = 0; ch < 4; ++ch)
        for (Current w : kBoth)
            for (int piece : currentRows(ch, w))
                if (piece == r) {
                    const int code = currentCode(buildImage(), ch, w);
                    currentBar(ch, w).setValue(code);
                    currentText(ch, w).setText(QString::number(code));
                }
}

// The code goes to the bytes of its pieces: each piece row and its byte's carrier.
void FrmLaserOmron::codeToRows(int channel, Current which, int code) {
    QByteArray image = buildImage();
    setCurrentCode(image, channel, which, code);
    for (int piece : currentRows(channel, which)) {
        const int byte = kMap.rows[size_t(piece)].reg;
        const qint16 v = qint16(quint8(image[byte]));
        rows(piece).WriteByte(v);
        const int carrier = registerRowOf(kMap, piece);
        if (carrier != piece) rows(carrier).WriteByte(v);
    }
}

void FrmLaserOmron::currentTyped(int channel, Current which) {
    TextBox& text = currentText(channel, which);
    const double n = Val(text.text());
    if (n < 0 || n >= 64) {
        // Rewriting the text runs this again with the limit.
        text.setText(n < 0 ? QStringLiteral("0") : QStringLiteral("63"));
        return;
    }
    const int code = int(n);
    codeToRows(channel, which, code);
    fromText_ = true;
    currentBar(channel, which).setValue(code);
    fromText_ = false;
    text.setSelStart(int(text.text().size()));
}

} // namespace velmorak
