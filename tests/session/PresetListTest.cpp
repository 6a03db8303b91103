// The list of resolutions over the virtual card and a copy of the seed database.
#include "SessionBench.h"

#include "registers/FrmAD9888.h"
#include "resdb/Database.h"
#include "resdb/FrmSettings.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

void pick(FrmSettings& f, const QString& name) {
    const int i = f.cboPresets.indexOf(name);
    ASSERT_GE(i, 0) << name.toStdString();
    f.cboPresets.userSelect(i);
}

void sql(SessionBench& b, const char* text) {
    b.session->DbRez->Execute(QString::fromLatin1(text));
}

int rows(SessionBench& b, const char* table, const char* name) {
    Recordset rs = b.session->DbRez->OpenRecordset(table);
    rs.setIndex("Name");
    rs.Seek("=", QString::fromLatin1(name));
    return rs.NoMatch() ? 0 : 1;
}

// Time of each frame sent, from the wire trace.
QList<qint64> sentTimes(SessionBench& b) {
    QList<qint64> out;
    for (const QString& l : b.link.trace())
        if (l.contains(" > ")) out << l.section(' ', 0, 0).toLongLong();
    return out;
}

// A stand-in for the transmitter editor: only its read button matters here.
class FakeTransmitter : public Form {
  public:
    FakeTransmitter() : Form("frmTransmitter") {
        cmdRead.onClick.connect([this] { ++reads; });
    }
    Button& cmdRead = add<Button>("cmdRead");
    int reads = 0;
};

} // namespace

TEST(PresetList, OpensWithTheCardsResolution) {
    struct Row {
        const char* name;
        bool connect;
        const char* source;
        int shortReply;
        const char* selected;
        const char* curPreset;
        bool load, adjust;
    };
    const Row table[] = {
        {"no card", false, "1024x768x75", 0, "640x480x60", "640x480x60", false, false},
        {"card sees a known mode", true, "1024x768x75", 0, "1024x768x75", "1024x768x75", true,
         true},
        {"card sees nothing", true, "", 0, "640x480x60", "", true, false},
        {"short block", true, "1024x768x75", 20, "640x480x60", "640x480x60", true, true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SimLink::Card c;
        c.source = row.source;
        SessionBench b(c);
        ASSERT_TRUE(b.start());
        if (!row.connect) b.frm().cmdDisconnect.click();
        b.link.shortReplies(row.shortReply);
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        EXPECT_EQ(f.caption(), "List of Resolutions");
        EXPECT_EQ(f.cboPresets.listCount(), 25);
        EXPECT_EQ(f.cboPresets.text().toStdString(), row.selected);
        EXPECT_EQ(b.st().CurPreset.toStdString(), row.curPreset);
        EXPECT_EQ(b.st().CurPresetIndex, f.cboPresets.indexOf(row.selected));
        EXPECT_EQ(f.DBGrid1.textMatrix(f.DBGrid1.row(), 0).toStdString(), row.selected);
        EXPECT_EQ(f.cmdLoad.enabled(), row.load);
        EXPECT_EQ(f.cmdAdjust.enabled(), row.adjust);
        EXPECT_FALSE(f.cmdRemove.visible());
        EXPECT_FALSE(f.txtMsg.visible());
        EXPECT_TRUE(f.mnuPrint.enabled());
    }
}

// The grid shows every column of the stored query, live rows only, through a cursor that stays
// open until the window closes.
TEST(PresetList, GridHoldsItsCursorWhileOpen) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    sql(b, "UPDATE tblDefValues SET Mark = 'D' WHERE Name = '800x600x56';");
    FrmSettings& f = b.open<FrmSettings>("frmSettings");
    EXPECT_EQ(f.DBGrid1.rows(), 25); // header + 24 live rows
    EXPECT_EQ(f.DBGrid1.cols(), 36); // Name, Description, 34 registers
    EXPECT_EQ(f.DBGrid1.textMatrix(0, 0), "Name");
    EXPECT_EQ(f.DBGrid1.textMatrix(0, 2), "01");
    EXPECT_EQ(f.DBGrid1.textMatrix(0, 35), "39H");
    EXPECT_EQ(f.DBGrid1.textMatrix(1, 0), "640x480x60");
    EXPECT_EQ(f.DBGrid1.textMatrix(1, 2), "49"); // divisor 799: 31H
    EXPECT_EQ(f.cboPresets.indexOf("800x600x56"), -1);
    EXPECT_EQ(f.Data1().kind(), Recordset::Kind::Query);
    f.cmdClose.click();
    EXPECT_EQ(f.Data1().kind(), Recordset::Kind::Closed);
}

TEST(PresetList, PlacedFromTheSavedLayout) {
    struct Row {
        const char* saved; // null: none
        int left, top;
    };
    // Screen 1280x1024, window 760x460.
    const Row table[] = {
        {nullptr, 260, 282}, {"100,200", 100, 200}, {"-5,-9", 0, 0}, {"5000,4000", 520, 564}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.saved ? row.saved : "none");
        SessionBench b;
        if (row.saved) b.settings->save("frmSettings", "Layout", row.saved);
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        EXPECT_EQ(f.left(), row.left);
        EXPECT_EQ(f.top(), row.top);
        f.move(333, 44);
        f.mnuExit.click();
        EXPECT_FALSE(b.session->forms.isLoaded("frmSettings"));
        EXPECT_EQ(b.settings->get("frmSettings", "Layout"), "333,44");
    }
}

// Both blocks go to the card in order with their pauses; each read-back judges its block, and
// the transmitter's verdict is the one left on the line.
TEST(PresetList, LoadWritesBothBlocksAndJudgesThem) {
    struct Row {
        const char* name;
        int chip, reg, value; // a register the card keeps at value (chip 0: none)
        const char* first;
        const char* second;
    };
    // 640x480x60: AD9888 01H 31H, 02H F0H, 17H 00H; transmitter 08H BFH, 36H..39H 80 02 E0 01.
    const Row table[] = {
        {"card takes all", 0, 0, 0, "Load OK", "Load OK"},
        {"register 17H kept", 32, 0x17, 0x55, "Load OK", "Load OK"},
        {"register 0EH kept", 32, 0x0E, 0x00, "Load Failed", "Load OK"},
        {"08H differs in bit 7 only", 96, 0x08, 0x3F, "Load OK", "Load OK"},
        {"08H differs in bit 0", 96, 0x08, 0xBE, "Load OK", "Load Failed"},
        {"39H kept", 96, 0x39, 0x07, "Load OK", "Load Failed"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        ASSERT_TRUE(b.start());
        if (row.chip) {
            b.link.setReg(row.chip, row.reg, row.value);
            b.link.card().setRefusedRegister(row.chip, row.reg);
        }
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        pick(f, "640x480x60");
        QStringList verdicts;
        QList<qint64> shown;
        f.txtMsg.onChange.connect([&] { verdicts << f.txtMsg.text(); });
        f.txtMsg.onPropertyChanged.connect([&](Prop p) {
            if (p == Prop::Visible) shown << b.link.host.now();
        });
        b.link.clearTrace();
        f.cmdLoad.click();
        EXPECT_EQ(b.link.dialogs.asked().back().title, "Load Settings to the Card");
        EXPECT_EQ(b.link.dialogs.asked().back().text,
                  "Are you sure to load Settings of 640x480x60?");
        const QStringList sent = b.link.sent();
        ASSERT_EQ(sent.size(), 6);
        EXPECT_EQ(sent[0].left(24), "57 52 45 45 20 FF 31 F0 ");
        EXPECT_EQ(QByteArray::fromHex(sent[0].toLatin1()).size(), 6 + 23);
        EXPECT_EQ(sent[1], "52 44 45 45 20 FF");
        EXPECT_EQ(sent[2], "52 44 45 45 20 FE");
        EXPECT_EQ(sent[3].left(24), "57 52 45 45 60 FF BF 00 ");
        EXPECT_TRUE(sent[3].endsWith("80 02 E0 01"));
        EXPECT_EQ(QByteArray::fromHex(sent[3].toLatin1()).size(), 6 + 11);
        EXPECT_EQ(sent[4], "52 44 45 45 60 FF");
        EXPECT_EQ(sent[5], "52 44 45 45 60 FE");
        // The card gets 800 ms after each block write before the read.
        const QList<qint64> t = sentTimes(b);
        EXPECT_EQ(t[1] - t[0], 800);
        EXPECT_EQ(t[4] - t[3], 800);
        // The line changes only when the second verdict differs from the first.
        QStringList expected{row.first};
        if (QString(row.second) != row.first) expected << row.second;
        EXPECT_EQ(verdicts, expected);
        EXPECT_EQ(f.txtMsg.text(), row.second);
        // One pump to draw it, then the 1000 ms hold.
        ASSERT_EQ(shown.size(), 2);
        EXPECT_EQ(shown[1] - shown[0], 1001);
        EXPECT_FALSE(f.txtMsg.visible());
        EXPECT_TRUE(f.cmdLoad.enabled());
        EXPECT_EQ(b.st().ChipBase, 96);
        // The card holds the row, but for what it keeps.
        EXPECT_EQ(b.link.reg(32, 0x01), 0x31);
        EXPECT_EQ(b.link.reg(96, 0x37), 0x02);
        if (row.chip) {
            EXPECT_EQ(b.link.reg(row.chip, row.reg), row.value);
        }
    }
}

TEST(PresetList, LoadAnsweredNoSendsNothing) {
    for (MsgResult answer : {MsgResult::No, MsgResult::Cancel}) {
        SessionBench b;
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        b.link.clearTrace();
        b.link.dialogs.answer(answer);
        f.cmdLoad.click();
        EXPECT_TRUE(b.link.sent().isEmpty());
        EXPECT_TRUE(f.cmdLoad.enabled());
    }
}

// Open editors read their chips again before the result is shown.
TEST(PresetList, LoadMakesOpenEditorsReadAgain) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    b.session->forms.registerForm("frmTransmitter",
                                  [] { return std::make_unique<FakeTransmitter>(); });
    auto& ad = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
    auto& tx = dynamic_cast<FakeTransmitter&>(b.session->forms.show("frmTransmitter"));
    FrmSettings& f = b.open<FrmSettings>("frmSettings");
    pick(f, "640x480x60");
    b.link.clearTrace();
    bool msgShownAfterReads = false;
    f.txtMsg.onPropertyChanged.connect([&](Prop p) {
        if (p == Prop::Visible && f.txtMsg.visible()) msgShownAfterReads = tx.reads == 1;
    });
    f.cmdLoad.click();
    const QStringList sent = b.link.sent();
    ASSERT_EQ(sent.size(), 8);
    EXPECT_EQ(sent[6], "52 44 45 45 20 FF");
    EXPECT_EQ(sent[7], "52 44 45 45 20 FE");
    EXPECT_EQ(tx.reads, 1);
    EXPECT_TRUE(msgShownAfterReads);
    ASSERT_GE(ad.LastImage.size(), 3);
    EXPECT_EQ(quint8(ad.LastImage[1]), 0x31);
    EXPECT_EQ(quint8(ad.LastImage[2]), 0xF0);
}

TEST(PresetList, UnlockShowsRemoveForTheFirstCodeOnly) {
    struct Row {
        const char* typed;
        bool shown;
    };
    const Row table[] = {
        {"LUMEN", true}, {"lumen", true}, {"VOLTAR", false}, {"", false}, {"x", false}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.typed);
        SessionBench b;
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        b.link.dialogs.clear();
        b.link.dialogs.answerText(QString::fromLatin1(row.typed));
        f.previewKey(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(f.cmdRemove.visible(), row.shown);
        ASSERT_EQ(b.link.dialogs.asked().size(), 1u); // the input box, nothing said after it
        EXPECT_EQ(b.link.dialogs.asked()[0].text, "Enter your password :");
        EXPECT_EQ(b.link.dialogs.asked()[0].title, "Velmorak");
    }
}

TEST(PresetList, RemoveGuardsAndDeletes) {
    struct Row {
        const char* name;
        const char* setUp;  // SQL run before the window opens, or null
        const char* typed;  // typed into the list, or null
        const char* picked; // picked from the list, or null
        MsgResult answer;
        bool refused;          // "It can't be deleted" rather than the question
        int defLeft, custLeft; // rows of the name left in each table
        bool listed;           // still in the list afterwards
    };
    const Row table[] = {
        {"first row", nullptr, nullptr, "640x480x60", MsgResult::Yes, true, 1, 1, true},
        {"typed first row", nullptr, "640x480x60", nullptr, MsgResult::Yes, true, 1, 1, true},
        {"removed", nullptr, nullptr, "800x600x75", MsgResult::Yes, false, 0, 0, false},
        {"typed name", nullptr, "800x600x75", nullptr, MsgResult::Yes, false, 0, 0, false},
        {"answered no", nullptr, nullptr, "800x600x75", MsgResult::No, false, 1, 1, true},
        {"unknown typed name", nullptr, "999x9x9", nullptr, MsgResult::Yes, false, 0, 0, false},
        {"no customer row", "DELETE FROM tblCustValues WHERE Name = '800x600x75';", nullptr,
         "800x600x75", MsgResult::Yes, false, 0, 0, true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        ASSERT_TRUE(b.start());
        if (row.setUp) sql(b, row.setUp);
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        f.cmdRemove.setVisible(true);
        if (row.picked) pick(f, row.picked);
        if (row.typed) f.cboPresets.userEdit(row.typed);
        const QString name = f.cboPresets.text();
        const int index = f.cboPresets.listIndex();
        b.link.dialogs.clear();
        b.link.dialogs.answer(row.answer);
        f.cmdRemove.click();
        const QString asked =
            QString("Are you sure to delete '%1'?").arg(row.picked ? row.picked : row.typed);
        EXPECT_EQ(b.link.dialogs.messages(),
                  QStringList{row.refused ? QString("It can't be deleted") : asked});
        EXPECT_EQ(rows(b, "tblDefValues", name.toLatin1()), row.defLeft);
        EXPECT_EQ(rows(b, "tblCustValues", name.toLatin1()), row.custLeft);
        EXPECT_EQ(f.cboPresets.indexOf(name) >= 0, row.listed);
        // A refresh after the question puts the text of the kept index back.
        if (!row.setUp && index > 0) {
            EXPECT_EQ(f.cboPresets.text(), f.cboPresets.list(index));
        }
    }
}

// A row gone from under the cursor while it is deleted: the store's 3167 in its own words.
TEST(PresetList, RemoveOfAVanishedRow) {
    SessionBench b;
    FrmSettings& f = b.open<FrmSettings>("frmSettings");
    f.cmdRemove.setVisible(true);
    pick(f, "800x600x75");
    int writes = 0;
    b.session->DbRez->setCommitProbe([&] {
        if (++writes == 2) throw RecordDeletedError();
    });
    b.link.dialogs.clear();
    f.cmdRemove.click();
    b.session->DbRez->setCommitProbe({});
    ASSERT_EQ(b.link.dialogs.asked().size(), 2u);
    EXPECT_EQ(b.link.dialogs.asked()[1].text,
              "This record is already deleted. Click 'Refresh' to refresh the List. ");
    EXPECT_EQ(b.link.dialogs.asked()[1].title, "Velmorak");
    EXPECT_EQ(b.link.dialogs.asked()[1].buttons, MsgButtons::OKCancel);
    EXPECT_EQ(rows(b, "tblDefValues", "800x600x75"), 0);
    EXPECT_EQ(rows(b, "tblCustValues", "800x600x75"), 1); // rolled back
    EXPECT_GE(f.cboPresets.indexOf("800x600x75"), 0);     // no refresh
}

// The menu's refresh puts back the text at the kept index, the toolbar's does not.
TEST(PresetList, TheTwoRefreshes) {
    for (bool menu : {true, false}) {
        SCOPED_TRACE(menu ? "menu" : "toolbar");
        SessionBench b;
        FrmSettings& f = b.open<FrmSettings>("frmSettings");
        pick(f, "800x600x75");
        const int kept = f.cboPresets.listIndex();
        sql(b, "DELETE FROM tblDefValues WHERE Name = '640x480x60';");
        if (menu)
            f.mnuRefresh.click();
        else
            f.Toolbar1_refresh.click();
        EXPECT_EQ(f.cboPresets.listCount(), 24);
        EXPECT_EQ(f.cboPresets.indexOf("640x480x60"), -1);
        EXPECT_EQ(f.DBGrid1.rows(), 25);
        if (menu) {
            EXPECT_EQ(f.cboPresets.text(), f.cboPresets.list(kept));
            EXPECT_EQ(f.cboPresets.listIndex(), kept);
        } else {
            EXPECT_EQ(f.cboPresets.text(), "");
            EXPECT_EQ(f.cboPresets.listIndex(), -1);
        }
    }
}

TEST(PresetList, NoPrinterDisablesPrinting) {
    SessionBench b;
    b.link.dialogs.setPrinterCount(0);
    FrmSettings& f = b.open<FrmSettings>("frmSettings");
    EXPECT_FALSE(f.mnuPrint.enabled());
    EXPECT_FALSE(f.Toolbar1_print_tbl.enabled());
    EXPECT_TRUE(f.Toolbar1_refresh.enabled());
    // The keys have no such guard: their print ends before the printer dialog.
    b.link.dialogs.clear();
    f.previewKey(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(b.link.dialogs.asked().empty());
}
