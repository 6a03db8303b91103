#include "support/AppProcess.h"

#include "support/SimProcess.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QSettings>
#include <QThread>

namespace velmorak::test {

AppProcess::AppProcess(const QString& cardLink, const QStringList& script, const QString& program) {
    QSettings conf(home.filePath("config/Velmorak/Velmorak.conf"), QSettings::IniFormat);
    conf.setValue("StartUp/PORT", "5");
    conf.setValue("Ports/COM5", cardLink);
    conf.sync();
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("XDG_CONFIG_HOME", home.filePath("config"));
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("VELMORAK_STATE_FILE", stateFile());
    if (!script.isEmpty()) {
        QFile f(home.filePath("script.txt"));
        f.open(QIODevice::WriteOnly);
        f.write(script.join('\n').toUtf8());
        env.insert("VELMORAK_SCRIPT", f.fileName());
    }
    proc.setProcessEnvironment(env);
    proc.setProcessChannelMode(QProcess::ForwardedChannels);
    clock.start();
    proc.start(program.isEmpty() ? buildDir() + "/velmorak" : program, {});
    proc.waitForStarted(5000);
}

AppProcess::~AppProcess() {
    if (proc.state() == QProcess::NotRunning) return;
    proc.kill();
    proc.waitForFinished(3000);
}

QStringList AppProcess::state() const {
    QFile f(stateFile());
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(f.readAll()).split('\n');
}

bool AppProcess::waitFor(const QString& line, int ms) {
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        if (state().contains(line)) return true;
        if (proc.state() == QProcess::NotRunning) return false;
        QThread::msleep(20);
    }
    return false;
}

bool AppProcess::endsCleanly(int ms) {
    if (!proc.waitForFinished(ms)) return false;
    return proc.exitStatus() == QProcess::NormalExit && proc.exitCode() == 0;
}

} // namespace velmorak::test
