#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmorak::test {

// The virtual card executable on a pseudo-terminal, for end-to-end tests.
class SimProcess {
  public:
    explicit SimProcess(const QStringList& args = {});
    ~SimProcess();
    bool started() const { return started_; }
    QString link() const { return dir_.filePath("card"); }
    QString traceFile() const { return dir_.filePath("trace.txt"); }
    QStringList trace() const;
    // A line typed on the console of a card started with "--console", and the card's answer.
    QString command(const QString& line, int ms = 3000);
    void stop();
    QString dir() const { return dir_.path(); }

  private:
    QTemporaryDir dir_;
    QProcess proc_;
    bool started_ = false;
};

// The build folder holding both executables.
QString buildDir();

} // namespace velmorak::test
