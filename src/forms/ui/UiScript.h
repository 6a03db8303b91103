#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <map>

namespace velmorak {

class Forms;

// Drives the windows from a script, as a user would, for end-to-end runs and demonstrations.
// One step a line ('#' starts a comment):
//   wait <window>.<control> <visible> <enabled> <text>   until a control shows this
//   key <window> <keys>                                 e.g. "key frmStart Ctrl+Shift+E"
//   dialog <text>                                       type into the open dialog, accept it
//   click <window>.<control>                            a user's click on a button or menu
//   answer <button text>                                press a button of the open message box
//   close <window>                                      close a window as its title bar does
//   quit                                                end the program
// More verbs can be added. Steps run one after the other, never while `busy` says an exchange
// is under way; a step that cannot be done within the time-out ends the program with code 3.
class UiScript : public QObject {
  public:
    // A verb's action: its arguments; true when done (false: try again on the next tick).
    using Action = std::function<bool(const QStringList& args)>;

    UiScript(Forms& forms, QStringList steps, std::function<bool()> busy);
    static QStringList readFile(const QString& path);

    void addVerb(const QString& verb, Action action) { verbs_[verb] = std::move(action); }
    void start(int tickMs = 20, int stepTimeoutMs = 20000);
    bool finished() const { return next_ >= steps_.size(); }

  private:
    void tick();
    bool runStep(const QString& line);
    Forms& forms_;
    QStringList steps_;
    std::function<bool()> busy_;
    std::map<QString, Action> verbs_;
    QTimer timer_;
    qsizetype next_ = 0;
    qint64 stepStarted_ = 0;
    int timeoutMs_ = 20000;
    bool running_ = false;
};

} // namespace velmorak
