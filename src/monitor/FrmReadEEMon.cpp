#include "monitor/FrmReadEEMon.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "monitor/EdidPrintout.h"
#include "monitor/MonitorWrite.h"
#include "platform/Host.h"

#include <QFile>
#include <QFileInfo>

namespace velmorak {

namespace {

QString hex(int v) {
    return QString::number(v, 16).toUpper();
}

} // namespace

FrmReadEEMon::FrmReadEEMon(AppContext& ctx, QString appPath)
    : Form(QStringLiteral("frmReadEEMon")), c_(ctx), appPath_(std::move(appPath)) {
    setCaption(QStringLiteral("Read Monitor Info"));
    move(0, 0, 960, 480);
    lblCS.setCaption(QStringLiteral("Control Sum"));
    lblDecoded.setCaption(QStringLiteral("Decoded:"));
    cmdDefault.setCaption(QStringLiteral("Load Default EDID for &DVI"));
    cmdDefaultR.setCaption(QStringLiteral("Load Default EDID for R&GB"));
    cmdTransmit.setCaption(QStringLiteral("Send to &Transmitter through Fiber"));
    cmdClose.setCaption(QStringLiteral("&Close"));
    cmdClose.setCancel(true);
    txtMsg.setVisible(false);
    txtMsg.setLocked(true);
    mnuFile.setCaption(QStringLiteral("&File"));
    mnuSave.setCaption(QStringLiteral("&Save"));
    mnuPrint.setCaption(QStringLiteral("&Print"));
    mnuRefresh.setCaption(QStringLiteral("&Refresh"));
    mnuExit.setCaption(QStringLiteral("E&xit"));
    for (MenuItem* m : {&mnuSave, &mnuPrint, &mnuRefresh, &mnuExit})
        mnuFile.addChild(*m);

    cmdDefault.onClick.connect([this] { defaultClick(DefaultEdid::Dvi); });
    cmdDefaultR.onClick.connect([this] { defaultClick(DefaultEdid::Rgb); });
    cmdTransmit.onClick.connect([this] { transmitClick(); });
    cmdClose.onClick.connect([this] { unload(); });
    mnuExit.onClick.connect([this] { unload(); });
    mnuRefresh.onClick.connect([this] { refreshClick(); });
    mnuSave.onClick.connect([this] { saveClick(); });
    mnuPrint.onClick.connect([this] { printClick(); });
}

bool FrmReadEEMon::isReceiver() const {
    return (c_.st.CardWord & 1) != 0;
}

void FrmReadEEMon::formLoad() {
    grTable.setCols(17);
    grTable.setRows(9);
    grTable.setFixedRows(1);
    grTable.setFixedCols(1);
    grTable.setTextMatrix(0, 0, QStringLiteral("Address"));
    grTable.setColWidth(0, 64);
    for (int c = 1; c <= 16; ++c) {
        grTable.setTextMatrix(0, c, hex2(c - 1));
        grTable.setColWidth(c, 30);
    }
    readEdid();
    if (!isLoaded()) return;
    const bool connected = c_.st.Connected != 0;
    cmdDefault.setVisible(connected && !isReceiver());
    cmdDefaultR.setVisible(connected && !isReceiver());
    cmdTransmit.setVisible(connected && isReceiver());
    mnuRefresh.setEnabled(connected);
}

// Six reads of a block at the offsets of the slices; false when the window went with the card.
bool FrmReadEEMon::readBlock(int base) {
    for (int k = 0; k < kSlicesPerBlock; ++k) {
        const MonitorSlice& s = kMonitorSlices[base / 128 * kSlicesPerBlock + k];
        const QByteArray reply = c_.fn.ReadEE(kDevice, qint16(s.start));
        if (!isLoaded()) return false;
        EdidText += reply.left(s.length);
    }
    return true;
}

void FrmReadEEMon::readEdid() {
    EdidText.clear();
    if (!readBlock(0)) return;
    // A short reply leaves no extension count: one block.
    const bool extension = EdidText.size() >= 127 && EdidText[126] != '\0';
    grTable.setRows(extension ? 17 : 9);
    if (extension && !readBlock(128)) return;
    showTable();
    showDecoded();
}

// The cells from the bytes read; the control sum shows the last byte placed, as stored.
void FrmReadEEMon::showTable() {
    const int limit = grTable.rows() == 17 ? 256 : 128;
    for (int r = 1; r < grTable.rows(); ++r) {
        grTable.setTextMatrix(r, 0, hex((r - 1) * 16));
        for (int c = 1; c <= 16; ++c)
            grTable.setTextMatrix(r, c, QString());
    }
    int last = -1;
    for (int r = 1; r < grTable.rows(); ++r) {
        for (int c = 1; c <= 16; ++c) {
            const int pos = (r - 1) * 16 + c;
            if (pos > limit || pos > EdidText.size()) break;
            last = quint8(EdidText[pos - 1]);
            grTable.setTextMatrix(r, c, hex2(last));
        }
        waitProgress(c_.forms, r);
    }
    lblRCS.setCaption(last < 0 ? QString() : hex(last));
}

void FrmReadEEMon::showDecoded() {
    lstDecoded.clear();
    if (EdidText.size() < 128)
        lstDecoded.addItem(QStringLiteral("Incomplete: %1 bytes read").arg(EdidText.size()));
    for (const QString& line : describeEdid(decodeEdid(EdidText)))
        lstDecoded.addItem(line);
}

void FrmReadEEMon::refreshClick() {
    if (!c_.st.Connected) {
        c_.dialogs.messageBox(QStringLiteral("No connection"), MsgButtons::OK, c_.st.AppTitle);
        return;
    }
    mnuRefresh.setEnabled(false);
    QByteArray status = "OK";
    if (isReceiver()) {
        QByteArray command = "CMDRRMON";
        status = c_.fn.SendRead(command).left(2);
        if (!isLoaded()) return;
    }
    if (status == "OK") {
        readEdid();
        if (!isLoaded()) return;
        c_.dialogs.messageBox(QStringLiteral("Info is refreshed"), MsgButtons::OK, c_.st.AppTitle);
    } else if (status == "NO") {
        c_.dialogs.messageBox(QStringLiteral("Couldn't read info"), MsgButtons::OK, c_.st.AppTitle);
    } else {
        c_.dialogs.messageBox(QStringLiteral("No any Data"), MsgButtons::OK, c_.st.AppTitle);
    }
    mnuRefresh.setEnabled(true);
}

void FrmReadEEMon::defaultClick(DefaultEdid which) {
    const QString kind = which == DefaultEdid::Dvi ? QStringLiteral("DVI") : QStringLiteral("RGB");
    cmdDefault.setEnabled(false);
    cmdDefaultR.setEnabled(false);
    const QString& title = c_.st.AppTitle;
    if (!c_.st.Connected) {
        c_.dialogs.messageBox(QStringLiteral("No Connection"), MsgButtons::OK, title);
    } else if (c_.dialogs.messageBox(
                   QStringLiteral("You are sure to load DEFAULT Monitor(") + kind +
                       QStringLiteral(") Parameters to the Card?") + QStringLiteral("\n\r") +
                       QStringLiteral(" Current Monitor Parameters will be "
                                      "OVERWRITTEN "),
                   MsgButtons::OKCancel, title, MsgIcon::Exclamation) == MsgResult::OK &&
               c_.dialogs.messageBox(
                   QStringLiteral("You are about to load DEFAULT Monitor Parameters to the Card"),
                   MsgButtons::OKCancel, title) == MsgResult::OK) {
        c_.host.sleep(1);
        showWait(c_.forms);
        waitProgress(c_.forms, 1, 7);
        c_.st.ChipBase = 0;
        txtMsg.setText(QStringLiteral("Loading. Wait a minute..."));
        txtMsg.setVisible(true);
        c_.host.pump();
        const bool done = writeMonitorSlices(
            c_, defaultEdid(which), kSlicesPerBlock, [this](int k) { waitProgress(c_.forms, k); },
            [this](int) { return isLoaded(); });
        if (!done) return;
        txtMsg.setVisible(false);
        closeWait(c_.forms);
        c_.dialogs.messageBox(QStringLiteral("Default Monitor Parameters are loaded to the Card."),
                              MsgButtons::OK, title);
        readEdid();
        if (!isLoaded()) return;
    }
    cmdDefault.setEnabled(true);
    cmdDefaultR.setEnabled(true);
}

void FrmReadEEMon::transmitClick() {
    cmdTransmit.setEnabled(false);
    QByteArray command = "CMDRTMIN";
    c_.fn.SendRead(command);
    cmdTransmit.setEnabled(true);
}

void FrmReadEEMon::saveClick() {
    const QString& title = c_.st.AppTitle;
    for (;;) {
        std::optional<QString> picked =
            c_.dialogs.saveFileName(QStringLiteral("Save Monitor Info "),
                                    QStringLiteral("Monitor data (*.bin);;All files (*)"),
                                    appPath_ + QStringLiteral("/Monitor.bin"));
        if (!picked || picked->isEmpty()) return;
        QString name = *picked;
        if (QFileInfo(name).suffix().isEmpty()) name += QStringLiteral(".bin");
        if (QFileInfo::exists(name)) {
            if (c_.dialogs.messageBox(
                    name +
                        QStringLiteral("This file is already exist. Do you want to rewrite it? "),
                    MsgButtons::YesNo, title) != MsgResult::Yes)
                continue;
        } else if (c_.dialogs.messageBox(QStringLiteral("You are about to save the Info to file ") +
                                             name,
                                         MsgButtons::OKCancel, title) != MsgResult::OK) {
            return;
        }
        // Written whole into a new file first, so a failed write leaves the old one as it was.
        const QString temp = name + QStringLiteral(".part");
        QFile f(temp);
        const bool written = f.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                             f.write(EdidText) == EdidText.size() && f.flush();
        f.close();
        if (!written || (QFile::exists(name) && !QFile::remove(name)) || !f.rename(name)) {
            QFile::remove(temp);
            c_.dialogs.messageBox(QStringLiteral("Couldn't save the file ") + name +
                                      QStringLiteral(" : ") + f.errorString(),
                                  MsgButtons::OK, title);
            return;
        }
        c_.dialogs.messageBox(QStringLiteral("The EDID is Saved to file ") + name, MsgButtons::OK,
                              title);
        return;
    }
}

void FrmReadEEMon::printClick() {
    if (!c_.dialogs.printerDialog()) return;
    try {
        if (!printReport) throw PrintFailure(482, QStringLiteral("No printer"));
        printReport(rawEdidPrintout(EdidText));
    } catch (const PrintFailure& e) {
        if (e.number == 482)
            c_.dialogs.messageBox(QStringLiteral("Printer is unabled"), MsgButtons::OK,
                                  c_.st.AppTitle);
        else
            c_.dialogs.messageBox(QStringLiteral("Error number ") + QString::number(e.number) +
                                      QStringLiteral(" occurred ") + QString::fromUtf8(e.what()),
                                  MsgButtons::OK, c_.st.AppTitle);
    }
}

} // namespace velmorak
