#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmorak::test {

// The real tool, offscreen, with its own settings pointed at a card link, optionally driven by
// a script of window steps; its controls are read back from its state file.
class AppProcess {
  public:
    // program: the executable to run (default: velmorak of the build folder).
    explicit AppProcess(const QString& cardLink, const QStringList& script = {},
                        const QString& program = {});
    ~AppProcess();
    QString stateFile() const { return home.filePath("state.txt"); }
    QStringList state() const;
    // Waits until the window shows this control line.
    bool waitFor(const QString& line, int ms);
    // Waits for the end; true when it ended by itself with code 0 (no crash, no failed step).
    bool endsCleanly(int ms);

    QTemporaryDir home;
    QProcess proc;
    QElapsedTimer clock;
};

} // namespace velmorak::test
