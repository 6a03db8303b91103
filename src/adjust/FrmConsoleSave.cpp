#include "adjust/FrmConsole.h"

#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "platform/Host.h"
#include "resdb/Database.h"
#include "resdb/Recordset.h"
#include "resdb/Schema.h"

namespace velmorak {

namespace {
const char* const kNoCurrent = "Unable to change Settings. No data of current resolution.";
const char* const kNoDefault = "Unable to change Settings. No data of default resolution.";
// The columns the customer row takes back from the factory row.
const char* const kDefaultColumns[] = {"01",  "02",  "04",  "05",  "06",  "08",
                                       "09",  "0AH", "0BH", "0CH", "0DH", "32H",
                                       "33H", "34H", "36H", "37H", "38H", "39H"};

Recordset seekName(Database& db, const char* table, const QString& name) {
    Recordset rs = db.OpenRecordset(QString::fromLatin1(table));
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), name);
    return rs;
}
} // namespace

void FrmConsole::setButtons(bool on) {
    for (Button* b : {&cmdDefault, &cmdSave, &cmdClose})
        b->setEnabled(on);
}

// --- default: the factory values of the resolution back into the customer row and the chips

void FrmConsole::defaultClick() {
    CardState& st = c_.st;
    QString name = st.CurPreset;
    if (connected()) {
        st.CardParams = c_.fn.ReadParams(24);
        if (!isLoaded()) return;
        if (st.CardParams.size() < 18) return box(QString::fromLatin1(kNoCurrent));
        name = c_.findRezName(st.CardParams);
    } else if (st.CurPreset.isEmpty()) {
        return box(QString::fromLatin1(kNoCurrent));
    }
    if (c_.dialogs.messageBox(
            QStringLiteral("You are about to change Settings of ") + name + QStringLiteral("? "),
            MsgButtons::OKCancel, QStringLiteral("Default Settings")) != MsgResult::OK)
        return;
    Recordset def = seekName(c_.db(), "tblDefValues", name);
    if (def.NoMatch()) {
        box(QString::fromLatin1(kNoDefault));
        def.Close();
        return;
    }
    Recordset cust = seekName(c_.db(), "tblCustValues", name);
    if (cust.NoMatch()) {
        box(QString::fromLatin1(kNoCurrent));
        cust.Close();
        def.Close();
        return;
    }
    setButtons(false);
    cust.Edit();
    for (const char* column : kDefaultColumns) {
        const QString f = QString::fromLatin1(column);
        cust.Fields(f).setValue(def.Fields(f).Value());
    }
    c_.host.pump();
    cust.Update();
    cust.Close();

    auto col = [&](const char* f) {
        return int(def.Fields(QString::fromLatin1(f)).Value().toInt());
    };
    const int div = col("01") * 16 + (col("02") & 240) / 16;
    ucScrlCoarse.setMax(qint16(div + 63));
    ucScrlCoarse.setMin(qint16(div - 63));
    ucScrlCoarse.setValue(63);
    ucScrlPhase.setValue(qint16(col("04") / 8));
    ucScrlContrast.setValue(qint16(ucScrlContrast.Max() - col("08")));
    ucScrlR.setValue(qint16(ucScrlR.Max() - col("0BH") / 2));
    ucScrlG.setValue(qint16(ucScrlG.Max() - col("0CH") / 2));
    ucScrlB.setValue(qint16(ucScrlB.Max() - col("0DH") / 2));
    ucScrlBrite.setValue(qint16((ucScrlR.Value() + ucScrlG.Value() + ucScrlB.Value()) / 3));
    const int h = (col("33H") & 1) * 256 + col("32H");
    ucScrlHPoz.setMin(qint16(h - 127));
    ucScrlHPoz.setMax(qint16(h + 127));
    ucScrlHPoz.setValue(127);
    ucScrlVPoz.setValue(qint16(col("34H") - ucScrlVPoz.Min()));
    def.Close();

    for (const Rule& r : rules()) {
        if (!isLoaded()) return;
        writeRule(r);
    }
    if (!isLoaded()) return;
    setButtons(true);
    box(QStringLiteral("Settings are changed. To save these Settings click button 'Save'"));
}

// --- save: the changed groups into the customer row, then the row into the card memory

void FrmConsole::saveClick() {
    CardState& st = c_.st;
    st.CardParams = connected() ? c_.fn.ReadParams(24) : QByteArray();
    if (!isLoaded()) return;
    if (st.CardParams.size() < 18) return box(QString::fromLatin1(kNoCurrent));
    st.CurPreset = c_.findRezName(st.CardParams);
    if (c_.dialogs.messageBox(QStringLiteral("Are you sure to change Settings of ") + st.CurPreset +
                                  QStringLiteral(" in the Card Memory?"),
                              MsgButtons::YesNoCancel,
                              QStringLiteral("Save Settings to Card Memory")) != MsgResult::Yes)
        return;
    setButtons(false);
    Recordset cust = seekName(c_.db(), "tblCustValues", st.CurPreset);
    if (cust.NoMatch()) {
        // The buttons stay disabled here.
        box(QString::fromLatin1(kNoCurrent));
        cust.Close();
        return;
    }
    saveRow(cust);
    writeCardMemory(cust);
    cust.Close();
    if (isLoaded()) setButtons(true);
}

void FrmConsole::saveRow(Recordset& rs) {
    rs.Edit();
    const int old33 = int(rs.Fields(QStringLiteral("33H")).Value().toInt());
    for (const Rule& r : rules()) {
        if (this->*r.dirty == 0) continue;
        const std::vector<int> bytes = bytesOf(r, old33 & 254);
        for (size_t i = 0; i < bytes.size(); ++i)
            rs.Fields(QString::fromLatin1(r.targets[i].column)).setValue(bytes[i]);
        // Coarse clears the phase flag and keeps its own.
        this->*r.clearedBySave = 0;
    }
    rs.Update();
}

void FrmConsole::writeCardMemory(Recordset& cust) {
    const QByteArray block = CardMemoryBlock(cust);
    Recordset codes = c_.db().OpenRecordset(QStringLiteral("tblCodesRez"));
    codes.setIndex(QStringLiteral("NameRez"));
    codes.Seek(QStringLiteral("="), c_.st.CurPreset);
    if (codes.NoMatch()) {
        box(QString::fromLatin1(kNoCurrent));
        codes.Close();
        return;
    }
    const int code = int(codes.Fields(QStringLiteral("CodeRez")).Value().toInt());
    codes.Close();
    const int address = (code - 16) * 32 + 8192;
    c_.fn.WriteDB(qint16(address / 256), qint16(address & 255), block);
}

} // namespace velmorak
