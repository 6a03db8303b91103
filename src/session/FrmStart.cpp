#include "session/FrmStart.h"

#include "adjust/TestBars.h"
#include "forms/Dialogs.h"
#include "link/ParamBlock.h"
#include "link/Transport.h"
#include "link/ValueHelpers.h"
#include "monitor/MonitorFileImport.h"
#include "platform/Settings.h"
#include "resdb/Database.h"
#include "resdb/RezLookup.h"
#include "session/AutoPresets.h"
#include "session/DatabaseFile.h"
#include "session/Session.h"

#include <cmath>

namespace velmorak {

namespace {

const char* const kConnect = "C&onnect";
const char* const kConnected = "Connected";

struct MenuSpec {
    const char* parent; // nullptr: a top menu
    const char* name;
    const char* caption;
    bool visible;
    bool enabled;
};

// The menu tree with its captions and its state when the window loads.
const MenuSpec kMenus[] = {
    {nullptr, "mnuFile", "&File", true, true},
    {"mnuFile", "mnuImport", "&Import Database", false, true},
    {"mnuFile", "mnuExport", "&Export Database", false, true},
    {"mnuFile", "mnuFile2Mem", "Import &Monitor File", true, true},
    {"mnuFile", "mnuExit", "E&xit", true, true},
    {nullptr, "mnuSettings", "&Settings", true, true},
    {"mnuSettings", "mnuDisplayAdj", "&Display Adjustment", true, true},
    {"mnuSettings", "mnuPanel", "Flat &Panel Interface", false, false},
    {"mnuSettings", "mnuTransmitter", " PanelLink &Transmitter", false, false},
    {"mnuSettings", "mnuLaser", " VCSE&L Driver", false, true},
    {"mnuSettings", "mnuReadMonInfo", "&Monitor Info", false, true},
    {nullptr, "mnuView", "&View", true, true},
    {"mnuView", "mnuParams", "Card &Status", true, true},
    {"mnuView", "mnuCardMemory", "Card &Memory", false, false},
    {"mnuView", "mnuTests", "&Test Bars", true, true},
    {nullptr, "mnuPresets", "&Presets", true, true},
    {"mnuPresets", "mnuDatabase", "&List of Presets", true, true},
    {"mnuPresets", "mnuAutoPresets", "Load &Auto Presets", false, false},
    {"mnuPresets", "mnuReadAutopresets", "&Read Autopresets", false, true},
    {"mnuPresets", "mnuDBversion", "Autopresets DB &version", true, true},
    // Our addition beside the system's menus.
    {nullptr, "mnuHelp", "&Help", true, true},
    {"mnuHelp", "mnuGuide", "&User Guide", true, true},
};

} // namespace

FrmStart::FrmStart(Session& s) : Form(QStringLiteral("frmStart")), s_(s) {
    setCaption(s.st.AppTitle);
    move(0, 0, 560, 300);
    lblCaptionCom.setCaption(QStringLiteral("COM port:"));
    lblMassage.setCaption(QStringLiteral("Make sure you have connected the device to PC ! "));
    cmdConnect.setCaption(kConnect);
    cmdDisconnect.setCaption(QStringLiteral("&Disconnect"));
    cmdSync.setCaption(QStringLiteral("Check &Sync"));
    cmdPorts.setCaption(QStringLiteral("Por&ts..."));
    cmdPorts.setToolTipText(QStringLiteral("Which device each COM number reaches"));
    cmdExit.setCaption(QStringLiteral("E&xit"));
    lblFwv.setCaption(QStringLiteral("Firmware Version:"));
    for (TextBox* t : {&txtNameCard, &txtFwv, &txtPar1, &txtH, &txtPar2, &txtMsg})
        t->setLocked(true);
    txtCom.setMaxLength(5);
    shp1.setVisible(false);
    shp1.setFillColor(0x00C000);
    for (Control* c : std::initializer_list<Control*>{&cboPresets, &lstVGroup, &lstVBorders,
                                                      &lstHBorders, &lstHGroup})
        c->setVisible(false);
    for (const char* h : {"480", "600", "720", "768", "864", "960", "1024", "1080", "1200"})
        lstHGroup.addItem(QString::fromLatin1(h));
    buildMenus();
    setKeyPreview(true);

    cmdConnect.onClick.connect([this] { connectClick(); });
    cmdDisconnect.onClick.connect([this] { disconnectClick(); });
    cmdExit.onClick.connect([this] { exitClick(); });
    mnuExit.onClick.connect([this] { exitClick(); });
    cmdSync.onClick.connect([this] { syncClick(); });
    cmdPorts.onClick.connect([this] { showWindow(QStringLiteral("frmPorts")); });
    mnuGuide.onClick.connect([this] { showWindow(QStringLiteral("frmGuide")); });
    txtCom.onKeyPress.connect([this](int& k) { comKeyPress(k); });
    SpinButton1.onSpinUp.connect([this] { spin(+1); });
    SpinButton1.onSpinDown.connect([this] { spin(-1); });
    mnuDatabase.onClick.connect([this] { databaseClick(); });
    mnuExport.onClick.connect([this] { DatabaseFile(s_).exportClick(); });
    mnuImport.onClick.connect([this] { DatabaseFile(s_).importClick(); });
    mnuDisplayAdj.onClick.connect([this] { displayAdjClick(); });
    mnuLaser.onClick.connect([this] { laserClick(); });
    mnuPanel.onClick.connect([this] { editorClick(QStringLiteral("frmAD9888")); });
    mnuTransmitter.onClick.connect([this] { editorClick(QStringLiteral("frmTransmitter")); });
    mnuParams.onClick.connect([this] { showWindow(QStringLiteral("frmStatus")); });
    mnuCardMemory.onClick.connect([this] { showWindow(QStringLiteral("frmMem_card")); });
    mnuReadMonInfo.onClick.connect([this] {
        if (!s_.forms.isRegistered(QStringLiteral("frmReadEEMon"))) return;
        setEnabled(false);
        showWindow(QStringLiteral("frmWait"));
        showWindow(QStringLiteral("frmReadEEMon"));
        s_.forms.unload(QStringLiteral("frmWait"));
        setEnabled(true);
    });
    mnuAutoPresets.onClick.connect([this] { AutoPresets(s_, *this).load(); });
    mnuDBversion.onClick.connect([this] { AutoPresets(s_, *this).showVersion(); });
    mnuReadAutopresets.onClick.connect([this] { AutoPresets(s_, *this).readMemory(); });
    mnuFile2Mem.onClick.connect([this] { importMonitorFile(s_.context, txtMsg); });
    mnuTests.onClick.connect([this] { TestBars(s_.context).toggleSet(mnuTests, *this); });
}

void FrmStart::buildMenus() {
    for (const MenuSpec& m : kMenus) {
        auto& item = control<MenuItem>(QString::fromLatin1(m.name));
        item.setCaption(QString::fromLatin1(m.caption));
        item.setVisible(m.visible);
        item.setEnabled(m.enabled);
        if (m.parent) control<MenuItem>(QString::fromLatin1(m.parent)).addChild(item);
    }
}

// --- load and unload

void FrmStart::formLoad() {
    const QString path = s_.platform.appPath + QStringLiteral("/") + kDbFileName;
    s_.DbRez = Database::OpenDatabase(path, QString::fromLatin1(kDbConnect));
    for (const QString& name : ListRezNames(*s_.DbRez))
        cboPresets.addItem(name);
    StatusBar1.setPanelText(1, versionText());
    setCaption(s_.st.AppTitle + QStringLiteral(" Software Version ") +
               QString::number(s_.platform.versionMajor) + QStringLiteral(".") +
               QString::number(s_.platform.versionMinor) + QStringLiteral(" "));
    loadLists();
}

// The saved position is tried against the window as drawn, so once it has its view.
void FrmStart::formActivate() {
    if (layoutApplied_) return;
    layoutApplied_ = true;
    applyLayout();
}

QString FrmStart::versionText() const {
    const Platform& p = s_.platform;
    QString t = QString::number(p.versionMajor) + QStringLiteral(".") +
                QStringLiteral("%1").arg(p.versionMinor, 2, 10, QLatin1Char('0'));
    if (p.versionRevision > 0) t += QStringLiteral(".") + QString::number(p.versionRevision);
    return t;
}

void FrmStart::loadLists() {
    const RezClassLists lists = FillRezClassLists(*s_.DbRez);
    for (const QString& v : lists.lstVGroup)
        lstVGroup.addItem(v);
    for (const QString& v : lists.lstVBorders)
        lstVBorders.addItem(v);
    for (const QString& v : lists.lstHBorders)
        lstHBorders.addItem(v);
}

void FrmStart::applyLayout() {
    const QString layout = s_.settings.get(name(), QStringLiteral("Layout"));
    if (layout.isEmpty()) return;
    const int comma = layout.indexOf(u',');
    // Out of range is off the screen: clamped, then ignored by the fit test.
    const int x = ToInt32(Val(layout.left(comma < 0 ? layout.size() : comma)), OnOverflow::Clamp);
    const int y = comma < 0 ? 0 : ToInt32(Val(layout.mid(comma + 1)), OnOverflow::Clamp);
    const QRect& scr = s_.platform.screen;
    const bool fits = x >= scr.left() && y >= scr.top() &&
                      qint64(x) <= qint64(scr.right()) + 1 - width() &&
                      qint64(y) <= qint64(scr.bottom()) + 1 - height();
    if (fits) move(x, y);
}

void FrmStart::formUnload(bool& cancel) {
    (void)cancel;
    CardState& st = s_.st;
    st.ExitRequested = -1;
    st.Connected = 0;
    st.ReplyTimedOut = 1;
    st.Timer2.Enabled = false;
    s_.settings.save(name(), QStringLiteral("Layout"),
                     QString::number(left()) + QStringLiteral(",") + QString::number(top()));
    if (st.TestBarsOn) {
        for (const char* f : {"frmTest", "frmTestC", "frmTestG"})
            s_.forms.unload(QString::fromLatin1(f));
        st.TestBarsOn = 0;
    }
}

// --- states

void FrmStart::noCardState() {
    cmdConnect.setEnabled(true);
    cmdConnect.setCaption(kConnect);
    cmdDisconnect.setEnabled(false);
    s_.st.Connected = 0;
    shp1.setVisible(false);
    for (Control* c :
         std::initializer_list<Control*>{&cmdSync, &txtPar1, &txtH, &lblFwv, &txtFwv, &txtNameCard})
        c->setVisible(false);
    mnuCardMemory.setEnabled(false);
    mnuParams.setEnabled(false);
    mnuDisplayAdj.setEnabled(true);
}

void FrmStart::connectedState(bool atStart) {
    CardState& st = s_.st;
    cmdConnect.setEnabled(false);
    cmdConnect.setCaption(kConnected);
    cmdDisconnect.setEnabled(true);
    SpinButton1.setEnabled(false);
    txtCom.setLocked(true);
    shp1.setVisible(false);
    st.Connected = -1;
    cardKind(atStart);
}

// Reads the block and shows what card it is.
void FrmStart::cardKind(bool atStart) {
    CardState& st = s_.st;
    st.CardParams = s_.fn.ReadParams(24);
    // A block that failed already put the window in the lost-card state.
    if (st.Connected == 0) return;
    try {
        st.CardWord = ParamBlock::cardWord(st.CardParams);
    } catch (const OverflowError&) {
        s_.mainErrorHandler();
        return;
    }
    if (!ParamBlock::isReceiver(st.CardWord)) {
        cmdSync.setVisible(true);
        txtPar1.setVisible(true);
        txtH.setVisible(true);
        lblMassage.setVisible(false);
        mnuReadMonInfo.setVisible(true);
        mnuDisplayAdj.setEnabled(true);
        mnuPresets.setEnabled(true);
        mnuFile2Mem.setVisible(true);
        txtNameCard.setText(QStringLiteral("Transmitter"));
        const bool rgb = ParamBlock::isRgb(st.CardParams);
        for (Control* c : std::initializer_list<Control*>{&cmdSync, &txtPar1, &txtH})
            c->setEnabled(rgb);
        txtPar1.setText(rgb ? QString() : QStringLiteral("DVI mode"));
        txtH.setText(rgb ? QString() : QStringLiteral("DVI mode"));
    } else {
        mnuPresets.setEnabled(false);
        mnuReadMonInfo.setVisible(true);
        cmdSync.setVisible(false);
        txtPar1.setVisible(false);
        txtH.setVisible(false);
        mnuDisplayAdj.setVisible(false);
        mnuFile2Mem.setVisible(false);
        txtNameCard.setText(QStringLiteral("Receiver"));
    }
    if (!atStart) {
        cmdSync.setEnabled(true);
        mnuDisplayAdj.setEnabled(true);
    }
    mnuCardMemory.setEnabled(true);
    mnuParams.setEnabled(true);
    txtFwv.setText(ParamBlock::firmwareText(st.CardParams));
    lblFwv.setVisible(true);
    txtFwv.setVisible(true);
    txtNameCard.setVisible(true);
}

// --- buttons

void FrmStart::connectClick() {
    CardState& st = s_.st;
    if (!txtCom.text().isEmpty()) st.ComPort = ToInt16(Val(txtCom.text()));
    if (s_.port.isOpen()) s_.port.close();
    s_.port.setCommPort(st.ComPort);
    const bool present = s_.fn.CardPresent();
    s_.showLinkReason();
    if (!present) {
        cmdConnect.setEnabled(true);
        cmdConnect.setCaption(kConnect);
        cmdDisconnect.setEnabled(false);
        SpinButton1.setEnabled(true);
        st.Connected = 0;
        s_.dialogs.messageBox(QStringLiteral("Check USB connection"), MsgButtons::OK, st.AppTitle);
        cmdSync.setEnabled(false);
        lblFwv.setVisible(false);
        txtFwv.setVisible(false);
        txtNameCard.setVisible(false);
        mnuCardMemory.setEnabled(false);
        mnuParams.setEnabled(false);
        return;
    }
    cmdDisconnect.setEnabled(true);
    cmdConnect.setEnabled(false);
    cmdConnect.setCaption(kConnected);
    SpinButton1.setEnabled(false);
    st.Connected = -1;
    s_.settings.save(QStringLiteral("StartUp"), QStringLiteral("PORT"),
                     QString::number(st.ComPort));
    // Windows open at connect get their buttons back.
    for (Form* f : s_.forms.forms()) {
        const QString& n = f->name();
        QStringList buttons;
        if (n == QLatin1String("frmSettings")) buttons = {"cmdLoad", "cmdAdjust"};
        if (n == QLatin1String("frmAD9888") || n == QLatin1String("frmLaser") ||
            n == QLatin1String("frmTransmitter"))
            buttons = {"cmdLoad", "cmdRead"};
        for (const QString& b : buttons)
            if (auto* c = f->find(b)) c->setEnabled(true);
        if (n == QLatin1String("frmConsole")) f->reload();
    }
    txtCom.setLocked(true);
    cardKind(false);
}

void FrmStart::disconnectClick() {
    cmdConnect.setEnabled(true);
    cmdConnect.setCaption(kConnect);
    SpinButton1.setEnabled(true);
    txtCom.setLocked(false);
    s_.st.Connected = 0;
    cmdSync.setEnabled(false);
    lblFwv.setVisible(false);
    txtFwv.setVisible(false);
    txtNameCard.setVisible(false);
    cmdDisconnect.setEnabled(false);
}

void FrmStart::exitClick() {
    if (s_.port.isOpen()) s_.port.close();
    s_.st.ExitRequested = -1;
}

void FrmStart::syncClick() {
    if (s_.st.SyncRequested != 0) return;
    s_.st.SyncRequested = 1;
    cmdSync.setEnabled(false);
}

// Digits and backspace only.
void FrmStart::comKeyPress(int& keyAscii) {
    const bool digit = keyAscii >= '0' && keyAscii <= '9';
    if (!digit && keyAscii != 8) keyAscii = 0;
}

void FrmStart::spin(int step) {
    const double v = Val(txtCom.text());
    if (step < 0 && v > 2) txtCom.setText(StrDbl(v - 1));
    if (step > 0 && v < 16) txtCom.setText(StrDbl(v + 1));
}

// --- menus

bool FrmStart::showWindow(const QString& window, bool modal) {
    if (!s_.forms.isRegistered(window)) return false;
    s_.forms.show(window, modal);
    return true;
}

void FrmStart::databaseClick() {
    CardState& st = s_.st;
    if (!s_.forms.isRegistered(QStringLiteral("frmSettings"))) return;
    if (st.Connected) {
        const QByteArray block = s_.fn.ReadParams(24);
        if (!ParamBlock::isRgb(block)) {
            s_.dialogs.messageBox(QStringLiteral("Card set in DVI mode. No Presets in this mode."),
                                  MsgButtons::OK, st.AppTitle);
            return;
        }
    }
    s_.forms.unload(QStringLiteral("frmRLReg"));
    showWindow(QStringLiteral("frmSettings"));
}

void FrmStart::displayAdjClick() {
    CardState& st = s_.st;
    if (!s_.forms.isRegistered(QStringLiteral("frmConsole"))) return;
    if (st.Connected) {
        st.CardParams = s_.fn.ReadParams(24);
        if (st.CardParams.size() <= 18) {
            st.DemoMode = 1;
        } else if (!ParamBlock::isRgb(st.CardParams)) {
            s_.dialogs.messageBox(
                QStringLiteral("Card set in DVI mode. Display Adjustment works only in DEMO mode."),
                MsgButtons::OK, st.AppTitle);
            st.DemoMode = 1;
        } else {
            st.CurPreset = s_.findRezName(st.CardParams);
            st.DemoMode = st.CurPreset.isEmpty() ? 1 : 0;
        }
    } else {
        st.CardParams.clear();
        st.DemoMode = 1;
    }
    if (!s_.forms.isLoaded(QStringLiteral("frmConsole"))) showWindow(QStringLiteral("frmConsole"));
}

void FrmStart::laserClick() {
    CardState& st = s_.st;
    const QString oldLaser = QStringLiteral("frmLaser");
    const QString newLaser = QStringLiteral("frmLaserOmron");
    if (!s_.forms.isRegistered(oldLaser) || !s_.forms.isRegistered(newLaser)) return;
    s_.forms.unloadAllBut({name(), QStringLiteral("frmConnect")});
    auto ask = [&] {
        const MsgResult r = s_.dialogs.messageBox(
            QStringLiteral("For NEW(Omron) Laser click 'YES', for OLD laser click 'NO'  "),
            MsgButtons::YesNo, QStringLiteral("Choose the LASER"));
        showWindow(r == MsgResult::Yes ? newLaser : oldLaser);
    };
    if (!st.Connected) {
        ask();
        return;
    }
    if (st.CardParams.size() <= 25) st.CardParams = s_.fn.ReadParams(24);
    const int major = ParamBlock::firmwareMajor(st.CardParams);
    if (major < 10)
        showWindow(oldLaser);
    else if (major <= 20)
        showWindow(newLaser);
    else
        ask();
}

// --- service unlock: Ctrl+Shift+A tells who wrote the tool, Ctrl+Shift+E asks for a code

void FrmStart::keyDown(int& keyCode, Qt::KeyboardModifiers mods) {
    const auto ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    if ((mods & ctrlShift) != ctrlShift) return;
    if (keyCode == Qt::Key_A)
        s_.dialogs.messageBox(QStringLiteral("Velmorak service and configuration tool.\n"
                                             "Written by the Velmorak engineering team."),
                              MsgButtons::OK, s_.st.AppTitle);
    else if (keyCode == Qt::Key_E)
        unlock();
}

void FrmStart::unlock() {
    const auto answer =
        s_.dialogs.inputBox(QStringLiteral("Enter your password :"), s_.st.AppTitle);
    if (!answer || answer->isEmpty()) return;
    const QString code = answer->toUpper();
    const bool first = code == QLatin1String("LUMEN");
    const bool second = code == QLatin1String("VOLTAR");
    if (!first && !second) return;
    for (MenuItem* m : {&mnuPanel, &mnuLaser, &mnuTransmitter, &mnuAutoPresets, &mnuFile2Mem}) {
        m->setVisible(true);
        m->setEnabled(true);
    }
    if (second) mnuReadAutopresets.setVisible(true);
}

void FrmStart::editorClick(const QString& window) {
    if (!s_.forms.isRegistered(window)) return;
    s_.forms.unloadAllBut({name(), QStringLiteral("frmSettings"), QStringLiteral("frmConnect")});
    showWindow(window);
}

} // namespace velmorak
