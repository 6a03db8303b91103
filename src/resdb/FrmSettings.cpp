#include "resdb/FrmSettings.h"

#include "forms/Dialogs.h"
#include "forms/Forms.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "platform/Settings.h"
#include "resdb/Database.h"
#include "resdb/RezLookup.h"
#include "resdb/Schema.h"

namespace velmorak {

namespace {

const char* const kSection = "frmSettings";
constexpr int kAd9888 = 32;
constexpr int kTransmitter = 96;

int code(const QByteArray& s, int pos) {
    return pos <= s.size() ? static_cast<unsigned char>(s.at(pos - 1)) : -1;
}

// Column widths of the grid, in pixels: the name, the description, then the registers.
int columnWidth(const QString& field) {
    if (field.compare(QLatin1String("Name"), Qt::CaseInsensitive) == 0) return 110;
    if (field.compare(QLatin1String("Description"), Qt::CaseInsensitive) == 0) return 170;
    return 44;
}

} // namespace

FrmSettings::FrmSettings(AppContext& ctx) : Form(QStringLiteral("frmSettings")), c_(ctx) {
    setCaption(QStringLiteral("List of Resolutions"));
    move(0, 0, 760, 460);
    lblCPresets.setCaption(QStringLiteral("Presets :  "));
    cmdLoad.setCaption(QStringLiteral("&Load"));
    cmdRemove.setCaption(QStringLiteral("&Remove"));
    cmdRemove.setVisible(false);
    cmdAdjust.setCaption(QStringLiteral("Ad&Justments"));
    cmdClose.setCaption(QStringLiteral("&Close"));
    txtMsg.setLocked(true);
    txtMsg.setVisible(false);
    Toolbar1_refresh.setCaption(QStringLiteral("Refresh Table"));
    Toolbar1_print_tbl.setCaption(QStringLiteral("Print Table"));
    Toolbar1_exit_tbl.setCaption(QStringLiteral("Exit"));
    for (Button* b : {&Toolbar1_refresh, &Toolbar1_print_tbl, &Toolbar1_exit_tbl})
        b->setToolTipText(b->caption());
    mnuPrint.setCaption(QStringLiteral("&Print"));
    mnuRefresh.setCaption(QStringLiteral("&Refresh"));
    mnuExit.setCaption(QStringLiteral("E&xit"));
    DBGrid1.setFixedCols(0);
    setKeyPreview(true);

    cboPresets.onClick.connect([this] { pick(); });
    cboPresets.onChange.connect([this] { pick(); });
    cmdLoad.onClick.connect([this] { loadClick(); });
    cmdRemove.onClick.connect([this] { removeClick(); });
    cmdAdjust.onClick.connect([this] { adjustClick(); });
    cmdClose.onClick.connect([this] { unload(); });
    mnuExit.onClick.connect([this] { unload(); });
    Toolbar1_exit_tbl.onClick.connect([this] { unload(); });
    mnuPrint.onClick.connect([this] { print(ResolutionTable::Default); });
    Toolbar1_print_tbl.onClick.connect([this] { print(ResolutionTable::Default); });
    mnuRefresh.onClick.connect([this] { refreshMenu(); });
    Toolbar1_refresh.onClick.connect([this] { refreshToolbar(); });
}

// --- opening and closing

void FrmSettings::formLoad() {
    CardState& st = c_.st;
    fillPresets();
    if (cboPresets.listCount() > 0) {
        cboPresets.setListIndex(0);
        st.CurPreset = cboPresets.list(0);
    }
    st.CurPresetIndex = 0;
    fillGrid();
    if (c_.dialogs.printerCount() == 0) {
        mnuPrint.setEnabled(false);
        Toolbar1_print_tbl.setEnabled(false);
    }
    cmdLoad.setEnabled(st.Connected != 0);
    cmdAdjust.setEnabled(st.Connected != 0);
    if (st.Connected) {
        st.CardParams = c_.fn.ReadParams(24);
        if (st.CardParams.size() >= 18) {
            st.CurPreset = c_.findRezName(st.CardParams);
            cmdAdjust.setEnabled(!st.CurPreset.isEmpty());
        }
    }
    for (int i = 0; i < cboPresets.listCount(); ++i)
        if (cboPresets.list(i) == st.CurPreset) {
            cboPresets.setListIndex(i);
            st.CurPresetIndex = qint16(i);
            break;
        }
    place();
}

void FrmSettings::fillPresets() {
    for (const QString& name : ListRezNames(c_.db(), QStringLiteral("tblDefValues"), true))
        cboPresets.addItem(name);
}

// The grid shows the stored query through Data1, every column, one row a resolution.
void FrmSettings::fillGrid() {
    data1_.Close();
    data1_ = c_.db().OpenRecordset(QStringLiteral("tblDefValuesQ"));
    int n = 0;
    if (!(data1_.Eof() && data1_.Bof())) {
        data1_.MoveLast();
        n = data1_.RecordCount();
        data1_.MoveFirst();
    }
    const QStringList fields = data1_.FieldNames();
    DBGrid1.setFixedRows(0);
    DBGrid1.setRows(n + 1);
    DBGrid1.setCols(int(fields.size()));
    DBGrid1.setFixedRows(1);
    DBGrid1.clear();
    for (int col = 0; col < fields.size(); ++col) {
        DBGrid1.setTextMatrix(0, col, fields[col]);
        DBGrid1.setColWidth(col, columnWidth(fields[col]));
    }
    for (int row = 1; row <= n; ++row) {
        for (int col = 0; col < fields.size(); ++col) {
            const DbValue v = data1_.Fields(col).Value();
            DBGrid1.setTextMatrix(row, col, v.isNull() ? QString() : v.toString());
        }
        if (row < n) data1_.MoveNext();
    }
    if (n > 0) data1_.MoveFirst();
}

// The saved place, or the middle of the screen; always wholly on it.
void FrmSettings::place() {
    const QString layout = c_.settings.get(QString::fromLatin1(kSection), QStringLiteral("Layout"));
    const int maxLeft = c_.screen.width() - width();
    const int maxTop = c_.screen.height() - height();
    const int comma = int(layout.indexOf(u','));
    if (comma < 0) {
        move(maxLeft / 2, maxTop / 2);
        return;
    }
    const int x = std::max(0, ToInt32(Val(layout.left(comma)), OnOverflow::Clamp));
    const int y = std::max(0, ToInt32(Val(layout.mid(comma + 1)), OnOverflow::Clamp));
    move(std::min(x, maxLeft), std::min(y, maxTop));
}

void FrmSettings::formUnload(bool& cancel) {
    (void)cancel;
    c_.settings.save(QString::fromLatin1(kSection), QStringLiteral("Layout"),
                     QStringLiteral("%1,%2").arg(left()).arg(top()));
    data1_.Close();
}

void FrmSettings::pick() {
    c_.st.CurPresetIndex = qint16(cboPresets.listIndex());
    const int i = cboPresets.listIndex();
    c_.st.CurPreset = i >= 0 ? cboPresets.list(i) : QString();
    // The grid lists the same rows in the same order: its cursor row follows the pick.
    if (i >= 0 && i + 1 < DBGrid1.rows()) DBGrid1.setRow(i + 1);
}

// --- load into the card

void FrmSettings::loadClick() {
    CardState& st = c_.st;
    cmdLoad.setEnabled(false);
    Recordset rs;
    try {
        rs = c_.db().OpenRecordset(QStringLiteral("tblDefValues"));
        rs.setIndex(QStringLiteral("Name"));
        pick();
        const MsgResult r = c_.dialogs.messageBox(
            QStringLiteral("Are you sure to load Settings of ") + st.CurPreset +
                QStringLiteral("?"),
            MsgButtons::YesNoCancel, QStringLiteral("Load Settings to the Card"));
        if (r == MsgResult::Yes) {
            // Not tested: with no such row the reads below fail with no current record.
            rs.Seek(QStringLiteral("="), st.CurPreset);
            loadBlocks(rs);
        }
    } catch (...) {
        rs.Close();
        cmdLoad.setEnabled(true);
        throw;
    }
    rs.Close();
    cmdLoad.setEnabled(true);
}

// Both blocks to the card and read back; the transmitter's verdict stays on the line.
void FrmSettings::loadBlocks(Recordset& rs) {
    CardState& st = c_.st;
    ModFunctions& fn = c_.fn;

    const QByteArray ad = AD9888LoadBlock(rs);
    st.ChipBase = kAd9888;
    fn.WriteEEBlock(kAd9888, ad);
    QByteArray reply = fn.ReadEE(kAd9888, 62).left(24);
    reply += fn.ReadEE(kAd9888, 8).left(2);
    // Position 1 is register 00H, which the block does not hold: 01H..0EH are judged.
    txtMsg.setText(reply.mid(1, 14) == ad.left(14) ? QStringLiteral("Load OK")
                                                   : QStringLiteral("Load Failed"));

    const QByteArray tx = TransmitterLoadBlock(rs);
    st.ChipBase = kTransmitter;
    fn.WriteEEBlock(kTransmitter, tx);
    reply = fn.ReadEE(kTransmitter, 3).left(15);
    reply += fn.ReadEE(kTransmitter, 8).left(12);
    // Register 08H without its top bit, and 36H..39H.
    const bool modeOk = code(reply, 9) >= 0 && (code(reply, 9) & 127) == (code(tx, 1) & 127);
    const bool okTx = modeOk && reply.mid(19, 4) == tx.mid(7, 4);
    txtMsg.setText(okTx ? QStringLiteral("Load OK") : QStringLiteral("Load Failed"));

    rereadEditors();
    txtMsg.setVisible(true);
    c_.host.pump();
    c_.host.sleep(1000);
    txtMsg.setVisible(false);
}

// Open editors show what the card now holds.
void FrmSettings::rereadEditors() {
    for (Form* f : c_.forms.forms()) {
        const QString& n = f->name();
        if (n == QLatin1String("frmAD9888") || n == QLatin1String("frmTransmitter")) {
            if (auto* read = dynamic_cast<Button*>(f->find(QStringLiteral("cmdRead"))))
                read->fireClick();
        } else if (n == QLatin1String("frmConsole")) {
            f->reload();
        }
    }
}

// --- remove, after the unlock

void FrmSettings::removeClick() {
    int index = cboPresets.listIndex();
    if (index == -1) {
        // A typed name: the search counter is the index tested below.
        for (index = 0; index < cboPresets.listCount(); ++index)
            if (cboPresets.list(index) == cboPresets.text()) {
                cboPresets.setListIndex(index);
                break;
            }
    }
    if (index < 1) {
        c_.dialogs.messageBox(index == 0 ? QStringLiteral("It can't be deleted")
                                         : QStringLiteral("There is no row selected"),
                              MsgButtons::OKCancel);
        return;
    }
    const QString name = cboPresets.text();
    if (c_.dialogs.messageBox(QStringLiteral("Are you sure to delete '") + name +
                                  QStringLiteral("'?"),
                              MsgButtons::YesNoCancel) != MsgResult::Yes) {
        refreshMenu();
        return;
    }
    Recordset rs;
    try {
        for (const char* table : {"tblDefValues", "tblCustValues"})
            if (!removeFrom(QString::fromLatin1(table), rs)) return;
    } catch (const DbError& e) {
        rs.Close();
        if (e.Number() == DbErr::RecordDeleted)
            c_.dialogs.messageBox(QStringLiteral("This record is already deleted. Click "
                                                 "'Refresh' to refresh the List. "),
                                  MsgButtons::OKCancel, c_.st.AppTitle);
        else
            c_.dialogs.messageBox(QStringLiteral("The row was not removed: ") + e.Description(),
                                  MsgButtons::OK, c_.st.AppTitle, MsgIcon::Critical);
        return;
    }
    refreshMenu();
}

// False when the table has no such row: the cursor is closed and the removal ends there.
bool FrmSettings::removeFrom(const QString& table, Recordset& rs) {
    rs = c_.db().OpenRecordset(table);
    rs.setIndex(QStringLiteral("Name"));
    rs.Seek(QStringLiteral("="), cboPresets.text());
    if (rs.NoMatch()) {
        rs.Close();
        return false;
    }
    rs.Delete();
    c_.host.pump();
    rs.Close();
    return true;
}

void FrmSettings::adjustClick() {
    pick();
    if (c_.forms.isRegistered(QStringLiteral("frmConsole")))
        c_.forms.show(QStringLiteral("frmConsole"));
}

// --- refresh: the menu keeps the picked text, the toolbar does not

void FrmSettings::refreshMenu() {
    const int kept = cboPresets.listIndex();
    cboPresets.clear();
    fillPresets();
    fillGrid();
    cboPresets.setText(kept >= 0 && kept < cboPresets.listCount() ? cboPresets.list(kept)
                                                                  : QString());
}

void FrmSettings::refreshToolbar() {
    cboPresets.clear();
    fillPresets();
    fillGrid();
}

// --- printing and keys

void FrmSettings::print(ResolutionTable which) {
    printResolutionTable(which, c_.db(), c_.dialogs, c_.st.AppTitle);
}

void FrmSettings::keyDown(int& keyCode, Qt::KeyboardModifiers mods) {
    const auto ctrlShift = Qt::ControlModifier | Qt::ShiftModifier;
    if ((mods & ctrlShift) != ctrlShift) return;
    if (keyCode == Qt::Key_P)
        print(ResolutionTable::Default);
    else if (keyCode == Qt::Key_K)
        print(ResolutionTable::Customer);
    else if (keyCode == Qt::Key_E)
        unlock();
}

void FrmSettings::unlock() {
    const auto answer =
        c_.dialogs.inputBox(QStringLiteral("Enter your password :"), c_.st.AppTitle);
    if (answer && !answer->isEmpty() && answer->toUpper() == QLatin1String("LUMEN"))
        cmdRemove.setVisible(true);
}

} // namespace velmorak
