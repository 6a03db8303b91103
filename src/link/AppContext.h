#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>

#include <functional>

namespace velmorak {

class Database;
class Dialogs;
class Forms;
class Host;
class ModFunctions;
class Settings;
class Transport;
struct CardState;

// What a window of the tool works with: the shared state, the card link, the dialogs, the
// settings, the other windows and the resolution database.
struct AppContext {
    CardState& st;
    Host& host;
    ModFunctions& fn;
    Transport& port;
    Dialogs& dialogs;
    Settings& settings;
    Forms& forms;
    std::function<Database&()> db;
    // The resolution a parameter block measures (empty when none fits).
    std::function<QString(const QByteArray&)> findRezName;
    QRect screen; // available desktop
};

} // namespace velmorak
