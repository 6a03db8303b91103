#include "session/FrmPorts.h"

#include "forms/Dialogs.h"
#include "link/PortNames.h"
#include "platform/Settings.h"
#include "session/FrmStart.h"
#include "session/Session.h"

namespace velmorak {

namespace {
const QStringList kHeads = {QStringLiteral("COM"),         QStringLiteral("Device"),
                            QStringLiteral("Description"), QStringLiteral("Vendor"),
                            QStringLiteral("Product"),     QStringLiteral("Serial")};
const int kWidths[] = {50, 170, 220, 60, 60, 130};
} // namespace

FrmPorts::FrmPorts(Session& s, SerialDeviceLister list)
    : Form(QStringLiteral("frmPorts")), s_(s), list_(std::move(list)) {
    setCaption(QStringLiteral("Serial Ports"));
    lblCom.setCaption(QStringLiteral("COM &number:"));
    lblPath.setCaption(QStringLiteral("&Device:"));
    cmdBind.setCaption(QStringLiteral("&Bind"));
    cmdBind.setDefault(true);
    cmdBind.setToolTipText(QStringLiteral("Make this COM number reach this device"));
    cmdClose.setCaption(QStringLiteral("&Close"));
    cmdClose.setCancel(true);
    txtCom.setMaxLength(2);
    grdPorts.setCols(int(kHeads.size()));
    grdPorts.setFixedRows(1);
    grdPorts.setFixedCols(0);
    for (int c = 0; c < int(kHeads.size()); ++c)
        grdPorts.setColWidth(c, kWidths[c]);
    tmrRefresh.setHost(&s.host);
    tmrRefresh.setInterval(kRefreshMs);

    grdPorts.onClick.connect([this] { rowClicked(); });
    cmdBind.onClick.connect([this] { bindClick(); });
    cmdClose.onClick.connect([this] { unload(); });
    tmrRefresh.onTick.connect([this] { refreshTick(); });
}

void FrmPorts::formLoad() {
    seen_ = list_ ? list_() : QList<SerialDevice>();
    fill();
    const int com = s_.frmStart().txtCom.text().trimmed().toInt();
    txtCom.setText(QString::number(com));
    txtPath.setText(portDeviceName(com, s_.settings));
}

void FrmPorts::fill() {
    rows_ = portRows(seen_, s_.settings);
    grdPorts.setRows(int(rows_.size()) + 1);
    for (int c = 0; c < int(kHeads.size()); ++c)
        grdPorts.setTextMatrix(0, c, kHeads[c]);
    for (int r = 0; r < int(rows_.size()); ++r) {
        const PortRow& p = rows_[r];
        const QString description =
            p.present ? p.device.description : p.device.description + QStringLiteral(" (missing)");
        const QString cells[] = {p.com ? QStringLiteral("COM%1").arg(p.com) : QString(),
                                 p.device.path,
                                 description,
                                 p.device.vendorId,
                                 p.device.productId,
                                 p.device.serial};
        for (int c = 0; c < int(kHeads.size()); ++c)
            grdPorts.setTextMatrix(r + 1, c, cells[c]);
    }
    lblNote.setCaption(rows_.isEmpty() ? QStringLiteral("No serial device is plugged in.")
                                       : QString());
}

void FrmPorts::rowClicked() {
    const int r = grdPorts.row() - 1;
    if (r < 0 || r >= rows_.size()) return;
    txtPath.setText(rows_[r].device.path);
    if (rows_[r].com) txtCom.setText(QString::number(rows_[r].com));
}

void FrmPorts::bindClick() {
    bool ok = false;
    const int com = txtCom.text().trimmed().toInt(&ok);
    const QString path = txtPath.text().trimmed();
    if (!ok || com < 1 || com > 16) {
        s_.dialogs.messageBox(QStringLiteral("Choose a COM number from 1 to 16."), MsgButtons::OK,
                              caption());
        return;
    }
    if (path.isEmpty()) {
        s_.dialogs.messageBox(QStringLiteral("Choose a device or type its path."), MsgButtons::OK,
                              caption());
        return;
    }
    s_.settings.save(QStringLiteral("Ports"), QStringLiteral("COM%1").arg(com), path);
    FrmStart& main = s_.frmStart();
    if (main.cmdConnect.enabled()) main.txtCom.setText(QString::number(com));
    fill();
    lblNote.setCaption(QStringLiteral("COM%1 now reaches %2.").arg(com).arg(path));
}

void FrmPorts::refreshTick() {
    QList<SerialDevice> now = list_ ? list_() : QList<SerialDevice>();
    if (now == seen_) return;
    seen_ = std::move(now);
    fill();
}

} // namespace velmorak
