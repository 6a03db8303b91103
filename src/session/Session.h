#pragma once

#include "forms/Forms.h"
#include "link/AppContext.h"
#include "link/CardState.h"
#include "link/LinkReactions.h"
#include "link/ModFunctions.h"
#include "link/SerialDevices.h"

#include <QRect>
#include <QString>

#include <memory>

namespace velmorak {

class Database;
class Dialogs;
class FrmStart;
class Host;
class Settings;
class Transport;

// The platform a session runs on: real parts in the tool, doubles in tests.
struct Platform {
    Host& host;
    Transport& port;
    Dialogs& dialogs;
    Settings& settings;
    QString appPath; // folder of the resolution database
    QRect screen;    // available desktop, for saved window positions
    int versionMajor = 1;
    int versionMinor = 0;
    int versionRevision = 0;
    SerialDeviceLister listPorts = {}; // the serial devices the system sees (none: settings only)
};

// What every window of one run shares: the public state, the card link, the open windows and
// the database. It is also where a failed exchange turns into window changes.
class Session : public LinkReactions {
  public:
    explicit Session(const Platform& p);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    CardState st;
    Host& host;
    Transport& port;
    Dialogs& dialogs;
    Settings& settings;
    const Platform platform;
    Forms forms;
    ModFunctions fn;
    std::unique_ptr<Database> DbRez;
    AppContext context;

    // The open database; throws "closed" when a failed import left none.
    Database& db();

    // The main window, loaded on first use.
    FrmStart& frmStart();

    // The resolution a parameter block measures, by the main window's lists (empty: none).
    QString findRezName(const QByteArray& block);

    // The lost-card settings of the main window (every other window unloaded first), with the
    // editor menus disabled as well when asked.
    void lostCardSettings(bool disableEditors);
    // Shows why the last probe or exchange failed beside the main window's buttons (cleared
    // when it found the card); `lost` adds that the card was lost, and when.
    void showLinkReason(bool lost = false);
    // The error handler of the start and the loop: port closed, nothing shown, lost card.
    void mainErrorHandler();

    // LinkReactions
    void unloadAll() override;
    void unloadOthers() override;
    void lostCard(bool disableEditors) override;
};

} // namespace velmorak
