#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"

namespace velmorak {

// The large picture of the card, with zoom and print. picPinout stands for the window's own
// picture: it fills the window and stretches with it.
class ImCardPinout : public Form {
  public:
    // The smallest height the window shrinks to: 5500 twips.
    static constexpr double kMinHeight = 5500.0 / 15;

    explicit ImCardPinout(AppContext& ctx);

    PictureBox& picPinout = add<PictureBox>("picPinout");
    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuPrintPinout = add<MenuItem>("mnuPrintPinout");
    MenuItem& mnuClosePinout = add<MenuItem>("mnuClosePinout");
    MenuItem& mnuZoom = add<MenuItem>("mnuZoom");
    MenuItem& mnuIncreise = add<MenuItem>("mnuIncreise");
    MenuItem& mnuDecreise = add<MenuItem>("mnuDecreise");

  protected:
    void formUnload(bool& cancel) override;

  private:
    void zoom(double factor);
    AppContext& c_;
};

} // namespace velmorak
