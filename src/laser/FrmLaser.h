#pragma once

#include "laser/LaserForm.h"

namespace velmorak {

// The OLD laser: eight registers in 23 rows, loaded to and read from the card's laser block,
// a copy kept in the window, and the laser's serial number.
class FrmLaser : public LaserForm {
  public:
    explicit FrmLaser(AppContext& ctx);

    Button& cmdPrevios = add<Button>("cmdPrevios");
    Button& cmdRestore = add<Button>("cmdRestore");
    Frame& fraReg = control<Frame>("fraReg");
    Grid& FlexGrP = control<Grid>("FlexGrP");

    QByteArray SavedImage;

    void LoadFrReg();
    void SetToTable(const QByteArray& image) override;
    void ucBitsField2_ClickBit(int row) { rowClicked(row); }

  protected:
    void formLoad() override;
    void rowClicked(int row) override;
    void setActionsEnabled(bool on) override;
    void blankCard() override { writeDefaults(); }

  private:
    void loadClick();
    void readClick();
    void writeDefaults();
    void sliderMoved(const struct OldLaserSlider& s);
    QString valueText(const struct OldLaserSlider& s, int v);
    void setControlCell(int row);
};

} // namespace velmorak
