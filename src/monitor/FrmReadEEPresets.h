#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"

namespace velmorak {

// A dump of 1024 bytes of the card's data memory from the page in EEStartAddr: 32 rows of 32
// bytes, hexadecimal headers and addresses, decimal cells.
class FrmReadEEPresets : public Form {
  public:
    static constexpr int kRows = 32;
    static constexpr int kRowBytes = 32;
    explicit FrmReadEEPresets(AppContext& ctx);

    Grid& grTable = add<Grid>("grTable");

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;
    void formResize() override;

  private:
    void fillHalf(int row, int firstCol, const QByteArray& reply);
    void menuEnabled(bool on);
    AppContext& c_;
};

} // namespace velmorak
