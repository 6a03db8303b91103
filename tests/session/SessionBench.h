#pragma once

#include "platform/Settings.h"
#include "session/FrmStart.h"
#include "session/Main.h"
#include "session/Session.h"
#include "support/SimLink.h"

#include <QTemporaryDir>

#include <memory>

namespace velmorak::test {

// A whole session over the in-process card on the virtual clock, with a copy of the seed
// database and a settings file of its own.
class SessionBench {
  public:
    explicit SessionBench(const SimLink::Card& card = {}, const QString& storedPort = "5");
    ~SessionBench();

    SimLink link;
    QTemporaryDir dir;
    std::unique_ptr<QtSettingsStore> settings;
    std::unique_ptr<Session> session;
    std::unique_ptr<Main> main;
    // What the system lists as serial devices.
    QList<SerialDevice> serialDevices;

    // Runs start-up; false when the start failed.
    bool start();
    // Shows a window, first starting the session (and forgetting the start's frames) when it
    // has not started; throws when the start fails.
    template <class F> F& open(const QString& name) {
        startOnce();
        return dynamic_cast<F&>(session->forms.show(name));
    }
    void startOnce();
    FrmStart& frm() { return session->frmStart(); }
    CardState& st() { return session->st; }
    // Timer passes of the loop, each one poll period apart on the virtual clock.
    void passes(int n);
    // Frames sent to the card that begin with this hex text.
    int sentCount(const QString& hexPrefix) const;
    QString dbPath() const { return dir.filePath("DBDefaults.MDB"); }

  private:
    bool started_ = false;
};

// The main window without a card: connect offered, the port arrows on, the card's fields hidden.
void expectOffline(FrmStart& f);

} // namespace velmorak::test
