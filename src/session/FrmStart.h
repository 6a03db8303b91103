#pragma once

#include "forms/Form.h"

namespace velmorak {

class Session;

// The main window: connects the card, tells what it is, shows the sync measurement and opens
// every other window from its menus.
class FrmStart : public Form {
  public:
    explicit FrmStart(Session& s);

    TextBox& txtCom = add<TextBox>("txtCom");
    SpinButton& SpinButton1 = add<SpinButton>("SpinButton1");
    Label& lblCaptionCom = add<Label>("lblCaptionCom");
    Button& cmdConnect = add<Button>("cmdConnect");
    Button& cmdDisconnect = add<Button>("cmdDisconnect");
    Button& cmdSync = add<Button>("cmdSync");
    Button& cmdExit = add<Button>("cmdExit");
    TextBox& txtNameCard = add<TextBox>("txtNameCard");
    Label& lblFwv = add<Label>("lblFwv");
    TextBox& txtFwv = add<TextBox>("txtFwv");
    TextBox& txtPar1 = add<TextBox>("txtPar1");
    TextBox& txtH = add<TextBox>("txtH");
    TextBox& txtPar2 = add<TextBox>("txtPar2");
    Shape& shp1 = add<Shape>("shp1");
    Label& lblMassage = add<Label>("lblMassage");
    TextBox& txtMsg = add<TextBox>("txtMsg");
    StatusBar& StatusBar1 = add<StatusBar>("StatusBar1");
    // Our addition: why the card could not be reached (empty while it can).
    Label& lblReason = add<Label>("lblReason");
    // Our addition: opens the port picker.
    Button& cmdPorts = add<Button>("cmdPorts");

    // Hidden lists that classify what the card measures.
    ComboBox& cboPresets = add<ComboBox>("cboPresets");
    ListBox& lstVGroup = add<ListBox>("lstVGroup");
    ListBox& lstVBorders = add<ListBox>("lstVBorders");
    ListBox& lstHBorders = add<ListBox>("lstHBorders");
    ListBox& lstHGroup = add<ListBox>("lstHGroup");

    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuImport = add<MenuItem>("mnuImport");
    MenuItem& mnuExport = add<MenuItem>("mnuExport");
    MenuItem& mnuFile2Mem = add<MenuItem>("mnuFile2Mem");
    MenuItem& mnuExit = add<MenuItem>("mnuExit");
    MenuItem& mnuSettings = add<MenuItem>("mnuSettings");
    MenuItem& mnuDisplayAdj = add<MenuItem>("mnuDisplayAdj");
    MenuItem& mnuPanel = add<MenuItem>("mnuPanel");
    MenuItem& mnuTransmitter = add<MenuItem>("mnuTransmitter");
    MenuItem& mnuLaser = add<MenuItem>("mnuLaser");
    MenuItem& mnuReadMonInfo = add<MenuItem>("mnuReadMonInfo");
    MenuItem& mnuView = add<MenuItem>("mnuView");
    MenuItem& mnuParams = add<MenuItem>("mnuParams");
    MenuItem& mnuCardMemory = add<MenuItem>("mnuCardMemory");
    MenuItem& mnuTests = add<MenuItem>("mnuTests");
    MenuItem& mnuPresets = add<MenuItem>("mnuPresets");
    MenuItem& mnuDatabase = add<MenuItem>("mnuDatabase");
    MenuItem& mnuAutoPresets = add<MenuItem>("mnuAutoPresets");
    MenuItem& mnuReadAutopresets = add<MenuItem>("mnuReadAutopresets");
    MenuItem& mnuDBversion = add<MenuItem>("mnuDBversion");

    // The states of the window.
    void noCardState();
    // Connected: reads the block and shows the card. atStart: the start path's DVI rule
    // (Check Sync disabled), else the connect button's (enabled again).
    void connectedState(bool atStart);
    // The version text of the status bar, e.g. "1.00" or "1.02.3".
    QString versionText() const;
    // Opens a window of a later part of the tool when it is built in; false when it is not.
    bool showWindow(const QString& name, bool modal = false);

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;
    void formActivate() override;
    void keyDown(int& keyCode, Qt::KeyboardModifiers mods) override;

  private:
    bool layoutApplied_ = false;
    void buildMenus();
    void cardKind(bool atStart);
    void loadLists();
    void applyLayout();
    void connectClick();
    void disconnectClick();
    void exitClick();
    void syncClick();
    void comKeyPress(int& keyAscii);
    void spin(int step);
    void databaseClick();
    void displayAdjClick();
    void laserClick();
    void editorClick(const QString& window);
    void unlock();
    Session& s_;
};

} // namespace velmorak
