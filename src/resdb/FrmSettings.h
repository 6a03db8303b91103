#pragma once

#include "forms/Form.h"
#include "link/AppContext.h"
#include "resdb/Recordset.h"
#include "resdb/ResolutionReport.h"

namespace velmorak {

// The list of resolutions: picks a row and loads it into the card's two chips, removes rows
// after an unlock, prints the tables. The grid shows the rows through a cursor held open while
// the window is.
class FrmSettings : public Form {
  public:
    explicit FrmSettings(AppContext& ctx);

    Label& lblCPresets = add<Label>("lblCPresets");
    ComboBox& cboPresets = add<ComboBox>("cboPresets");
    Grid& DBGrid1 = add<Grid>("DBGrid1");
    Button& cmdLoad = add<Button>("cmdLoad");
    Button& cmdRemove = add<Button>("cmdRemove");
    Button& cmdAdjust = add<Button>("cmdAdjust");
    Button& cmdClose = add<Button>("cmdClose");
    TextBox& txtMsg = add<TextBox>("txtMsg");
    // The toolbar's buttons, by key.
    Button& Toolbar1_refresh = add<Button>("Toolbar1_refresh");
    Button& Toolbar1_print_tbl = add<Button>("Toolbar1_print_tbl");
    Button& Toolbar1_exit_tbl = add<Button>("Toolbar1_exit_tbl");
    MenuItem& mnuPrint = add<MenuItem>("mnuPrint");
    MenuItem& mnuRefresh = add<MenuItem>("mnuRefresh");
    MenuItem& mnuExit = add<MenuItem>("mnuExit");

    // The cursor behind the grid (Data1).
    const Recordset& Data1() const { return data1_; }

    void print(ResolutionTable which);

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;
    void keyDown(int& keyCode, Qt::KeyboardModifiers mods) override;

  private:
    void fillPresets();
    void fillGrid();
    void place();
    void pick();
    void loadClick();
    void loadBlocks(Recordset& rs);
    void rereadEditors();
    void removeClick();
    bool removeFrom(const QString& table, Recordset& rs);
    void adjustClick();
    void refreshMenu();
    void refreshToolbar();
    void unlock();

    AppContext& c_;
    Recordset data1_;
};

} // namespace velmorak
