// The tool: real clock, serial port, dialogs and settings around the session.
#include "session/Main.h"
#include "adjust/ui/AdjustViews.h"
#include "adjust/ui/StepperView.h"
#include "adjust/ui/TestViews.h"
#include "cardinfo/CapturePrint.h"
#include "cardinfo/ui/CardInfoViews.h"
#include "cardinfo/ui/PrintWindow.h"
#include "forms/Boundary.h"
#include "forms/Snapshot.h"
#include "forms/ui/FormWindow.h"
#include "forms/ui/FrmWaitView.h"
#include "forms/ui/GuardedApplication.h"
#include "forms/ui/PaintProbe.h"
#include "forms/ui/QtDialogs.h"
#include "forms/ui/UiScript.h"
#include "laser/ui/LaserViews.h"
#include "link/SerialDevices.h"
#include "link/SerialTransport.h"
#include "monitor/ui/FrmReadEEMonView.h"
#include "monitor/ui/FrmReadEEPresetsView.h"
#include "platform/AppFolder.h"
#include "platform/Host.h"
#include "platform/Settings.h"
#include "registers/ui/BitsFieldView.h"
#include "registers/ui/FrmAD9888View.h"
#include "registers/ui/FrmRLRegView.h"
#include "registers/ui/FrmTransmitterView.h"
#include "resdb/Database.h"
#include "resdb/ui/FrmInputBoxView.h"
#include "resdb/ui/FrmSettingsView.h"
#include "session/FrmStart.h"
#include "session/Session.h"
#include "session/ui/FrmGuideView.h"
#include "session/ui/FrmPortsView.h"
#include "session/ui/FrmStartView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSaveFile>
#include <QScreen>
#include <QTimer>

#include <cstdio>
#include <cstring>

using namespace velmorak;

namespace {

const char* const kHelp =
    "usage: velmorak [--help] [--version]\n"
    "Service and configuration tool for the Velmorak fibre-optic video extender cards\n"
    "(Transmitter and Receiver), reached over a USB serial port at 115200 8N1.\n"
    "\n"
    "Settings: $XDG_CONFIG_HOME/Velmorak/Velmorak.conf (default ~/.config/Velmorak/Velmorak.conf)\n"
    "  [StartUp] PORT=n     the COM number of the card's port, used at start-up\n"
    "  [Ports]   COMn=PATH  the device behind COM number n (default /dev/ttyUSB<n-1>)\n"
    "Database: DBDefaults.MDB beside the executable, else a per-user copy in\n"
    "  ~/.local/share/Velmorak/Velmorak, seeded from ../share/velmorak on first run.\n"
    "\n"
    "Environment:\n"
    "  VELMORAK_STATE_FILE  write the controls of every open window to this file as they change\n"
    "  VELMORAK_SCRIPT      a file of steps that drive the windows\n"
    "  VELMORAK_PAINT_LOG   measure the longest gaps between paints into this file\n"
    "\n"
    "No card at hand? velmorak-cardsim is a virtual card on a pseudo-terminal: start it with\n"
    "--link /tmp/card and set COM5=/tmp/card under [Ports] (see velmorak-cardsim --help).\n";

// --help and --version answer before any window system is needed; -1 means go on.
int commandLine(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (!std::strcmp(argv[i], "--help") || !std::strcmp(argv[i], "-h")) {
            std::fputs(kHelp, stdout);
            return 0;
        }
        if (!std::strcmp(argv[i], "--version") || !std::strcmp(argv[i], "-v")) {
            std::puts("velmorak " VELMORAK_VERSION);
            return 0;
        }
    }
    return -1;
}

// With VELMORAK_STATE_FILE set, the controls of every open window are written there whenever
// they change, for scripted checks from outside the process.
class StateFile {
  public:
    StateFile(Session& s) : s_(s), path_(qEnvironmentVariable("VELMORAK_STATE_FILE")) {}
    void update() {
        if (path_.isEmpty()) return;
        const QString text = formsSnapshot(s_.forms).join(u'\n') + u'\n';
        if (text == last_) return;
        QSaveFile f(path_);
        if (!f.open(QIODevice::WriteOnly)) return;
        f.write(text.toUtf8());
        if (f.commit()) last_ = text;
    }

  private:
    Session& s_;
    QString path_;
    QString last_;
};

} // namespace

int main(int argc, char** argv) {
    if (const int rc = commandLine(argc, argv); rc >= 0) return rc;
    GuardedApplication app(argc, argv);
    // Windows unloaded by a handler as the program ended go before the application does.
    struct ReleaseViews {
        ~ReleaseViews() { FormWindow::releasePending(); }
    } releaseViews;
    QApplication::setOrganizationName(QStringLiteral("Velmorak"));
    QApplication::setApplicationName(QStringLiteral("Velmorak"));
    QApplication::setApplicationVersion(QStringLiteral(VELMORAK_VERSION));

    RealHost host;
    QtSettingsStore settings;
    SerialTransport port(settings);
    QtDialogs dialogs;
    app.setReporter([&dialogs](const QString& what) {
        dialogs.messageBox(QStringLiteral("This action stopped on an error: ") + what,
                           MsgButtons::OK, QStringLiteral("Velmorak"), MsgIcon::Critical);
    });
    QRect screen(0, 0, 1024, 768);
    if (QScreen* s = QGuiApplication::primaryScreen()) screen = s->availableGeometry();
    Platform platform{host,
                      port,
                      dialogs,
                      settings,
                      applicationFolder(QString::fromLatin1(kDbFileName)),
                      screen,
                      VELMORAK_VERSION_MAJOR,
                      VELMORAK_VERSION_MINOR,
                      VELMORAK_VERSION_PATCH,
                      systemSerialDevices};
    Session session(platform);
    ViewRegistry views;
    views.add(QStringLiteral("frmStart"), buildFrmStartView);
    views.add(QStringLiteral("frmInputBox"), buildFrmInputBoxView);
    views.add(QStringLiteral("frmAD9888"), buildFrmAD9888View);
    views.add(QStringLiteral("frmRLReg"), buildFrmRLRegView);
    views.add(QStringLiteral("frmPorts"), buildFrmPortsView);
    views.add(QStringLiteral("frmGuide"), buildFrmGuideView);
    views.add(QStringLiteral("frmSettings"), buildFrmSettingsView);
    views.add(QStringLiteral("frmTransmitter"), buildFrmTransmitterView);
    views.add(QStringLiteral("frmLaser"), buildFrmLaserView);
    views.add(QStringLiteral("frmLaserOmron"), buildFrmLaserOmronView);
    views.add(QStringLiteral("frmWait"), buildFrmWaitView);
    views.add(QStringLiteral("frmReadEEPresets"), buildFrmReadEEPresetsView);
    views.add(QStringLiteral("frmStatus"), buildFrmStatusView);
    views.add(QStringLiteral("imCardPinout"), buildImCardPinoutView);
    views.add(QStringLiteral("frmMem_card"), buildFrmMemCardView);
    views.add(QStringLiteral("frmConsole"), buildFrmConsoleView);
    views.add(QStringLiteral("frmTest"), buildFrmTestView);
    views.add(QStringLiteral("frmTestC"), buildFrmTestBarsView);
    views.add(QStringLiteral("frmTestG"), buildFrmTestBarsView);
    setWindowPrinter(formWindowPrinter([&dialogs] { return dialogs.printer(); }));
    views.add(QStringLiteral("frmReadEEMon"),
              [&dialogs](Form& f) { return buildFrmReadEEMonView(f, dialogs.printer()); });
    views.install(session.forms);

    Main loop(session);
    if (!loop.start()) return 1;
    if (auto* view = dynamic_cast<FormWindow*>(session.frmStart().view()))
        dialogs.setParent(view->window());

    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, guarded([&] {
        loop.pollPass();
        if (loop.finished()) app.quit();
    }));
    poll.start(Main::kPollPeriodMs);
    StateFile state(session);
    state.update();
    QTimer timers;
    QObject::connect(&timers, &QTimer::timeout, guarded([&] {
        session.forms.pollTimers();
        state.update();
    }));
    timers.start(10);

    // VELMORAK_PAINT_LOG: the longest gap between paints for each stretch the script marks.
    std::unique_ptr<PaintProbe> probe;
    if (qEnvironmentVariableIsSet("VELMORAK_PAINT_LOG"))
        probe = std::make_unique<PaintProbe>(qEnvironmentVariable("VELMORAK_PAINT_LOG"));

    // VELMORAK_SCRIPT: a file of steps that drive the windows (see UiScript).
    std::unique_ptr<UiScript> script;
    if (qEnvironmentVariableIsSet("VELMORAK_SCRIPT")) {
        script = std::make_unique<UiScript>(
            session.forms, UiScript::readFile(qEnvironmentVariable("VELMORAK_SCRIPT")),
            [&session] { return session.fn.busy(); });
        // bit <window>.<row>(<i>) <bit>: a click on one cell of a bit row.
        script->addVerb(QStringLiteral("bit"), [s = script.get()](const QStringList& a) {
            auto* row = qobject_cast<BitsFieldView*>(a.size() < 2 ? nullptr : s->usable(a[0]));
            const int bit = a.size() < 2 ? -1 : a[1].toInt();
            QWidget* cell = row && bit >= 0 && bit < 8 ? row->cell(bit) : nullptr;
            if (!cell || !cell->isEnabled()) return false;
            s->clickAt(cell);
            return true;
        });
        // arrow <window>.<stepper> left|right: a click on one arrow of a stepper.
        script->addVerb(QStringLiteral("arrow"), [s = script.get()](const QStringList& a) {
            auto* step = qobject_cast<StepperView*>(a.size() < 2 ? nullptr : s->usable(a[0]));
            if (!step || !step->isEnabled()) return false;
            const QRect r =
                a[1] == QLatin1String("left") ? step->leftArrowRect() : step->rightArrowRect();
            s->clickAt(step, r.center());
            return true;
        });
        // mark <name>: a new stretch of the paint probe. idle <ms>: the script rests.
        script->addVerb(QStringLiteral("mark"), [&probe](const QStringList& a) {
            if (probe) probe->mark(a.value(0));
            return true;
        });
        script->addVerb(QStringLiteral("idle"),
                        [since = QElapsedTimer()](const QStringList& a) mutable {
                            if (!since.isValid()) since.start();
                            if (since.elapsed() < a.value(0).toInt()) return false;
                            since.invalidate();
                            return true;
                        });
        script->start();
    }

    if (!loop.finished()) app.exec();
    loop.end();
    return 0;
}
