// The port picker: which COM number reaches which device, binding one, and the list following
// devices as they come and go.
#include "SessionBench.h"
#include "link/PortNames.h"
#include "session/FrmPorts.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {
const SerialDevice kAdapter{"/dev/ttyUSB0", "FTDI USB Serial", "0403", "6001", "A10K3X"};
const SerialDevice kSecond{"/dev/ttyUSB1", "USB Serial", "1a86", "7523", ""};
const SerialDevice kModem{"/dev/ttyACM0", "Modem", "2341", "0043", "7"};

QStringList gridRows(const Grid& g) {
    QStringList out;
    for (int r = 1; r < g.rows(); ++r) {
        QStringList cells;
        for (int c = 0; c < g.cols(); ++c)
            cells << g.textMatrix(r, c);
        out << cells.join('|');
    }
    return out;
}
} // namespace

TEST(PortPicker, RowsJoinTheSystemsDevicesAndTheSettingsNames) {
    QTemporaryDir dir;
    QtSettingsStore s(dir.filePath("p.conf"));
    QFile pty(dir.filePath("card"));
    ASSERT_TRUE(pty.open(QIODevice::WriteOnly));
    // COM1 is named elsewhere, so ttyUSB0 is not reached by default; COM2 reaches ttyUSB1 by
    // default; COM5 names the pty; COM6 names a path that is gone; COM7 names ttyACM0.
    s.save("Ports", "COM1", dir.filePath("card"));
    s.save("Ports", "COM5", dir.filePath("card"));
    s.save("Ports", "COM6", "/nonexistent/tty");
    s.save("Ports", "COM7", "/dev/ttyACM0");
    const QList<PortRow> rows = portRows({kAdapter, kSecond, kModem}, s);
    QStringList seen;
    for (const PortRow& r : rows)
        seen << QString("%1 %2 %3%4")
                    .arg(r.com)
                    .arg(r.device.path, r.named ? "named" : "", r.present ? "" : " missing");
    EXPECT_EQ(seen, (QStringList{"0 /dev/ttyUSB0 ", "2 /dev/ttyUSB1 ", "7 /dev/ttyACM0 named",
                                 QString("1 %1 named").arg(dir.filePath("card")),
                                 "6 /nonexistent/tty named missing"}));
}

TEST(PortPicker, BindingWritesTheSettingAndTheMainWindowsPort) {
    SessionBench b({}, QString());
    b.serialDevices = {kAdapter};
    ASSERT_TRUE(b.start());
    b.frm().cmdPorts.click();
    auto& p = b.session->forms.load<FrmPorts>("frmPorts");
    EXPECT_EQ(b.session->forms.isLoaded("frmPorts"), true);
    EXPECT_EQ(gridRows(p.grdPorts),
              QStringList{"COM1|/dev/ttyUSB0|FTDI USB Serial|0403|6001|A10K3X"});
    EXPECT_EQ(p.txtCom.text(), "5");
    EXPECT_EQ(p.txtPath.text(), "/dev/ttyUSB4") << "the port box's number and where it leads";

    p.grdPorts.userClick(1, 2);
    EXPECT_EQ(p.txtPath.text(), "/dev/ttyUSB0");
    EXPECT_EQ(p.txtCom.text(), "1");
    p.txtCom.setText("9");
    p.cmdBind.click();
    EXPECT_EQ(b.settings->get("Ports", "COM9"), "/dev/ttyUSB0");
    EXPECT_EQ(portDeviceName(9, *b.settings), "/dev/ttyUSB0");
    EXPECT_EQ(b.frm().txtCom.text(), "9");
    EXPECT_EQ(p.lblNote.caption(), "COM9 now reaches /dev/ttyUSB0.");
    EXPECT_EQ(gridRows(p.grdPorts).value(0).left(5), "COM1|") << "COM1 reaches it by default";

    // A typed path, and numbers out of range.
    for (const char* bad : {"0", "17", "x"}) {
        p.txtCom.setText(bad);
        p.cmdBind.click();
    }
    EXPECT_EQ(b.link.dialogs.messages(), QStringList(3, "Choose a COM number from 1 to 16."));
    p.txtCom.setText("3");
    p.txtPath.setText("  /tmp/my-card ");
    p.cmdBind.click();
    EXPECT_EQ(b.settings->get("Ports", "COM3"), "/tmp/my-card");
}

TEST(PortPicker, TheListFollowsDevicesPluggedInAndOut) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    b.frm().cmdPorts.click();
    auto& p = b.session->forms.load<FrmPorts>("frmPorts");
    EXPECT_EQ(p.grdPorts.rows(), 1);
    EXPECT_EQ(p.lblNote.caption(), "No serial device is plugged in.");

    b.serialDevices = {kAdapter, kSecond};
    b.link.host.sleep(FrmPorts::kRefreshMs - 10);
    b.session->forms.pollTimers();
    EXPECT_EQ(p.grdPorts.rows(), 1) << "not before the refresh";
    b.link.host.sleep(20);
    b.session->forms.pollTimers();
    EXPECT_EQ(gridRows(p.grdPorts).size(), 2);
    b.serialDevices = {kSecond};
    b.link.host.sleep(FrmPorts::kRefreshMs);
    b.session->forms.pollTimers();
    EXPECT_EQ(gridRows(p.grdPorts), QStringList{"COM2|/dev/ttyUSB1|USB Serial|1a86|7523|"});
}
