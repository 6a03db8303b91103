#include "link/PortNames.h"
#include "platform/Host.h"
#include "platform/Settings.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmorak;

TEST(VirtualHost, RunsScheduledWorkInTimeOrderDuringSleepsAndPumps) {
    VirtualHost h;
    QStringList seen;
    h.schedule(30, [&] { seen << QString("b@%1").arg(h.now()); });
    h.schedule(10, [&] {
        seen << QString("a@%1").arg(h.now());
        h.schedule(h.now() + 5, [&] { seen << QString("a2@%1").arg(h.now()); });
    });
    h.sleep(25);
    EXPECT_EQ(seen, (QStringList{"a@10", "a2@15"}));
    EXPECT_EQ(h.now(), 25);
    for (int i = 0; i < 5; ++i)
        h.pump();
    EXPECT_EQ(seen, (QStringList{"a@10", "a2@15", "b@30"}));
    EXPECT_EQ(h.now(), 30);
    EXPECT_EQ(h.pumpCount(), 5);
    h.sleep(-3);
    EXPECT_EQ(h.now(), 30);
}

TEST(RealHost, SleepTakesWallTime) {
    RealHost h;
    const qint64 t0 = h.now();
    h.sleep(30);
    EXPECT_GE(h.now() - t0, 29);
}

TEST(Settings, SectionAndKeyLandInTheUsersIniFile) {
    // The test runner points XDG_CONFIG_HOME at a scratch folder.
    QtSettingsStore s;
    s.save("StartUp", "PORT", "7");
    s.save("frmStart", "Layout", "120,80");
    EXPECT_TRUE(s.fileName().endsWith("Velmorak/Velmorak.conf")) << s.fileName().toStdString();
    EXPECT_TRUE(s.fileName().startsWith(QString::fromLocal8Bit(qgetenv("XDG_CONFIG_HOME"))));
    QtSettingsStore again;
    EXPECT_EQ(again.get("StartUp", "PORT"), "7");
    EXPECT_EQ(again.get("frmStart", "Layout"), "120,80");
    EXPECT_EQ(again.get("StartUp", "Missing", "dflt"), "dflt");
    QFile f(s.fileName());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QByteArray text = f.readAll();
    EXPECT_TRUE(text.contains("[StartUp]")) << text.constData();
    EXPECT_TRUE(text.contains("PORT=7")) << text.constData();
}

TEST(PortNames, NumberToDevice) {
    QTemporaryDir dir;
    QtSettingsStore s(dir.filePath("p.conf"));
    s.save("Ports", "COM5", "/tmp/virtual-card");
    struct Row {
        int n;
        QString device;
    };
#if defined(Q_OS_WIN)
    const Row rows[] = {{5, "COM5"}, {1, "COM1"}};
#elif defined(Q_OS_MACOS)
    const Row rows[] = {{5, "/tmp/virtual-card"}, {1, "/dev/cu.usbserial-1"}};
#else
    const Row rows[] = {{5, "/tmp/virtual-card"}, {1, "/dev/ttyUSB0"}, {16, "/dev/ttyUSB15"}};
#endif
    for (const Row& r : rows)
        EXPECT_EQ(portDeviceName(r.n, s), r.device) << r.n;
}
