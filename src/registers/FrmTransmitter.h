#pragma once

#include "registers/RegisterEditor.h"
#include "registers/TransmitterMap.h"

namespace velmorak {

// The service window of the PanelLink transmitter chip: its registers in three grids, read from
// and loaded into the chip, edited row by row, saved to and loaded from the resolution database.
class FrmTransmitter : public Form, public EditorControls {
  public:
    static constexpr int kDevice = 96;
    explicit FrmTransmitter(AppContext& ctx);

    // --- the register image and the grids
    Frame& fraT0 = add<Frame>("fraT0");
    Frame& fraT1 = add<Frame>("fraT1");
    Frame& fraT2 = add<Frame>("fraT2");
    Grid& FlexGr0 = add<Grid>("FlexGr0");
    Grid& FlexGr1 = add<Grid>("FlexGr1");
    Grid& FlexGr2 = add<Grid>("FlexGr2");

    // --- controls over the "Control" column
    TextBox& txt1 = add<TextBox>("txt1");
    TextBox& txt3 = add<TextBox>("txt3");
    ComboBox& cbo09 = add<ComboBox>("cbo09");
    ScrollBar& HScrl0A_1 = add<ScrollBar>("HScrl0A_1");
    TextBox& txt0A_1 = add<TextBox>("txt0A_1");
    ScrollBar& HScrl0A_2 = add<ScrollBar>("HScrl0A_2");
    TextBox& txt0A_2 = add<TextBox>("txt0A_2");
    ScrollBar& HScrl32 = add<ScrollBar>("HScrl32");
    TextBox& txt33 = add<TextBox>("txt33");
    ScrollBar& HScrl34 = add<ScrollBar>("HScrl34");
    ScrollBar& HScrl36 = add<ScrollBar>("HScrl36");
    TextBox& txt37 = add<TextBox>("txt37");
    ScrollBar& HScrl38 = add<ScrollBar>("HScrl38");
    TextBox& txt39 = add<TextBox>("txt39");
    TextBox& txt3B = add<TextBox>("txt3B");
    TextBox& txt3D = add<TextBox>("txt3D");

    // --- operations
    void ucBitsField1_ClickBit(int index);
    void SetToTable(const QByteArray& image);
    // The text in the "Control" cell of a member's grid row.
    QString controlCell(int member) const { return ed_.controlCell(member); }

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;
    void formActivate() override;

  private:
    void setUpControls();
    void connectHandlers();
    void readClick();
    void loadClick();
    void defaultClick();
    void changeClick();
    void msel(bool click);
    // Two registers as one count: low byte and high bits, with its slider and text.
    void splitCount(ScrollBar& bar, TextBox& text, int low, int high);

    AppContext& c_;
    RegisterEditor ed_{*this, *this, c_, kTransmitterMap};
};

} // namespace velmorak
