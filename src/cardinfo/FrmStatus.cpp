#include "cardinfo/FrmStatus.h"

#include "cardinfo/CapturePrint.h"
#include "cardinfo/ImCardPinout.h"
#include "cardinfo/StatusRules.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ParamBlock.h"
#include "platform/Host.h"

#include <QFileInfo>

namespace velmorak {

using namespace StatusRules;

namespace {
const char* const kLedCaptions[] = {"Power", "Diagnostics", "Tx Error", "Rx Error", "DVI",
                                    "RGB",   "SHV",         "SOG",      "USB"};
constexpr int kTipInterval = 20000;
} // namespace

FrmStatus::FrmStatus(AppContext& ctx, QString appPath)
    : Form(QStringLiteral("frmStatus")), c_(ctx), appPath_(std::move(appPath)) {
    setCaption(QStringLiteral("Card Status"));
    move(0, 0, 600, 540);
    cmdRefresh.setCaption(QStringLiteral("&Refresh"));
    frLEDs.setCaption(QStringLiteral("LEDs"));
    lblCaptionvver.setCaption(QStringLiteral("F/W Version :"));
    for (int i = 0; i < 9; ++i) {
        lblL1(i).setCaption(QString::fromLatin1(kLedCaptions[i]));
        shpLed(i).setFillColor(i == 0 ? kLightGreen : kGrey);
    }
    imCard.setPicture(picture(QStringLiteral("rgbTxs")));
    picTipSw2.setVisible(false);
    Timer1.setInterval(kTipInterval);
    Timer1.setEnabled(false);
    Timer2.setInterval(2000);
    Timer2.setEnabled(false);
    ucSwitchDig2.resize(210, 54);

    struct Menu {
        MenuItem* item;
        MenuItem* parent;
        const char* caption;
    };
    const Menu menus[] = {
        {&mnuFile, nullptr, "&File"},
        {&mnuPrintStatusDigCard, &mnuFile, "&Print"},
        {&mnuCloseDigStatus, &mnuFile, "E&xit"},
        {&mnuSetupOneChannel, nullptr, "SetupOneChan"},
        {&mnuActiveOneCh, &mnuSetupOneChannel, "&Activate"},
        {&mnuInactivOneCh, &mnuSetupOneChannel, "&Inactivate"},
        {&mnuSourceAddOneCh, &mnuSetupOneChannel, "&Source Address"},
    };
    for (const Menu& m : menus) {
        m.item->setCaption(QString::fromLatin1(m.caption));
        if (m.parent) m.parent->addChild(*m.item);
    }
    mnuSetupOneChannel.setVisible(false);

    cmdRefresh.onClick.connect([this] { refreshClick(); });
    ucSwitchDig2.onClick.connect([this] { tipShown(); });
    picTipSw2.onClick.connect([this] { tipHidden(); });
    Timer1.onTick.connect([this] { tipHidden(); });
    imCard.onClick.connect([this] { showPinout(); });
    mnuPrintStatusDigCard.onClick.connect([this] { printWindowCapture(c_.dialogs, *this); });
    mnuCloseDigStatus.onClick.connect([this] { unload(); });
}

QString FrmStatus::picture(const QString& name) const {
    return cardPicture(appPath_, name);
}

int FrmStatus::byteAt(int pos) const {
    // A short block reads as zero bytes beyond its end.
    return std::max(ParamBlock::at(c_.st.CardParams, pos), 0);
}

void FrmStatus::readBlock() {
    c_.st.CardParams = c_.fn.ReadParams(24);
    // The word is signed: a high byte of 128 or more overflows, as everywhere else.
    if (byteAt(21) >= 128) throw OverflowError();
    CardTypeWord = qint16(byteAt(21) * 256 + byteAt(22));
}

void FrmStatus::showKind() {
    const bool rx = ParamBlock::isReceiver(CardTypeWord);
    picTipSw2.setPicture(picture(rx ? QStringLiteral("swch10r") : QStringLiteral("swch10t")));
    lblName.setCaption(rx ? QStringLiteral("Receiver") : QStringLiteral("Transmitter"));
}

void FrmStatus::showSwitchesAndTexts() {
    const int s9 = byteAt(9);
    const int s10 = byteAt(10);
    SwitchValue(0, s9, s10);
    lblDescr.setCaption((s9 & 0x80) ? QStringLiteral(" RGB ") : QStringLiteral(" DVI "));
    lblOpticType.setCaption((s9 & 0x04) ? QStringLiteral(" 1 fiber ")
                                        : QStringLiteral(" 2 fiber "));
    lblOpticType.setCaption(lblOpticType.caption() +
                            ((s9 & 0x40) ? QStringLiteral(" SHV ") : QStringLiteral(" SOG ")));
}

void FrmStatus::SwitchValue(int unused, int status9, int status10) {
    (void)unused;
    for (int k = 0; k < 10; ++k)
        ucSwitchDig2.SetValue(qint16(k), switchState(k, status9, status10));
}

void FrmStatus::showLeds(bool setVisibility) {
    const int s10 = byteAt(10);
    const int s11 = byteAt(11);
    const bool rx = ParamBlock::isReceiver(CardTypeWord);
    shpLed(1).setFillColor(diagnosticsColour(s10));
    // LED 2 (Tx) has no meaning on a one-fibre Receiver, LED 3 (Rx) none on a Transmitter.
    struct ErrorLed {
        int index, lowBit;
        bool hidden;
    };
    for (const ErrorLed& e : {ErrorLed{2, 2, OneFiber && rx}, ErrorLed{3, 0, OneFiber && !rx}}) {
        if (setVisibility) {
            shpLed(e.index).setVisible(!e.hidden);
            lblL1(e.index).setVisible(!e.hidden);
        }
        shpLed(e.index).setFillColor(e.hidden ? kGrey : errorColour(s10, e.lowBit));
    }
    for (int i = 4; i <= 7; ++i)
        shpLed(i).setFillColor(activeLowColour(s11, 11 - i));
    shpLed(8).setFillColor(kGreen);
}

void FrmStatus::showValues() {
    grPar.setTextMatrix(0, 1, temperatureText(byteAt(1)));
    grPar.setTextMatrix(1, 1, voltageText(byteAt(3), 60));
    grPar.setTextMatrix(2, 1, voltageText(byteAt(4), 40));
    grPar.setTextMatrix(3, 1, voltageText(byteAt(5), 60));
}

void FrmStatus::formLoad() {
    readBlock();
    OneFiber = byteAt(9) & 4;
    showKind();
    if (OneFiber)
        imCard.setPicture(picture(ParamBlock::isReceiver(CardTypeWord) ? QStringLiteral("RRGB1s")
                                                                       : QStringLiteral("TRGB1s")));
    showSwitchesAndTexts();
    showLeds(true);

    grPar.setFixedRows(0);
    grPar.setRows(4);
    grPar.setCols(2);
    grPar.setColWidth(0, 1200 / 15);
    grPar.setColWidth(1, 1000 / 15);
    grPar.setRowHeight(300 / 15);
    const char* const labels[] = {"Temperature \u00B0C", " + 3.3 V", " + 5.0 V", " + 3.3 V A"};
    for (int r = 0; r < 4; ++r)
        grPar.setTextMatrix(r, 0, QString::fromUtf8(labels[r]));
    showValues();

    lblFWVersion.setCaption(FirmwareVer(qint16(byteAt(23)), qint16(byteAt(24))));
    c_.st.StatusOpen = true;
}

void FrmStatus::formUnload(bool& cancel) {
    (void)cancel;
    c_.st.StatusOpen = false;
}

void FrmStatus::Show_Status() {
    readBlock();
    OneFiber = byteAt(9) & 4;
    showKind();
    showSwitchesAndTexts();
    showLeds(false);
    showValues();
}

void FrmStatus::refreshClick() {
    cmdRefresh.setEnabled(false);
    Show_Status();
    c_.host.sleep(100);
    cmdRefresh.setEnabled(true);
}

void FrmStatus::tipShown() {
    picTipSw2.setVisible(true);
    Timer1.setEnabled(true);
}

void FrmStatus::tipHidden() {
    Timer1.setEnabled(false);
    picTipSw2.setVisible(false);
}

void FrmStatus::showPinout() {
    const bool rx = ParamBlock::isReceiver(CardTypeWord);
    const QString file = picture(OneFiber ? (rx ? QStringLiteral("RRGB1") : QStringLiteral("TRGB1"))
                                          : QStringLiteral("rgbTx"));
    if (!QFileInfo::exists(file)) return;
    auto& pinout = c_.forms.load<ImCardPinout>(QStringLiteral("imCardPinout"));
    pinout.picPinout.setPicture(file);
    c_.forms.show(QStringLiteral("imCardPinout"));
}

} // namespace velmorak
