#include "registers/FrmTransmitter.h"

#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "platform/Host.h"

namespace velmorak {

namespace {

const RegisterMap& kMap = kTransmitterMap;
const char* const kLayoutKey = "frmTransmitter";

// The words of the MSEL field, by its value; other values have none.
const QStringList kMselWords{"Disabled. MSEN output high", "Outputs the MDI bit (interrupt)",
                             "Outputs the RSEN bit (receiver detect)",
                             "Outputs the HTPLG bit (hot plug detect)"};

// An identity of two registers, high byte first.
QString identity(int high, int low) {
    return QString::number(high, 16).toUpper() + QString::number(low, 16).toUpper() +
           QStringLiteral(" h  ");
}

} // namespace

FrmTransmitter::FrmTransmitter(AppContext& ctx)
    : Form(QStringLiteral("frmTransmitter")), EditorControls(static_cast<Form&>(*this)), c_(ctx) {
    setCaption(QStringLiteral("PanelLink Transmitter"));
    move(0, 0, 900, 640);
    setUpControls();
    connectHandlers();
}

void FrmTransmitter::setUpControls() {
    ed_.setUpCommonControls();
    setUpSliders({{&HScrl0A_1, 7, 1},
                  {&HScrl0A_2, 7, 1},
                  {&HScrl32, 511, 1},
                  {&HScrl34, 255, 1},
                  {&HScrl36, 2047, 1},
                  {&HScrl38, 2047, 1}});
    for (TextBox* t : {&txt1, &txt3, &txt0A_1, &txt0A_2, &txt33, &txt37, &txt39, &txt3B, &txt3D})
        t->setLocked(true);
    for (const QString& w : kMselWords)
        cbo09.addItem(w);
    ed_.setUpTabs();
    static constexpr EditorMenu menus[] = {
        {"mnuFile", nullptr, "&File", true},
        {"mnuRead", "mnuFile", "&Read", true},
        {"mnuLoad", "mnuFile", "&Load", true},
        {"mnuClose", "mnuFile", "&Close", true},
    };
    ed_.addMenus(menus);
}

void FrmTransmitter::connectHandlers() {
    ed_.connectCommon([this] { readClick(); }, [this] { loadClick(); },
                      [this](const QByteArray& image) { SetToTable(image); }, kTransmitterColumns,
                      QStringLiteral("Add Settings to Database"));
    cmdDefault.onClick.connect([this] { defaultClick(); });
    ChkChange.onClick.connect([this] { changeClick(); });

    onChangeOrScroll(HScrl0A_1, [this] {
        const int s = HScrl0A_1.value();
        ucBitsField1(21).WriteByte(qint16(s * 32 + (byteOf(21) & 31)));
        txt0A_1.setText(QString::number(s));
        ed_.writeMember(21);
    });
    onChangeOrScroll(HScrl0A_2, [this] {
        const int s = HScrl0A_2.value();
        ucBitsField1(23).WriteByte(qint16(s * 2));
        ucBitsField1(21).WriteByte(qint16((byteOf(21) & 241) + s * 2));
        txt0A_2.setText(QString::number(s));
        ed_.writeMember(21);
    });
    onChangeOrScroll(HScrl32, [this] {
        const int s = HScrl32.value();
        ucBitsField1(28).WriteByte(qint16(s >= 256 ? s - 256 : s));
        ucBitsField1(29).WriteByte(s >= 256 ? 1 : 0);
        ucBitsField1(32).WriteByte(qint16((byteOf(32) & 254) + byteOf(29)));
        txt33.setText(QString::number(s));
        ed_.writeMember(28);
        ed_.writeMember(32);
    });
    onChangeOrScroll(HScrl34, [this] {
        ucBitsField1(33).WriteByte(qint16(HScrl34.value()));
        ed_.writeMember(33);
    });
    onChangeOrScroll(HScrl36, [this] { splitCount(HScrl36, txt37, 35, 36); });
    onChangeOrScroll(HScrl38, [this] { splitCount(HScrl38, txt39, 37, 38); });
    cbo09.onChange.connect([this] { msel(false); });
    cbo09.onClick.connect([this] { msel(true); });
}

void FrmTransmitter::splitCount(ScrollBar& bar, TextBox& text, int low, int high) {
    const int s = bar.value();
    ucBitsField1(low).WriteByte(qint16(s % 256));
    ucBitsField1(high).WriteByte(qint16(s / 256));
    text.setText(QString::number(s));
    ed_.writeMember(low);
    ed_.writeMember(high);
}

void FrmTransmitter::msel(bool click) {
    const int index = cbo09.listIndex();
    if (index >= 0) {
        ucBitsField1(16).WriteByte(qint16(index * 16));
        ucBitsField1(15).WriteByte(qint16((byteOf(15) & 143) + byteOf(16)));
    }
    if (click) ed_.writeMember(15);
}

// --- load, unload, activation

void FrmTransmitter::formLoad() {
    ed_.buildAndConnectRows([this](int i) { ucBitsField1_ClickBit(i); });
    fraT1.setVisible(false);
    fraT2.setVisible(false);
    TabStrip1.setSelectedIndex(1);
    c_.host.pump();
    ed_.firstRead([this] {
        const QByteArray low = c_.fn.ReadEE(kDevice, 3);
        const QByteArray high = c_.fn.ReadEE(kDevice, 8);
        if (low.size() > 1) SetToTable(RegisterEditor::transmitterImage(low, high));
    });
    ed_.settle(QString::fromLatin1(kLayoutKey));
}

void FrmTransmitter::formUnload(bool& cancel) {
    (void)cancel;
    ed_.leave(QString::fromLatin1(kLayoutKey));
}

void FrmTransmitter::formActivate() {
    c_.st.ChipBase = kDevice;
}

// --- the chip

void FrmTransmitter::readClick() {
    ed_.startRead();
    const QByteArray low = c_.fn.ReadEE(kDevice, 3);
    if (low.size() > 1) {
        const QByteArray image = RegisterEditor::transmitterImage(low, c_.fn.ReadEE(kDevice, 8));
        txtMsg.setText(QStringLiteral("Read OK"));
        SetToTable(image);
    } else {
        txtMsg.setText(QStringLiteral("Failure"));
    }
    ed_.endRead();
}

void FrmTransmitter::loadClick() {
    const QByteArray data = ed_.startLoad({&cmdRead, &cmdLoad, &cmdDefault});
    const QByteArray low = c_.fn.ReadEE(kDevice, 3);
    const QByteArray reply = RegisterEditor::transmitterImage(low, c_.fn.ReadEE(kDevice, 8));
    // Bit 7 of 08H and registers 09H, 0AH, 32H to 35H are not compared.
    txtMsg.setText(RegisterEditor::transmitterLoaded(reply, data) ? QStringLiteral("Load OK")
                                                                  : QStringLiteral("Failure"));
    if (low.size() > 1) {
        SetToTable(reply);
        c_.host.sleep(100);
    }
    ed_.showMessage(1500);
    ed_.endLoad({&cmdRead, &cmdDefault, &cmdLoad});
}

void FrmTransmitter::defaultClick() {
    cmdDefault.setEnabled(false);
    cmdLoad.setEnabled(false);
    cmdRead.setEnabled(false);
    const bool saved = LoadOnChange;
    LoadOnChange = false;
    spreadList(ucBitsField1, kMap, QString::fromLatin1(kTransmitterDefault.list),
               [this](int member) { ucBitsField1_ClickBit(member); });
    LoadOnChange = saved;
    if (saved) loadClick();
    c_.host.sleep(200);
    cmdDefault.setEnabled(true);
    cmdLoad.setEnabled(true);
    cmdRead.setEnabled(true);
}

// Ticked, the reserved registers 0CH to 0EH take clicks on bits 1 to 7; cleared, they show
// what the chip holds again.
void FrmTransmitter::changeClick() {
    const bool on = ChkChange.value() == 1;
    LoadOnChange = on;
    cmdLoad.setEnabled(!on);
    for (int m = 25; m <= 27; ++m) {
        UcBitsField& row = ucBitsField1(m);
        for (int bit = 1; bit <= 7; ++bit) {
            row.setBitIndex(qint16(bit));
            row.setBitVisible(true);
            row.setBitEnable(on);
            if (!on) row.setBitRead(true);
        }
    }
}

// --- rows and their controls

void FrmTransmitter::ucBitsField1_ClickBit(int index) {
    c_.st.ChipBase = kDevice;
    if (index < 0 || index >= int(kMap.rows.size())) return;
    const RegisterRow& row = kMap.rows[size_t(index)];
    const qint16 v = byteOf(index);
    switch (index) {
    case 1:
        txt1.setText(identity(byteOf(1), byteOf(0)));
        return;
    case 3:
        txt3.setText(identity(byteOf(3), byteOf(2)));
        return;
    case 16: {
        const int field = (v / 16) & 7;
        const QString word = kMselWords.value(field, QStringLiteral("NA"));
        ed_.setControlCell(index, word);
        cbo09.setText(word);
        ed_.mergeIntoRegister(index, v);
        return;
    }
    case 21:
        HScrl0A_1.setValue((v / 32) & 7);
        txt0A_1.setText(QString::number(HScrl0A_1.value()));
        ed_.writeMember(index);
        return;
    case 23:
        HScrl0A_2.setValue((v / 2) & 7);
        txt0A_2.setText(QString::number(HScrl0A_2.value()));
        ed_.mergeIntoRegister(index, v);
        return;
    case 28:
    case 29: {
        const int s = (byteOf(29) & 1) * 256 + byteOf(28);
        HScrl32.setValue(s);
        txt33.setText(QString::number(s));
        if (index == 28)
            ed_.writeMember(index);
        else
            ed_.mergeIntoRegister(index, v);
        return;
    }
    case 33:
        HScrl34.setValue(v);
        ed_.writeMember(index);
        return;
    case 35:
    case 36:
    case 37:
    case 38: {
        const int low = index <= 36 ? 35 : 37;
        const int s = (byteOf(low + 1) & 7) * 256 + byteOf(low);
        (index <= 36 ? HScrl36 : HScrl38).setValue(s);
        (index <= 36 ? txt37 : txt39).setText(QString::number(s));
        ed_.writeMember(index);
        return;
    }
    case 40:
    case 42:
        (index == 40 ? txt3B : txt3D)
            .setText(QString::number((byteOf(index) & 15) * 256 + byteOf(index - 1)));
        return;
    default:
        break;
    }
    // Single-bit words and the register rows with a word: the value word into the grid, the
    // register to the chip unless the chip alone drives the bit.
    if (!row.word1) return;
    const int bit = row.kind == RegisterRow::Register ? row.edit : row.shown;
    ed_.setControlCell(index, QString::fromLatin1((v & bit) ? row.word1 : row.word0));
    if (row.edit == 0) return;
    if (row.kind == RegisterRow::Field)
        ed_.mergeIntoRegister(index, v);
    else
        ed_.writeMember(index);
}

void FrmTransmitter::SetToTable(const QByteArray& image) {
    const bool saved = LoadOnChange;
    LoadOnChange = false;
    try {
        const ImageSpread spread = spreadImage(ucBitsField1, kMap, image);
        if (!spread.complete) return; // a short image: the trap leaves here
        for (int i = 0; i < int(kMap.rows.size()); ++i)
            ucBitsField1_ClickBit(i);
        LoadOnChange = saved;
        txtChSum.setText(QString::number(spread.sum));
    } catch (const std::exception&) {
        // The trap: what was done stays, the rest is skipped.
    }
}

} // namespace velmorak
