#include "SessionBench.h"

#include "support/SimProcess.h"

#include <QFile>

namespace velmorak::test {

SessionBench::SessionBench(const SimLink::Card& card, const QString& storedPort) : link(card) {
    QFile::copy(buildDir() + "/DBDefaults.MDB", dbPath());
    QFile::setPermissions(dbPath(), QFile::ReadOwner | QFile::WriteOwner);
    settings = std::make_unique<QtSettingsStore>(dir.filePath("Velmorak.conf"));
    if (!storedPort.isNull()) settings->save("StartUp", "PORT", storedPort);
    Platform p{link.host, link.port(), link.dialogs,
               *settings, dir.path(),  QRect(0, 0, 1280, 1024),
               1,         0,           0};
    session = std::make_unique<Session>(p);
    main = std::make_unique<Main>(*session);
}

SessionBench::~SessionBench() = default;

bool SessionBench::start() {
    return main->start();
}

void SessionBench::passes(int n) {
    for (int i = 0; i < n; ++i) {
        link.host.sleep(Main::kPollPeriodMs);
        main->pollPass();
    }
}

int SessionBench::sentCount(const QString& hexPrefix) const {
    int n = 0;
    for (const QString& f : link.sent())
        if (f.startsWith(hexPrefix)) ++n;
    return n;
}

} // namespace velmorak::test
