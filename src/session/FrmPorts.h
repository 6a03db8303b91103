#pragma once

#include "forms/Form.h"
#include "link/SerialDevices.h"

namespace velmorak {

class Session;

// The port picker: the serial devices the system sees and the paths the settings name, and
// which COM number reaches each. Binding a COM number to a device writes the setting
// "Ports"/"COMn" and puts the number in the main window's port box.
class FrmPorts : public Form {
  public:
    static constexpr int kRefreshMs = 1000;
    FrmPorts(Session& s, SerialDeviceLister list);

    Grid& grdPorts = add<Grid>("grdPorts");
    Label& lblCom = add<Label>("lblCom");
    TextBox& txtCom = add<TextBox>("txtCom");
    Label& lblPath = add<Label>("lblPath");
    TextBox& txtPath = add<TextBox>("txtPath");
    Button& cmdBind = add<Button>("cmdBind");
    Button& cmdClose = add<Button>("cmdClose");
    Label& lblNote = add<Label>("lblNote");
    Timer& tmrRefresh = add<Timer>("tmrRefresh");

    const QList<PortRow>& rows() const { return rows_; }

  protected:
    void formLoad() override;

  private:
    void fill();
    void rowClicked();
    void bindClick();
    void refreshTick();

    Session& s_;
    SerialDeviceLister list_;
    QList<SerialDevice> seen_;
    QList<PortRow> rows_;
};

} // namespace velmorak
