#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"

#include <array>

namespace velmorak {

// Card Memory: the production record in the card's data memory (part and serial numbers,
// date, sales order, technician's code), three running counters and the table of repairs.
// Editing opens with a service chord.
class FrmMemCard : public Form {
  public:
    explicit FrmMemCard(AppContext& ctx);

    Label& lblCapture = add<Label>("lblCapture");
    Label& lblPartN = add<Label>("lblPartN");
    TextBox& txtPartN = add<TextBox>("txtPartN");
    Label& lblSerNumber = add<Label>("lblSerNumber");
    TextBox& txtSerN = add<TextBox>("txtSerN");
    Label& lblDate = add<Label>("lblDate");
    TextBox& txtDate = add<TextBox>("txtDate");
    Label& lblSalesOrder = add<Label>("lblSalesOrder");
    TextBox& txtSalesOrder = add<TextBox>("txtSalesOrder");
    Label& lblTechCode = add<Label>("lblTechCode");
    TextBox& txtTechCode = add<TextBox>("txtTechCode");
    Frame& fraVariables = add<Frame>("fraVariables");
    Label& lblDays = add<Label>("lblDays");
    TextBox& txtDays = add<TextBox>("txtDays");
    Label& lblTemp = add<Label>("lblTemp");
    TextBox& txtTemp = add<TextBox>("txtTemp");
    Label& Label1 = add<Label>("Label1");
    TextBox& txtDuration = add<TextBox>("txtDuration");
    Label& lblRepiar = add<Label>("lblRepiar");
    Grid& grRepair = add<Grid>("grRepair");
    Button& cmdAddR = add<Button>("cmdAddR");
    Button& cmdApplyMem = add<Button>("cmdApplyMem");
    Button& cmdClear = add<Button>("cmdClear");
    MenuItem& mnuClose = add<MenuItem>("mnuClose");

    qint16 AddrLo = 0;
    qint16 AddrHi = 0;
    qint16 EditState = 0;
    QByteArray MemReadBack;
    std::array<QString, 6> MemFields; // slots 1 to 5

    // The service chords' letters ("frmMem_card" settings "ServiceKey", "ClearKey").
    int serviceKey() const;
    int clearKey() const;
    void openServiceSection();
    // A click in one of the five record fields.
    void fieldClick() { EditState = 1; }

  protected:
    void formLoad() override;
    void keyDown(int& keyCode, Qt::KeyboardModifiers mods) override;

  private:
    void setAddress(int address);
    // Advances the address; false when it has gone past the last page.
    bool advance(int step);
    QByteArray read(int count);
    void write(const QByteArray& data, int hi, int lo);
    void readRecord();
    void readRepairs();
    void addRow(const QString& when, const QString& what);
    void removeRow(int row);
    void applyClick();
    void applyField(int slot, TextBox& box, int address, const QByteArray& data, int keep,
                    const char* failure);
    void addClick();
    bool addPiece(const QString& piece);
    void clearClick();
    void clearCounters();
    void clearRepairs();
    void message(const QString& text);

    AppContext& c_;
};

} // namespace velmorak
