#include "support/SimProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace velmorak::test {

QString buildDir() {
    const QByteArray env = qgetenv("VELMORAK_BUILD_DIR");
    if (!env.isEmpty()) return QString::fromLocal8Bit(env);
    // Test executables live in <build>/tests.
    return QFileInfo(QCoreApplication::applicationDirPath() + "/..").canonicalFilePath();
}

SimProcess::SimProcess(const QStringList& args) {
    QStringList all = args;
    all << "--link" << link() << "--trace" << traceFile();
    proc_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    proc_.start(buildDir() + "/velmorak-cardsim", all);
    if (!proc_.waitForStarted(5000)) return;
    QDeadlineTimer deadline(5000);
    while (!deadline.hasExpired()) {
        if (QFileInfo::exists(link()) && proc_.canReadLine()) {
            started_ = true;
            return;
        }
        proc_.waitForReadyRead(50);
    }
}

SimProcess::~SimProcess() {
    stop();
}

void SimProcess::stop() {
    if (proc_.state() == QProcess::NotRunning) return;
    proc_.terminate();
    if (!proc_.waitForFinished(3000)) {
        proc_.kill();
        proc_.waitForFinished(3000);
    }
}

QString SimProcess::command(const QString& line, int ms) {
    proc_.readAll(); // what the card printed before
    proc_.write((line + "\n").toLocal8Bit());
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        if (proc_.canReadLine()) return QString::fromLocal8Bit(proc_.readLine()).trimmed();
        proc_.waitForReadyRead(50);
    }
    return {};
}

QStringList SimProcess::trace() const {
    QFile f(traceFile());
    if (!f.open(QIODevice::ReadOnly)) return {};
    QStringList lines;
    for (const QByteArray& l : f.readAll().split('\n'))
        if (!l.trimmed().isEmpty()) lines << QString::fromLatin1(l.trimmed());
    return lines;
}

} // namespace velmorak::test
