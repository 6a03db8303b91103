#include "registers/FrmAD9888.h"

#include "adjust/TestBars.h"
#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/Transport.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "registers/Ad9888Map.h"

namespace velmorak {

namespace {

const RegisterMap& kMap = kAd9888Map;
const char* const kLayoutKey = "frm9888";

QString number(double v) {
    return QString::number(v, 'g', 15);
}

// The words of cbo15_2, and the text a click shows for each field value.
const QStringList kBandwidths{"75 MHz", "150 MHz", "300 MHz", "500 MHz"};

QStringList controlsOf(const RegisterRow& row) {
    return row.control ? QString::fromLatin1(row.control).split(u',') : QStringList();
}

} // namespace

FrmAD9888::FrmAD9888(AppContext& ctx)
    : Form(QStringLiteral("frmAD9888")), EditorControls(static_cast<Form&>(*this)), c_(ctx) {
    setCaption(QStringLiteral("Velmorak Optimization"));
    move(0, 0, 900, 640);
    setUpControls();
    connectHandlers();
    connectColour();
}

void FrmAD9888::setUpControls() {
    ed_.setUpCommonControls();
    cmdConnect.setCaption(QStringLiteral("C&onnect"));
    txtContrast.setText(QStringLiteral("CNT"));
    txtBrite.setText(QStringLiteral("BRT"));

    setUpSliders({{&HScrlPLL, 4096, 1},
                  {&HScrlPhA, 31, 1},
                  {&HScrlClPl, 255, 1},
                  {&HScrlClDur, 255, 1},
                  {&HScrlHsync, 255, 1},
                  {&HScrlCR, 255, 1},
                  {&HScrlCG, 255, 1},
                  {&HScrlCB, 255, 1},
                  {&HScrlBrR, 255, 2},
                  {&HScrlBrG, 255, 2},
                  {&HScrlBrB, 255, 2},
                  {&HScrlContrast, 255, 1},
                  {&HScrlBritnes, 255, 2},
                  {&HScrl10, 31, 1},
                  {&HScrl11, 255, 1},
                  {&HScrl12, 255, 1},
                  {&HScrl13, 255, 1}});
    // The word boxes of the single-bit rows, as the map names them.
    for (const RegisterRow& row : kMap.rows)
        for (const QString& name : controlsOf(row))
            if (!find(name)) add<TextBox>(name).setLocked(true);
    HScrl12.setValue(50);
    for (int i = 0; i <= 3; ++i)
        cbo03_1.addItem(QString::number(i));
    for (int i = 0; i <= 7; ++i)
        cbo03_2.addItem(QString::number(i));
    for (const QString& b : kBandwidths)
        cbo15_2.addItem(b);
    tmrWait.setInterval(100);
    tmrWait.setEnabled(false);

    ed_.setUpTabs();
    static constexpr EditorMenu menus[] = {
        {"mnuFile", nullptr, "&File", true},
        {"mnuRead", "mnuFile", "&Read", true},
        {"mnuLoad", "mnuFile", "&Load", true},
        {"mnuLRReg", "mnuFile", "Load/Read &Register", true},
        {"mnuClose", "mnuFile", "&Close", true},
        {"mnuPresets", nullptr, "&Presets", false},
        {"mnuATest", nullptr, "Test", false},
        {"mnuSharp", "mnuATest", "S&harp Test Bar", true},
        {"mnuColor", "mnuATest", "&Color TestBar", true},
        {"mnuGray", "mnuATest", "&Gray TestBar", true},
        {"mnuTests", nullptr, "&Tests", true},
        {"mnuTestBars", "mnuTests", "&Test&Bars", true},
    };
    ed_.addMenus(menus);
    for (const RegisterList& p : kAd9888Presets) {
        auto& item = add<MenuItem>(QString::fromLatin1(p.control));
        item.setCaption(QString::fromLatin1(p.caption));
        mnuPresets.addChild(item);
        const QString list = QString::fromLatin1(p.list);
        item.onClick.connect([this, list] { LoadPreset(list); });
    }
}

void FrmAD9888::connectHandlers() {
    ed_.connectCommon([this] { readClick(); }, [this] { loadClick(); },
                      [this](const QByteArray& image) { SetToTable(image); }, kAd9888Columns,
                      QStringLiteral("Change Settings to Database"));
    cmdDefault.onClick.connect([this] { defaultClick(); });
    cmdConnect.onClick.connect([this] { connectClick(); });
    mnuTestBars.onClick.connect([this] { TestBars(c_).toggleSet(mnuTestBars, *this); });
    for (const auto& [item, which] :
         {std::pair{&mnuSharp, TestPicture::Sharp}, std::pair{&mnuColor, TestPicture::Color},
          std::pair{&mnuGray, TestPicture::Gray}})
        item->onClick.connect([this, item, which] { TestBars(c_).menuToggle(which, *item); });
    mnuLRReg.onClick.connect([this] {
        if (c_.forms.isRegistered(QStringLiteral("frmRLReg")))
            c_.forms.show(QStringLiteral("frmRLReg"), true);
    });
    ChkChange.onClick.connect([this] { LoadOnChange = ChkChange.value() == 1; });
    tmrWait.onTick.connect([this] { tmrWait.setEnabled(false); });

    // Sliders whose change and scroll do the same.
    const auto both = onChangeOrScroll;
    both(HScrlPLL, [this] { pllChanged(HScrlPLL.value(), true); });
    txtPLLc.onChange.connect([this] {
        const double v = Val(txtPLLc.text());
        if (v < 4096) pllChanged(ToInt16(v), false);
    });
    both(HScrlPhA, [this] {
        ucBitsField1(5).WriteByte(qint16(HScrlPhA.value() * 8));
        txtPhAdj.setText(number(byteOf(5) / 8));
        writeMember(5);
    });
    both(HScrl10, [this] {
        ucBitsField1(30).WriteByte(qint16(HScrl10.value() * 8 + (byteOf(30) & 7)));
        txt10.setText(QString::number(HScrl10.value()));
        writeMember(30);
    });
    struct Plain {
        ScrollBar* bar;
        int member;
    };
    for (const Plain& p : {Plain{&HScrlClPl, 6}, Plain{&HScrlClDur, 7}, Plain{&HScrlHsync, 8},
                           Plain{&HScrl11, 34}, Plain{&HScrl12, 35}, Plain{&HScrl13, 36}}) {
        both(*p.bar, [this, p] {
            ucBitsField1(p.member).WriteByte(qint16(p.bar->value()));
            writeMember(p.member);
        });
    }
    cbo03_1.onChange.connect([this] { list03Changed(cbo03_1, false); });
    cbo03_1.onClick.connect([this] { list03Changed(cbo03_1, true); });
    cbo03_2.onChange.connect([this] { list03Changed(cbo03_2, false); });
    cbo03_2.onClick.connect([this] { list03Changed(cbo03_2, true); });
    cbo15_2.onChange.connect([this] { list15Changed(false); });
    cbo15_2.onClick.connect([this] { list15Changed(true); });
}

// --- load, unload, activation

void FrmAD9888::formLoad() {
    ed_.buildAndConnectRows([this](int i) { ucBitsField1_ClickBit(i); });
    fraT2.setVisible(false);
    fraT3.setVisible(false);
    fraT4.setVisible(false);
    TabStrip1.setSelectedIndex(1);
    BriReady = true;
    ContrReady = true;
    c_.host.pump();
    const bool card = ed_.firstRead([this] {
        const QByteArray a = c_.fn.ReadEE(kDevice, 62);
        const QByteArray b = c_.fn.ReadEE(kDevice, 8);
        LastImage = a.left(24) + b.left(2);
        SetToTable(LastImage);
    });
    if (!card) LastImage = QByteArray(1, '\0');
    ed_.settle(QString::fromLatin1(kLayoutKey));
}

void FrmAD9888::formUnload(bool& cancel) {
    (void)cancel;
    ed_.leave(QString::fromLatin1(kLayoutKey));
    if (c_.st.TestBarsOn) {
        for (const char* f : {"frmTest", "frmTestC", "frmTestG"})
            c_.forms.unload(QString::fromLatin1(f));
        c_.st.TestBarsOn = 0;
    }
}

void FrmAD9888::formActivate() {
    c_.st.ChipBase = kDevice;
}

// --- the chip

void FrmAD9888::readClick() {
    ed_.startRead();
    const QByteArray a = c_.fn.ReadEE(kDevice, 62);
    if (a == QByteArray(1, '\0')) {
        txtMsg.setText(QStringLiteral("Failure"));
    } else {
        txtMsg.setText(QStringLiteral("Read OK"));
        const QByteArray b = c_.fn.ReadEE(kDevice, 8);
        if (b.size() > 1) {
            LastImage = a.left(24) + b.left(2);
            SetToTable(LastImage);
        } else {
            SetToTable(a.left(24));
            txtMsg.setText(QStringLiteral("Failure"));
        }
    }
    ed_.endRead();
}

void FrmAD9888::loadClick() {
    const QByteArray data = ed_.startLoad({&cmdRead, &cmdLoad});
    const QByteArray a = c_.fn.ReadEE(kDevice, 62);
    if (a.mid(1, 14) == data.left(14)) {
        txtMsg.setText(QStringLiteral("OK"));
        ed_.showMessage(2000);
    } else {
        c_.dialogs.messageBox(QStringLiteral("Failure"), MsgButtons::OK, c_.st.AppTitle);
    }
    ed_.endLoad({&cmdRead, &cmdLoad});
}

void FrmAD9888::defaultClick() {
    cmdDefault.setEnabled(false);
    cmdLoad.setEnabled(false);
    cmdRead.setEnabled(false);
    // The text of the list itself is the image: each character one register byte.
    SetToTable(QByteArray(kAd9888Default.list));
    c_.host.sleep(500);
    cmdDefault.setEnabled(true);
    cmdLoad.setEnabled(true);
    cmdRead.setEnabled(true);
}

void FrmAD9888::connectClick() {
    c_.dialogs.messageBox(QStringLiteral("Make sure you have connected the device to PC ! "),
                          MsgButtons::OK, c_.st.AppTitle);
    c_.host.sleep(1000);
    try {
        c_.port.open();
        c_.host.sleep(50);
        qint16 status = 0;
        if (c_.fn.CheckLink(c_.st.LinkMode, status).left(4) == "5DVI") {
            cmdConnect.setCaption(QStringLiteral("Connected"));
            cmdConnect.setEnabled(false);
        }
        c_.port.close();
    } catch (const PortError&) {
        if (c_.port.isOpen()) c_.port.close();
    }
    c_.host.sleep(1);
}

// --- rows and their controls

void FrmAD9888::ucBitsField1_ClickBit(int index) {
    c_.st.ChipBase = kDevice;
    if (index < 0 || index >= int(kMap.rows.size())) return;
    const RegisterRow& row = kMap.rows[index];
    const qint16 v = byteOf(index);
    const QStringList controls = controlsOf(row);
    switch (index) {
    case 1:
    case 2: {
        const int pll = index == 1 ? v * 16 + byteOf(2) / 16 : byteOf(1) * 16 + v / 16;
        txtPLLc.setText(QString::number(pll));
        HScrlPLL.setValue(pll);
        if (index == 1 && LoadOnChange) {
            writeRegister(0x01, QByteArray(1, char(v & 0xFF)));
            // Register 02H goes as the decimal text of its byte.
            writeRegister(0x02, QByteArray::number(byteOf(2)));
            return;
        }
        writeMember(index);
        return;
    }
    case 3:
        cbo03_1.setText(QString::number((v / 64) & 3));
        writeMember(index);
        return;
    case 4:
        cbo03_2.setText(QString::number(v / 8));
        writeMember(index);
        return;
    case 5:
        HScrlPhA.setValue(v / 8);
        txtPhAdj.setText(QString::number(v / 8));
        writeMember(index);
        return;
    case 9:
    case 10:
    case 11:
    case 12:
    case 13:
    case 14: {
        const bool gain = index <= 11;
        if (gain) {
            CheckContr();
            ContrResync = true;
        } else {
            CheckBri();
            BriResync = true;
        }
        control<ScrollBar>(controls.value(0)).setValue(v);
        writeMember(index);
        return;
    }
    case 30:
        HScrl10.setValue(v / 8);
        txt10.setText(QString::number(HScrl10.value()));
        writeMember(index);
        return;
    case 50:
        textByCode_ = true;
        cbo15_2.setText(v == 0 ? QStringLiteral(" ") + kBandwidths[0]
                               : kBandwidths.value((v / 2) & 3));
        textByCode_ = false;
        mergeIntoRegister(index, v);
        return;
    default:
        break;
    }
    // The rest by their records: words, sliders, merges.
    const bool chipDriven = row.edit == 0 && row.status != 0;
    if (row.word1 && !controls.isEmpty()) {
        const int bit = row.kind == RegisterRow::Register ? 0x80 : row.shown;
        control<TextBox>(controls[0])
            .setText(QString::fromLatin1((v & bit) ? row.word1 : row.word0));
    } else if (!controls.isEmpty() && controls[0].startsWith(QLatin1String("HScrl"))) {
        control<ScrollBar>(controls[0]).setValue(v);
    }
    if (chipDriven || row.reg == 0x00 || row.reg > 0x17) return;
    if (row.kind == RegisterRow::Field)
        mergeIntoRegister(index, v);
    else
        writeMember(index);
}

void FrmAD9888::SetToTable(const QByteArray& image) {
    const bool saved = LoadOnChange;
    LoadOnChange = false;
    try {
        const ImageSpread spread = spreadImage(ucBitsField1, kMap, image);
        // Bytes 9 to 14 are the channel values, taken with the spread: a short image that
        // stops later still leaves them matching their rows.
        qint16* channels[] = {&GainRed,   &GainGreen,   &GainBlue,
                              &OffsetRed, &OffsetGreen, &OffsetBlue};
        for (int pos = 9; pos <= 14 && pos <= spread.taken; ++pos) {
            const int b = static_cast<unsigned char>(image[pos - 1]);
            *channels[pos - 9] = qint16(pos >= 12 ? b & 254 : b);
        }
        if (!spread.complete) return; // a short image: the trap leaves here
        for (int i = 1; i <= 53; ++i)
            ucBitsField1_ClickBit(i);
        ContrOld = ContrMin;
        BriOld = BriMin;
        HScrlContrast.setValue(ContrMin);
        HScrlBritnes.setValue(BriMin);
        LoadOnChange = saved;
        txtChSum.setText(QString::number(spread.sum));
    } catch (const std::exception&) {
        // The trap: what was done stays, the rest is skipped.
    }
}

void FrmAD9888::LoadPreset(const QString& list) {
    const bool saved = LoadOnChange;
    LoadOnChange = false;
    qint16* fields[] = {&GainRed, &GainGreen, &GainBlue, &OffsetRed, &OffsetGreen, &OffsetBlue};
    spreadList(ucBitsField1, kMap, list, [&](int member) {
        if (member >= 9 && member <= 14) *fields[member - 9] = byteOf(member);
        ucBitsField1_ClickBit(member);
    });
    LoadOnChange = saved;
    if (saved) loadClick();
}

void FrmAD9888::pllChanged(int s, bool write) {
    if (write) txtPLLc.setText(QString::number(s));
    if (s >= 4096) return;
    const int m = s / 16;
    ucBitsField1(1).WriteByte(qint16(m));
    ucBitsField1(2).WriteByte(qint16((s - m * 16) * 16));
    if (write && LoadOnChange) {
        writeRegister(0x01, QByteArray(1, char(byteOf(1) & 0xFF)));
        writeRegister(0x02, QByteArray(1, char(byteOf(2) & 0xFF)));
    }
}

void FrmAD9888::list03Changed(ComboBox& list, bool click) {
    const int value = ToInt16(Val(list.text()));
    if (&list == &cbo03_1) {
        ucBitsField1(3).WriteByte(ToInt16(value * 64.0 + (byteOf(3) & 56)));
    } else {
        ucBitsField1(4).WriteByte(ToInt16(value * 8.0));
        ucBitsField1(3).WriteByte(qint16((byteOf(3) & 192) + byteOf(4)));
    }
    if (click) writeMember(3);
}

void FrmAD9888::list15Changed(bool click) {
    const int index = cbo15_2.listIndex();
    if (index >= 0) {
        ucBitsField1(50).WriteByte(qint16(index * 2));
        ucBitsField1(45).WriteByte(qint16((byteOf(45) & 249) + byteOf(50)));
    } else if (!click && !textByCode_) {
        // A typed text is put back to the item of the field.
        cbo15_2.setText(cbo15_2.list((byteOf(50) / 2) & 3));
    }
    if (click) writeMember(45);
}

} // namespace velmorak
