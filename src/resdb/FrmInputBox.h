#pragma once

#include "forms/Form.h"

#include <QByteArray>

#include <functional>

namespace velmorak {

class Database;
class ModFunctions;
struct CardState;

// The modal dialog that names the row an editor is about to save: every known name (deleted
// rows too), or a new one typed in, and an optional description.
class FrmInputBox : public Form {
  public:
    // The resolution the card measures in a parameter block (empty when none fits).
    using RezNamer = std::function<QString(const QByteArray&)>;
    FrmInputBox(CardState& st, ModFunctions& fn, Database& db, RezNamer findRezName);

    ComboBox& cboPresets = add<ComboBox>("cboPresets");
    TextBox& txtInput = add<TextBox>("txtInput");
    Label& lblDescription = add<Label>("lblDescription");
    Button& cmdOK = add<Button>("cmdOK");
    Button& cmdCancel = add<Button>("cmdCancel");

    qint16 Cancelled = 0;

  protected:
    void formLoad() override;
    void formUnload(bool& cancel) override;

  private:
    void nameChanged();
    CardState& st_;
    ModFunctions& fn_;
    Database& db_;
    RezNamer findRezName_;
};

} // namespace velmorak
