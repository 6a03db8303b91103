#include "resdb/FrmInputBox.h"

#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "resdb/Database.h"
#include "resdb/RezLookup.h"

namespace velmorak {

FrmInputBox::FrmInputBox(CardState& st, ModFunctions& fn, Database& db, RezNamer findRezName)
    : Form(QStringLiteral("frmInputBox")), st_(st), fn_(fn), db_(db),
      findRezName_(std::move(findRezName)) {
    setCaption(QStringLiteral("Enter the Name"));
    move(0, 0, 360, 170);
    lblDescription.setCaption(QStringLiteral("Enter  'Description' (Optional) :"));
    cmdOK.setCaption(QStringLiteral("&OK"));
    cmdOK.setDefault(true);
    cmdCancel.setCaption(QStringLiteral("Cancel"));
    cmdCancel.setCancel(true);
    cboPresets.onClick.connect([this] { nameChanged(); });
    cboPresets.onChange.connect([this] { nameChanged(); });
    cmdCancel.onClick.connect([this] {
        Cancelled = -1;
        unload();
    });
    cmdOK.onClick.connect([this] {
        Cancelled = 0;
        unload();
    });
}

void FrmInputBox::formLoad() {
    move(st_.InputBoxX, st_.InputBoxY);
    const QStringList names = ListRezNames(db_, QStringLiteral("tblDefValues"), false);
    if (names.isEmpty()) return;
    for (const QString& n : names)
        cboPresets.addItem(n);
    if (!st_.Connected) return;
    st_.CardParams = fn_.ReadParams(24);
    if (st_.CardParams.size() < 18) {
        cboPresets.setListIndex(0);
        return;
    }
    st_.CurPreset = findRezName_(st_.CardParams);
    const int hit = cboPresets.indexOf(st_.CurPreset);
    cboPresets.setListIndex(hit >= 0 ? hit : 0);
}

void FrmInputBox::nameChanged() {
    Recordset rs = db_.OpenRecordset(QStringLiteral("tblDefValues"));
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), cboPresets.text());
    txtInput.setText(rs.NoMatch() ? QString()
                                  : rs.Fields(QStringLiteral("Description")).Value().toString());
    st_.SelRezName = cboPresets.text();
    rs.Close();
}

void FrmInputBox::formUnload(bool& cancel) {
    (void)cancel;
    if (Cancelled) {
        st_.SelRezName.clear();
        st_.SelRezDescription.clear();
    } else {
        st_.SelRezName = cboPresets.text();
        st_.SelRezDescription = txtInput.text();
    }
}

} // namespace velmorak
