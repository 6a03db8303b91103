#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "monitor/Edid.h"
#include "monitor/EdidPrintout.h"

#include <functional>

namespace velmorak {

// Monitor Info: the EDID the card holds as a hexadecimal table and decoded, the two built-in
// images to load into the card, refresh, send over the fibre, save and print.
class FrmReadEEMon : public Form {
  public:
    static constexpr int kDevice = 128;
    FrmReadEEMon(AppContext& ctx, QString appPath);

    Grid& grTable = add<Grid>("grTable");
    Label& lblCS = add<Label>("lblCS");
    Label& lblRCS = add<Label>("lblRCS");
    Button& cmdDefault = add<Button>("cmdDefault");
    Button& cmdDefaultR = add<Button>("cmdDefaultR");
    Button& cmdTransmit = add<Button>("cmdTransmit");
    Button& cmdClose = add<Button>("cmdClose");
    TextBox& txtMsg = add<TextBox>("txtMsg");
    // The decoded view beside the table.
    Label& lblDecoded = add<Label>("lblDecoded");
    ListBox& lstDecoded = add<ListBox>("lstDecoded");
    MenuItem& mnuFile = add<MenuItem>("mnuFile");
    MenuItem& mnuSave = add<MenuItem>("mnuSave");
    MenuItem& mnuPrint = add<MenuItem>("mnuPrint");
    MenuItem& mnuRefresh = add<MenuItem>("mnuRefresh");
    MenuItem& mnuExit = add<MenuItem>("mnuExit");

    // The EDID as read: 128 or 256 characters, one a byte.
    QByteArray EdidText;

    // Prints the report on the printer the printer dialog set up; throws PrintFailure. The view
    // sets it; without one, printing fails as with no printer at all.
    std::function<void(const std::vector<PrintText>&)> printReport;

    const QString& appPath() const { return appPath_; }
    // Reads the EDID from the card and shows it (the load and the refresh).
    void readEdid();

  protected:
    void formLoad() override;

  private:
    void showTable();
    void showDecoded();
    void refreshClick();
    void defaultClick(DefaultEdid which);
    void transmitClick();
    void saveClick();
    void printClick();
    bool readBlock(int base);
    bool isReceiver() const;

    AppContext& c_;
    QString appPath_;
};

} // namespace velmorak
