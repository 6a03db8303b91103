#include "session/Session.h"

#include "adjust/FrmConsole.h"
#include "adjust/TestWindows.h"
#include "cardinfo/FrmMemCard.h"
#include "cardinfo/FrmStatus.h"
#include "cardinfo/ImCardPinout.h"
#include "forms/FrmWait.h"
#include "laser/FrmLaser.h"
#include "laser/FrmLaserOmron.h"
#include "link/LinkFailure.h"
#include "link/Transport.h"
#include "monitor/FrmReadEEMon.h"
#include "monitor/FrmReadEEPresets.h"
#include "registers/FrmAD9888.h"
#include "registers/FrmRLReg.h"
#include "registers/FrmTransmitter.h"
#include "resdb/Database.h"
#include "resdb/FrmInputBox.h"
#include "resdb/FrmSettings.h"
#include "resdb/RezLookup.h"
#include "session/FrmGuide.h"
#include "session/FrmPorts.h"
#include "session/FrmStart.h"

#include <QTime>

namespace velmorak {

Session::Session(const Platform& p)
    : host(p.host), port(p.port), dialogs(p.dialogs), settings(p.settings), platform(p),
      forms(&p.host),
      fn(st, p.host, p.port, p.dialogs, *this), context{st,
                                                        p.host,
                                                        fn,
                                                        p.port,
                                                        p.dialogs,
                                                        p.settings,
                                                        forms,
                                                        [this]() -> Database& { return db(); },
                                                        [this](const QByteArray& block) {
                                                            return findRezName(block);
                                                        },
                                                        p.screen} {
    forms.registerForm(QStringLiteral("frmStart"),
                       [this] { return std::make_unique<FrmStart>(*this); });
    forms.registerForm(QStringLiteral("frmAD9888"),
                       [this] { return std::make_unique<FrmAD9888>(context); });
    forms.registerForm(QStringLiteral("frmTransmitter"),
                       [this] { return std::make_unique<FrmTransmitter>(context); });
    forms.registerForm(QStringLiteral("frmRLReg"),
                       [this] { return std::make_unique<FrmRLReg>(context); });
    forms.registerForm(QStringLiteral("frmGuide"), [this] {
        return std::make_unique<FrmGuide>(dialogs, guideFolders(platform.appPath));
    });
    forms.registerForm(QStringLiteral("frmPorts"),
                       [this] { return std::make_unique<FrmPorts>(*this, platform.listPorts); });
    forms.registerForm(QStringLiteral("frmSettings"),
                       [this] { return std::make_unique<FrmSettings>(context); });
    forms.registerForm(QStringLiteral("frmLaser"),
                       [this] { return std::make_unique<FrmLaser>(context); });
    forms.registerForm(QStringLiteral("frmLaserOmron"),
                       [this] { return std::make_unique<FrmLaserOmron>(context); });
    forms.registerForm<FrmWait>(QString::fromLatin1(FrmWait::kName));
    forms.registerForm(QStringLiteral("frmReadEEPresets"),
                       [this] { return std::make_unique<FrmReadEEPresets>(context); });
    forms.registerForm(QStringLiteral("frmStatus"),
                       [this] { return std::make_unique<FrmStatus>(context, platform.appPath); });
    forms.registerForm(QStringLiteral("imCardPinout"),
                       [this] { return std::make_unique<ImCardPinout>(context); });
    forms.registerForm(QStringLiteral("frmMem_card"),
                       [this] { return std::make_unique<FrmMemCard>(context); });
    forms.registerForm(QStringLiteral("frmReadEEMon"), [this] {
        return std::make_unique<FrmReadEEMon>(context, platform.appPath);
    });
    forms.registerForm(QStringLiteral("frmConsole"),
                       [this] { return std::make_unique<FrmConsole>(context, platform.appPath); });
    forms.registerForm(QStringLiteral("frmTest"),
                       [this] { return std::make_unique<FrmTest>(context); });
    for (const auto& [name, caption] :
         {std::pair{"frmTestC", "Test Color"}, std::pair{"frmTestG", "Test Gray"}}) {
        const QString n = QString::fromLatin1(name), t = QString::fromLatin1(caption);
        forms.registerForm(n, [this, n, t] {
            return std::make_unique<FrmTestBars>(context, n, t, platform.appPath);
        });
    }
    forms.registerForm(QStringLiteral("frmInputBox"), [this] {
        return std::make_unique<FrmInputBox>(
            st, fn, db(), [this](const QByteArray& block) { return findRezName(block); });
    });
}

Session::~Session() {
    forms.unloadAll();
    forms.collect();
    if (DbRez) DbRez->Close();
}

Database& Session::db() {
    if (!DbRez)
        throw DbError(DbErr::ObjectClosed, QStringLiteral("The resolution database is not open."));
    return *DbRez;
}

FrmStart& Session::frmStart() {
    return forms.load<FrmStart>(QStringLiteral("frmStart"));
}

QString Session::findRezName(const QByteArray& block) {
    FrmStart& f = frmStart();
    return FindRezName(block, f.lstVBorders.items(), f.lstHBorders.items(), db());
}

void Session::lostCardSettings(bool disableEditors) {
    FrmStart& f = frmStart();
    f.cmdConnect.setEnabled(true);
    f.cmdConnect.setCaption(QStringLiteral("C&onnect"));
    f.cmdDisconnect.setEnabled(false);
    st.Connected = 0;
    f.shp1.setVisible(false);
    f.cmdSync.setEnabled(false);
    f.lblFwv.setVisible(false);
    f.txtFwv.setVisible(false);
    f.txtNameCard.setVisible(false);
    f.SpinButton1.setEnabled(true);
    if (disableEditors)
        for (MenuItem* m : {&f.mnuDisplayAdj, &f.mnuPanel, &f.mnuTransmitter, &f.mnuLaser})
            m->setEnabled(false);
    f.mnuCardMemory.setEnabled(false);
    f.mnuParams.setEnabled(false);
}

void Session::showLinkReason(bool lost) {
    if (!forms.isLoaded(QStringLiteral("frmStart"))) return;
    const LinkFailure& f = fn.lastFailure();
    QString text = describe(f, probeDevice(f.device));
    if (lost)
        text = QStringLiteral("The card was lost at %1. %2")
                   .arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), text)
                   .trimmed();
    frmStart().lblReason.setCaption(text);
}

void Session::mainErrorHandler() {
    if (port.isOpen()) port.close();
    unloadOthers();
    lostCardSettings(true);
}

void Session::unloadAll() {
    forms.unloadAll();
    st.ExitRequested = -1;
}

void Session::unloadOthers() {
    forms.unloadAllBut({QStringLiteral("frmStart"), QStringLiteral("frmConnect")});
}

void Session::lostCard(bool disableEditors) {
    if (!forms.isLoaded(QStringLiteral("frmStart"))) {
        st.Connected = 0;
        return;
    }
    lostCardSettings(disableEditors);
    showLinkReason(true);
}

} // namespace velmorak
