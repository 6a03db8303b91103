// The register editors and the resolution database: the preset list, loading a row into both
// chips, and saving the rows to both tables.
#include "registers/RegisterEditor.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "registers/Ad9888Map.h"
#include "registers/TransmitterMap.h"
#include "resdb/Database.h"
#include "resdb/DbError.h"
#include "resdb/RezLookup.h"
#include "resdb/Schema.h"

namespace velmorak {

void RegisterEditor::presetClick() {
    auto& list = ctl_.lstPresets;
    for (const QString& name : ListRezNames(c_.db()))
        list.addItem(name);
    list.setVisible(true);
}

// Loads the chosen row into both chips; the window's rows get the converter's image.
void RegisterEditor::presetListClick(const ImageSink& setToTable) {
    auto& list = ctl_.lstPresets;
    TextBox& msg = ctl_.txtMsg;
    Recordset rs = c_.db().OpenRecordset(QStringLiteral("tblDefValues"));
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), list.text());
    if (rs.NoMatch()) {
        rs.Close();
        return;
    }
    const RezRow row = ReadRezRow(rs);
    // Register 00H as a zero byte, then 01H to 17H: two bytes short of a whole image.
    const QByteArray image = QByteArray(1, '\0') + AD9888LoadBlock(row);
    setToTable(image);
    const QByteArray tx = TransmitterLoadBlock(row);

    const auto converter = qint16(kAd9888Map.device);
    c_.st.ChipBase = converter;
    c_.fn.WriteEEBlock(converter, image);
    const QByteArray a = c_.fn.ReadEE(converter, 62);
    msg.setText(a.mid(1, 14) == image.left(14) ? QStringLiteral("Load OK")
                                               : QStringLiteral("Load Failed"));

    const auto transmitter = qint16(kTransmitterMap.device);
    c_.st.ChipBase = transmitter;
    c_.fn.WriteEEBlock(transmitter, tx);
    const QByteArray low = c_.fn.ReadEE(transmitter, 3);
    const QByteArray reply = transmitterImage(low, c_.fn.ReadEE(transmitter, 8));
    msg.setText(transmitterLoaded(reply, tx) ? QStringLiteral("Load OK")
                                             : QStringLiteral("Load Failed"));
    msg.setVisible(true);
    rs.Close();
    c_.host.pump();
    c_.host.sleep(2000);
    msg.setVisible(false);
    list.setVisible(false);
}

void RegisterEditor::saveClick(std::span<const SaveColumn> columns, const QString& changeTitle) {
    CardState& st = c_.st;
    // The name dialog opens beside the button.
    QRect button(form_.width() / 2, form_.height() / 2, 0, 0);
    if (form_.view())
        if (auto r = form_.view()->controlRect(QStringLiteral("cmdSave"))) button = *r;
    st.InputBoxX = form_.left() + button.left() + button.width();
    st.InputBoxY = form_.top() + button.top() + button.height();
    if (!c_.forms.isRegistered(QStringLiteral("frmInputBox"))) return;
    c_.forms.show(QStringLiteral("frmInputBox"), true);
    const QString name = st.SelRezName.trimmed();
    if (name.isEmpty()) return;
    // Both tables or neither: a database that refuses the write loses nothing.
    Database& db = c_.db();
    try {
        db.BeginTrans();
        if (!saveToTable(QStringLiteral("tblDefValues"), true, name, st.SelRezDescription, columns,
                         changeTitle)) {
            db.Rollback();
            return;
        }
        saveToTable(QStringLiteral("tblCustValues"), false, name, st.SelRezDescription, columns,
                    changeTitle);
        db.CommitTrans();
    } catch (const DbError& e) {
        try {
            db.Rollback();
        } catch (const DbError&) {
            // Nothing was begun that could be left behind.
        }
        c_.dialogs.messageBox(QStringLiteral("The settings were not saved: ") + e.Description(),
                              MsgButtons::OK, st.AppTitle, MsgIcon::Exclamation);
    }
}

// One table of the save; false when the user said anything but Yes.
bool RegisterEditor::saveToTable(const QString& table, bool first, const QString& name,
                                 const QString& description, std::span<const SaveColumn> columns,
                                 const QString& changeTitle) {
    Recordset rs = c_.db().OpenRecordset(table);
    rs.setIndex(QStringLiteral("Name"));
    const int count = rs.RecordCount();
    rs.Seek(QStringLiteral("="), name);
    const bool adding = rs.NoMatch();
    if (first) {
        const QString question =
            adding ? QStringLiteral("Are you sure to add new settings?")
                   : QStringLiteral("Are you sure to change Settings of ") + name + u'?';
        const QString title = adding ? QStringLiteral("Add Settings to Database") : changeTitle;
        if (c_.dialogs.messageBox(question, MsgButtons::YesNoCancel, title, MsgIcon::Question) !=
            MsgResult::Yes) {
            rs.Close();
            return false;
        }
    }
    if (adding) {
        rs.AddNew();
        rs.Fields(QStringLiteral("NN")).setValue(count + 1);
        rs.Fields(QStringLiteral("Name")).setValue(name);
        rs.Fields(QStringLiteral("NameSort")).setValue(NormalizeRez(name));
        rs.Fields(QStringLiteral("Vertical")).setValue(int(RezHeight(name)));
    } else {
        rs.Edit();
    }
    if (!description.isEmpty()) rs.Fields(QStringLiteral("Description")).setValue(description);
    rs.Fields(QStringLiteral("Mark")).setValue(QString());
    for (const SaveColumn& col : columns)
        rs.Fields(QString::fromLatin1(col.column)).setValue(int(ctl_.byteOf(col.member)));
    rs.Update();
    rs.Close();
    return true;
}

} // namespace velmorak
