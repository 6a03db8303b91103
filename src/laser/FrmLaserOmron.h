#pragma once

#include "laser/LaserForm.h"
#include "laser/LaserMaps.h"

namespace velmorak {

// The NEW laser: its 98-bit stream in 52 rows on five pages, the four channels' currents as
// codes, loaded to and read from the card's laser block, and the laser's serial number.
class FrmLaserOmron : public LaserForm {
  public:
    explicit FrmLaserOmron(AppContext& ctx);

    TabStrip& TabStrip1 = add<TabStrip>("TabStrip1");
    TextBox& txtTC_MIN = control<TextBox>("txtTC_MIN");
    TextBox& txtTC_MAX = control<TextBox>("txtTC_MAX");
    TextBox& txtIWF = control<TextBox>("txtIWF");

    void SetToTable(const QByteArray& image) override;
    void ucBitsField1_ClickBit(int row) { rowClicked(row); }
    ScrollBar& currentBar(int channel, Current which) const;
    TextBox& currentText(int channel, Current which) const;

  protected:
    void formLoad() override;
    void rowClicked(int row) override;
    void setActionsEnabled(bool on) override;
    void blankCard() override { defaultClick(); }

  private:
    void loadClick();
    void readClick();
    void defaultClick();
    void codeToRows(int channel, Current which, int code);
    void currentTyped(int channel, Current which);

    bool fromText_ = false;
};

} // namespace velmorak
