#pragma once

#include <QObject>
#include <QPoint>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <map>
#include <optional>

class QWidget;

namespace velmorak {

class Forms;

// Drives the windows from a script, as a user would, for end-to-end runs and demonstrations.
// One step a line ('#' starts a comment):
//   wait <window>.<control> <visible> <enabled> <text>   until a control shows this
//   key <window> <keys>                                 e.g. "key frmStart Ctrl+Shift+E"
//   dialog <text>                                       type into the open dialog, accept it
//   click <window>.<control>                            a mouse click on its widget; a menu pick
//   type <window>.<control> <text>                      keys typed into a text box or list
//   slide <window>.<control> <value>                    a scroll bar set as assistive tech does
//   tab <window>.<control> <caption>                    a click on the tab of that caption
//   answer <button text>                                press a button of the open message box
//   close <window>                                      close a window as its title bar does
//   quit                                                end the program
// Steps act on the widgets (mouse and key events, accessibility), never on the models, so they
// cross the binding as a user does; a hidden or disabled widget is waited for. More verbs can
// be added. Steps run one after the other, never while `busy` says an exchange is under way
// (but for the message box or input box that exchange opened); a step that cannot be done within
// the time-out ends the program with code 3.
class UiScript : public QObject {
  public:
    // A verb's action: its arguments; true when done (false: try again on the next tick).
    using Action = std::function<bool(const QStringList& args)>;

    UiScript(Forms& forms, QStringList steps, std::function<bool()> busy);
    static QStringList readFile(const QString& path);

    void addVerb(const QString& verb, Action action) { verbs_[verb] = std::move(action); }
    // The widget or menu action bound to "<window>.<control>" when a user could use it now
    // (shown and enabled); null otherwise.
    QObject* usable(const QString& path) const;
    // A left click at a point of a widget (its middle by default), queued so that a modal
    // window it opens does not block the script.
    void clickAt(QWidget* w, std::optional<QPoint> at = std::nullopt);
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
