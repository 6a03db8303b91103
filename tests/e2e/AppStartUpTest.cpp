// The real tool against the virtual card on a pseudo-terminal, in real time.
#include "support/SimProcess.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

#include <cstdio>

using velmorak::test::buildDir;
using velmorak::test::SimProcess;

namespace {

class App {
  public:
    explicit App(const QString& cardLink) {
        QSettings conf(home.filePath("config/Velmorak/Velmorak.conf"), QSettings::IniFormat);
        conf.setValue("StartUp/PORT", "5");
        conf.setValue("Ports/COM5", cardLink);
        conf.sync();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("XDG_CONFIG_HOME", home.filePath("config"));
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("VELMORAK_STATE_FILE", stateFile());
        proc.setProcessEnvironment(env);
        proc.setProcessChannelMode(QProcess::ForwardedChannels);
        clock.start();
        proc.start(buildDir() + "/velmorak", {});
        proc.waitForStarted(5000);
    }
    ~App() {
        if (proc.state() == QProcess::NotRunning) return;
        proc.kill();
        proc.waitForFinished(3000);
    }
    QString stateFile() const { return home.filePath("state.txt"); }
    QStringList state() const {
        QFile f(stateFile());
        if (!f.open(QIODevice::ReadOnly)) return {};
        return QString::fromUtf8(f.readAll()).split('\n');
    }
    // Waits until the window shows this control line.
    bool waitFor(const QString& line, int ms) {
        QDeadlineTimer deadline(ms);
        while (!deadline.hasExpired()) {
            if (state().contains(line)) return true;
            if (proc.state() == QProcess::NotRunning) return false;
            QThread::msleep(20);
        }
        return false;
    }
    QTemporaryDir home;
    QProcess proc;
    QElapsedTimer clock;
};

QStringList framesToCard(const QStringList& trace) {
    QStringList out;
    for (const QString& l : trace) {
        const int at = l.indexOf(" > ");
        if (at >= 0) out << l.mid(at + 3);
    }
    return out;
}

} // namespace

TEST(AppStartUp, ComesUpConnectedAndFallsBackWhenTheCardGoes) {
    SimProcess sim({"--transmitter", "--rgb", "--firmware", "2.3"});
    ASSERT_TRUE(sim.started());
    App app(sim.link());
    ASSERT_TRUE(app.waitFor("cmdConnect\t1\t0\tConnected", 20000))
        << app.state().join('\n').toStdString();
    std::printf("start to connected window: %lld ms\n",
                static_cast<long long>(app.clock.elapsed()));
    const QStringList shown = app.state();
    EXPECT_TRUE(shown.contains("txtNameCard\t1\t1\tTransmitter"));
    EXPECT_TRUE(shown.contains("txtFwv\t1\t1\t 2.3"));
    EXPECT_TRUE(shown.contains("cmdDisconnect\t1\t1\t&Disconnect"));
    EXPECT_TRUE(shown.contains("txtCom\t1\t1\t 5"));
    const QStringList frames = framesToCard(sim.trace());
    ASSERT_GE(frames.size(), 2);
    EXPECT_EQ(frames[0], "35 55 53 42");
    EXPECT_EQ(frames[1], "50 41 52 52 00 00");

    // The card goes: the idle probe notices within about fifteen seconds.
    sim.stop();
    EXPECT_TRUE(app.waitFor("cmdConnect\t1\t1\tC&onnect", 25000))
        << app.state().join('\n').toStdString();
    EXPECT_TRUE(app.state().contains("txtNameCard\t0\t1\tTransmitter"));
    EXPECT_FALSE(app.proc.waitForFinished(200)); // still running
}
