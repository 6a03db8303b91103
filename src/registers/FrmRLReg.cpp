#include "registers/FrmRLReg.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/Placement.h"
#include "platform/Host.h"
#include "registers/FrmAD9888.h"

namespace velmorak {

FrmRLReg::FrmRLReg(AppContext& ctx) : Form(QStringLiteral("frmRLReg")), c_(ctx) {
    setCaption(QStringLiteral("Load / Read Register"));
    move(0, 0, 430, 190);
    lblRegAddr.setCaption(QStringLiteral("Register Address:"));
    lblValue.setCaption(QStringLiteral("Value:"));
    lblH.setCaption(QStringLiteral("H"));
    lblDevAddr.setCaption(QStringLiteral(" Device Address:"));
    ChkChange.setCaption(QStringLiteral("Load Register On Change"));
    cmdRead.setCaption(QStringLiteral("&Read"));
    cmdLoad.setCaption(QStringLiteral("&Load"));
    cmdClose.setCaption(QStringLiteral("&Close"));
    cmdClose.setCancel(true);
    txtDevAddr.setText(QString::number(kDevice));
    txtDevAddr.setLocked(true);
    txtMsg.setVisible(false);
    txtMsg.setLocked(true);
    HScrlR.setMin(0);
    HScrlR.setMax(255);
    HScrlR.setLargeChange(16);
    cboRAddr.setStyle(ComboBox::Style::DropdownList);
    for (int r = 0x01; r <= 0x13; ++r)
        cboRAddr.addItem(QStringLiteral("%1").arg(r, 2, 16, QLatin1Char('0')).toUpper());
    for (const char* r : {"15", "16", "17"})
        cboRAddr.addItem(QString::fromLatin1(r));

    cboRAddr.onChange.connect([this] { registerSelected(false); });
    cboRAddr.onClick.connect([this] { registerSelected(true); });
    HScrlR.onChange.connect([this] { sliderMoved(); });
    HScrlR.onScroll.connect([this] { sliderMoved(); });
    ucBitsFieldR.onClickBit.connect([this] {
        if (LoadOnChange) sendByte(ucBitsFieldR.ReadByte());
    });
    ChkChange.onClick.connect([this] { LoadOnChange = ChkChange.value() == 1; });
    cmdRead.onClick.connect([this] { readClick(); });
    cmdLoad.onClick.connect([this] { loadClick(); });
    cmdClose.onClick.connect([this] { unload(); });
}

void FrmRLReg::formLoad() {
    for (qint16 i = 0; i < 8; ++i) {
        ucBitsFieldR.setBitIndex(i);
        ucBitsFieldR.setBitVisible(true);
        ucBitsFieldR.setBitEnable(true);
    }
    ucBitsFieldR.setBitIndex(0);
    ChkChange.setValue(0);
    LoadOnChange = false;
    cboRAddr.setListIndex(0);
    // Nothing writes this key; a position put there by hand is honoured.
    placeFromLayout(*this, c_.settings, c_.screen, name());
}

int FrmRLReg::selectedRegister() const {
    return cboRAddr.text().toInt(nullptr, 16);
}

int FrmRLReg::memberOf(int r) {
    if (r >= 1 && r <= 3) return r;
    if (r >= 4 && r <= 14) return r + 1;
    if (r == 15) return 23;
    if (r == 16) return 30;
    // The next two rows sit one above the rows of their registers; kept as they are.
    if (r >= 17 && r <= 19) return r + 16;
    if (r == 21) return 44;
    return -1;
}

qint16 FrmRLReg::Check_value(int r) {
    int mask = 0;
    switch (r) {
    case 2:
        mask = 240;
        break;
    case 3:
    case 4:
        mask = 248;
        break;
    case 11:
    case 12:
    case 13:
    case 15:
    case 16:
        mask = 254;
        break;
    default:
        return ucBitsFieldR.ReadByte();
    }
    const qint16 v = qint16(ucBitsFieldR.ReadByte() & mask);
    ucBitsFieldR.WriteByte(v);
    return v;
}

FrmAD9888* FrmRLReg::panel() const {
    return c_.forms.get<FrmAD9888>(QStringLiteral("frmAD9888"));
}

void FrmRLReg::registerSelected(bool click) {
    const int member = memberOf(selectedRegister());
    FrmAD9888* f = panel();
    if (member >= 0 && f) {
        ucBitsFieldR.WriteByte(f->byteOf(member));
        HScrlR.setValue(ucBitsFieldR.ReadByte());
    }
    if (click && LoadOnChange) sendByte(ucBitsFieldR.ReadByte());
}

void FrmRLReg::sliderMoved() {
    ucBitsFieldR.WriteByte(qint16(HScrlR.value()));
    if (LoadOnChange) sendByte(qint16(HScrlR.value()));
}

void FrmRLReg::sendByte(qint16 v) {
    c_.st.ChipBase = kDevice;
    c_.fn.WriteEE(kDevice, qint16(selectedRegister()), QByteArray(1, char(v & 0xFF)));
}

void FrmRLReg::mirror(qint16 v) {
    const int member = memberOf(selectedRegister());
    FrmAD9888* f = panel();
    if (member >= 0 && f) f->ucBitsField1(member).WriteByte(v);
}

void FrmRLReg::showOk() {
    txtMsg.setText(QStringLiteral("OK"));
    txtMsg.setVisible(true);
    c_.host.pump();
    c_.host.sleep(2000);
    txtMsg.setVisible(false);
}

void FrmRLReg::readClick() {
    const int r = selectedRegister();
    c_.st.ChipBase = kDevice;
    const QByteArray reply = c_.fn.ReadEEByte(kDevice, qint16(r));
    // A failed exchange has closed the windows already.
    if (!isLoaded() || reply.isEmpty()) return;
    const qint16 v = qint16(static_cast<unsigned char>(reply[0]));
    mirror(v);
    ucBitsFieldR.WriteByte(v);
    HScrlR.setValue(v);
    showOk();
}

void FrmRLReg::loadClick() {
    if (c_.dialogs.messageBox(QStringLiteral("Are you sure to load info to the Chip?"),
                              MsgButtons::YesNo, c_.st.AppTitle) != MsgResult::Yes)
        return;
    const int r = selectedRegister();
    const char sent = char(Check_value(r) & 0xFF);
    c_.st.ChipBase = kDevice;
    c_.fn.WriteEE(kDevice, qint16(r), QByteArray(1, sent));
    if (!isLoaded()) return;
    const QByteArray back = c_.fn.ReadEEByte(kDevice, qint16(r));
    if (!isLoaded()) return;
    if (back.isEmpty() || back[0] != sent)
        c_.dialogs.messageBox(QStringLiteral("Failure"), MsgButtons::OK, c_.st.AppTitle);
    else
        showOk();
    // What was sent stays in the flat panel window even when the chip disagrees.
    mirror(ucBitsFieldR.ReadByte());
    if (FrmAD9888* f = panel()) {
        for (int i = 1; i <= 50; ++i) {
            try {
                f->ucBitsField1_ClickBit(i);
            } catch (const RunTimeError&) {
                // A value a control cannot show leaves that row's controls as they were.
            }
        }
    }
}

} // namespace velmorak
