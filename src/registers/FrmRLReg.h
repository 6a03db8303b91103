#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "registers/UcBitsField.h"

namespace velmorak {

class FrmAD9888;

// One register of the video converter at a time: read, edited as a byte, loaded with a
// read-back check, and mirrored into the rows of the flat panel window.
class FrmRLReg : public Form {
  public:
    static constexpr int kDevice = 32;
    explicit FrmRLReg(AppContext& ctx);

    ComboBox& cboRAddr = add<ComboBox>("cboRAddr");
    Label& lblRegAddr = add<Label>("lblRegAddr");
    UcBitsField& ucBitsFieldR = add<UcBitsField>("ucBitsFieldR");
    ScrollBar& HScrlR = add<ScrollBar>("HScrlR");
    Label& lblValue = add<Label>("lblValue");
    Label& lblH = add<Label>("lblH");
    CheckBox& ChkChange = add<CheckBox>("ChkChange");
    TextBox& txtDevAddr = add<TextBox>("txtDevAddr");
    Label& lblDevAddr = add<Label>("lblDevAddr");
    Button& cmdRead = add<Button>("cmdRead");
    Button& cmdLoad = add<Button>("cmdLoad");
    Button& cmdClose = add<Button>("cmdClose");
    TextBox& txtMsg = add<TextBox>("txtMsg");

    bool LoadOnChange = false;

    // The selected register, the hexadecimal text of cboRAddr.
    int selectedRegister() const;
    // The byte to send for register r: reserved bits cleared, and written back to the cells.
    qint16 Check_value(int r);
    // The row of the flat panel window that stands for register r here; -1 for none.
    static int memberOf(int r);

  protected:
    void formLoad() override;

  private:
    void registerSelected(bool click);
    void sliderMoved();
    void readClick();
    void loadClick();
    void sendByte(qint16 v);
    void showOk();
    void mirror(qint16 v);
    FrmAD9888* panel() const;

    AppContext& c_;
};

} // namespace velmorak
