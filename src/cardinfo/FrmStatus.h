#pragma once

#include "cardinfo/UcSwitch.h"
#include "forms/Form.h"
#include "link/AppContext.h"

namespace velmorak {

// Card Status: one parameter block of the card as its kind, temperature, supplies, LEDs,
// switch positions and firmware. Updated at load and on Refresh only.
class FrmStatus : public Form {
  public:
    FrmStatus(AppContext& ctx, QString appPath);

    Button& cmdRefresh = add<Button>("cmdRefresh");
    Frame& fraStatus = add<Frame>("fraStatus");
    Grid& grPar = add<Grid>("grPar");
    Frame& frLEDs = add<Frame>("frLEDs");
    ControlArray<Shape>& shpLed = addArray<Shape>("shpLed", {0, 1, 2, 3, 4, 5, 6, 7, 8});
    ControlArray<Label>& lblL1 = addArray<Label>("lblL1", {0, 1, 2, 3, 4, 5, 6, 7, 8});
    Label& lblName = add<Label>("lblName");
    Label& lblDescr = add<Label>("lblDescr");
    Label& lblOpticType = add<Label>("lblOpticType");
    Label& lblCaptionvver = add<Label>("lblCaptionvver");
    Label& lblFWVersion = add<Label>("lblFWVersion");
    Image& imCard = add<Image>("imCard");
    UcSwitchD10& ucSwitchDig2 = add<UcSwitchD10>("ucSwitchDig2");
    PictureBox& picTipSw2 = add<PictureBox>("picTipSw2");
    Frame& SSFrame1 = add<Frame>("SSFrame1");
    Timer& Timer1 = add<Timer>("Timer1");
    Timer& Timer2 = add<Timer>("Timer2");
    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuPrintStatusDigCard = add<MenuItem>("mnuPrintStatusDigCard");
    MenuItem& mnuCloseDigStatus = add<MenuItem>("mnuCloseDigStatus");
    MenuItem& mnuSetupOneChannel = add<MenuItem>("mnuSetupOneChannel");
    MenuItem& mnuActiveOneCh = add<MenuItem>("mnuActiveOneCh");
    MenuItem& mnuInactivOneCh = add<MenuItem>("mnuInactivOneCh");
    MenuItem& mnuSourceAddOneCh = add<MenuItem>("mnuSourceAddOneCh");

    qint16 CardTypeWord = 0;
    int OneFiber = 0; // bit 2 of status byte 1, masked

    void Show_Status();
    void SwitchValue(int unused, int status9, int status10);
    // The picture file of a name the window uses ("RRGB1s").
    QString picture(const QString& name) const;

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;

  private:
    int byteAt(int pos) const;
    void readBlock();
    void showKind();
    void showSwitchesAndTexts();
    void showLeds(bool setVisibility);
    void showValues();
    void showPinout();
    void refreshClick();
    void tipShown();
    void tipHidden();

    AppContext& c_;
    QString appPath_;
};

} // namespace velmorak
