// frmAD9888 and the resolution database: the preset list, loading a row into both chips, and
// saving the rows to both tables.
#include "registers/FrmAD9888.h"

#include "resdb/Database.h"
#include "resdb/DbError.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "resdb/Database.h"
#include "resdb/DbError.h"
#include "resdb/RezLookup.h"
#include "resdb/Schema.h"

namespace velmorak {

namespace {

constexpr int kTransmitter = 96;

// Column of register r in a resolution row: "01" .. "09", then "0AH" .. "17H".
QString columnOf(int reg) {
    return reg < 10 ? QStringLiteral("0%1").arg(reg)
                    : QStringLiteral("%1H").arg(reg, 2, 16, QLatin1Char('0')).toUpper();
}

} // namespace

void FrmAD9888::presetClick() {
    for (const QString& name : ListRezNames(c_.db()))
        lstPresets.addItem(name);
    lstPresets.setVisible(true);
}

void FrmAD9888::presetListClick() {
    Recordset rs = c_.db().OpenRecordset(QStringLiteral("tblDefValues"));
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), lstPresets.text());
    if (rs.NoMatch()) {
        rs.Close();
        return;
    }
    const RezRow row = ReadRezRow(rs);
    // Register 00H as a zero byte, then 01H to 17H: two bytes short of a whole image.
    const QByteArray image = QByteArray(1, '\0') + AD9888LoadBlock(row);
    SetToTable(image);
    const QByteArray tx = TransmitterLoadBlock(row);

    c_.st.ChipBase = kDevice;
    c_.fn.WriteEEBlock(kDevice, image);
    const QByteArray a = c_.fn.ReadEE(kDevice, 62);
    txtMsg.setText(a.mid(1, 14) == image.left(14) ? QStringLiteral("Load OK")
                                                  : QStringLiteral("Load Failed"));

    c_.st.ChipBase = kTransmitter;
    c_.fn.WriteEEBlock(kTransmitter, tx);
    QByteArray reply = c_.fn.ReadEE(kTransmitter, 3).left(15);
    reply += c_.fn.ReadEE(kTransmitter, 8).left(12);
    const int mode = reply.size() >= 9 ? static_cast<unsigned char>(reply[8]) : -1;
    const int want = tx.isEmpty() ? 0 : static_cast<unsigned char>(tx[0]);
    if (mode < 0 || ((mode ^ want) & 0x7F) != 0)
        txtMsg.setText(QStringLiteral("Load Failed"));
    else
        txtMsg.setText(reply.mid(19, 4) == tx.mid(7, 4) ? QStringLiteral("Load OK")
                                                        : QStringLiteral("Load Failed"));
    txtMsg.setVisible(true);
    rs.Close();
    c_.host.pump();
    c_.host.sleep(2000);
    txtMsg.setVisible(false);
    lstPresets.setVisible(false);
}

void FrmAD9888::saveClick() {
    CardState& st = c_.st;
    // The name dialog opens beside the button.
    QRect button(width() / 2, height() / 2, 0, 0);
    if (view())
        if (auto r = view()->controlRect(QStringLiteral("cmdSave"))) button = *r;
    st.InputBoxX = left() + button.left() + button.width();
    st.InputBoxY = top() + button.top() + button.height();
    if (!c_.forms.isRegistered(QStringLiteral("frmInputBox"))) return;
    c_.forms.show(QStringLiteral("frmInputBox"), true);
    const QString name = st.SelRezName.trimmed();
    if (name.isEmpty()) return;
    // Both tables or neither: a database that refuses the write loses nothing.
    Database& db = c_.db();
    try {
        db.BeginTrans();
        if (!saveToTable(QStringLiteral("tblDefValues"), true, name, st.SelRezDescription)) {
            db.Rollback();
            return;
        }
        saveToTable(QStringLiteral("tblCustValues"), false, name, st.SelRezDescription);
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
bool FrmAD9888::saveToTable(const QString& table, bool first, const QString& name,
                            const QString& description) {
    Recordset rs = c_.db().OpenRecordset(table);
    rs.setIndex(QStringLiteral("Name"));
    const int count = rs.RecordCount();
    rs.Seek(QStringLiteral("="), name);
    if (rs.NoMatch()) {
        if (first && c_.dialogs.messageBox(QStringLiteral("Are you sure to add new settings?"),
                                           MsgButtons::YesNoCancel,
                                           QStringLiteral("Add Settings to Database"),
                                           MsgIcon::Question) != MsgResult::Yes) {
            rs.Close();
            return false;
        }
        rs.AddNew();
        rs.Fields(QStringLiteral("NN")).setValue(count + 1);
        rs.Fields(QStringLiteral("Name")).setValue(name);
        rs.Fields(QStringLiteral("NameSort")).setValue(NormalizeRez(name));
        rs.Fields(QStringLiteral("Vertical")).setValue(int(RezHeight(name)));
    } else {
        if (first && c_.dialogs.messageBox(QStringLiteral("Are you sure to change Settings of ") +
                                               name + QStringLiteral("?"),
                                           MsgButtons::YesNoCancel,
                                           QStringLiteral("Change Settings to Database"),
                                           MsgIcon::Question) != MsgResult::Yes) {
            rs.Close();
            return false;
        }
        rs.Edit();
    }
    if (!description.isEmpty()) rs.Fields(QStringLiteral("Description")).setValue(description);
    rs.Fields(QStringLiteral("Mark")).setValue(QString());
    // Registers 01H to 17H from the register rows; the status register 14H is left alone.
    for (int i = 0; i < int(kAd9888Map.loadOrder.size()); ++i) {
        const int member = kAd9888Map.loadOrder[size_t(i)];
        const int reg = kAd9888Map.rows[size_t(member)].reg;
        if (reg == 0x14) continue;
        rs.Fields(columnOf(reg)).setValue(int(byteOf(member)));
    }
    rs.Update();
    rs.Close();
    return true;
}

} // namespace velmorak
