#include "SessionBench.h"

#include "support/SimProcess.h"

#include <QFile>
#include <gtest/gtest.h>
#include <stdexcept>

namespace velmorak::test {

SessionBench::SessionBench(const SimLink::Card& card, const QString& storedPort) : link(card) {
    QFile::copy(buildDir() + "/DBDefaults.MDB", dbPath());
    QFile::setPermissions(dbPath(), QFile::ReadOwner | QFile::WriteOwner);
    settings = std::make_unique<QtSettingsStore>(dir.filePath("Velmorak.conf"));
    if (!storedPort.isNull()) settings->save("StartUp", "PORT", storedPort);
    Platform p{link.host, link.port(), link.dialogs,
               *settings, dir.path(),  QRect(0, 0, 1280, 1024),
               1,         0,           0};
    p.listPorts = [this] { return serialDevices; };
    session = std::make_unique<Session>(p);
    main = std::make_unique<Main>(*session);
}

SessionBench::~SessionBench() = default;

bool SessionBench::start() {
    started_ = main->start();
    return started_;
}

void SessionBench::startOnce() {
    if (started_) return;
    if (!start()) throw std::runtime_error("the start failed");
    link.clearTrace();
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

void expectOffline(FrmStart& f) {
    EXPECT_EQ(f.cmdConnect.caption(), "C&onnect");
    EXPECT_TRUE(f.cmdConnect.enabled());
    EXPECT_FALSE(f.cmdDisconnect.enabled());
    EXPECT_TRUE(f.SpinButton1.enabled());
    EXPECT_FALSE(f.txtNameCard.visible() || f.txtFwv.visible() || f.lblFwv.visible());
}

} // namespace velmorak::test
