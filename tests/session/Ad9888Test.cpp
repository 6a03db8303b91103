// The flat panel window against the virtual card and a copy of the seed database.
#include "SessionBench.h"

#include "link/ParamBlock.h"
#include "registers/FrmAD9888.h"
#include "resdb/Database.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::hexOf;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

// The frame of a single register write.
QString regWrite(int reg, const QByteArray& data) {
    return hexOf(QByteArray("WREE") + char(32) + char(reg) + data);
}

// Clicks the cell of a bit on a row, as a user does.
void clickBit(FrmAD9888& f, int member, int bit) {
    f.ucBitsField1(member).click(bit);
}

} // namespace

TEST(Ad9888, OpensWithTheChipRead) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    EXPECT_EQ(f.caption(), "Velmorak Optimization");
    EXPECT_EQ(b.link.sent(), (QStringList{"52 44 45 45 20 FF", "52 44 45 45 20 FE"}));
    int sum = 0;
    for (int reg = 0; reg <= 0x19; ++reg)
        sum += b.link.reg(32, reg);
    EXPECT_EQ(f.txtChSum.text(), QString::number(sum));
    // Register rows hold the chip's bytes (with the masks of their rows).
    EXPECT_EQ(f.byteOf(1), b.link.reg(32, 0x01));
    EXPECT_EQ(f.byteOf(6), b.link.reg(32, 0x05));
    EXPECT_EQ(f.byteOf(34), b.link.reg(32, 0x11));
    EXPECT_EQ(f.HScrlPLL.value(), b.link.reg(32, 1) * 16 + b.link.reg(32, 2) / 16);
    EXPECT_EQ(f.HScrlContrast.value(), f.ContrMin);
    EXPECT_EQ(f.ChkChange.value(), 0);
    EXPECT_TRUE(f.cmdRead.enabled() && f.cmdLoad.enabled());
    EXPECT_EQ(b.st().ChipBase, 32);
}

// Block B fails: the rows up to 17H are updated, the verdict is Failure, and load-on-change
// stays dead although the box is ticked.
TEST(Ad9888, ReadWithOnlyTheFirstBlock) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    f.ChkChange.click();
    EXPECT_TRUE(f.LoadOnChange);
    b.link.setReg(32, 0x11, 0x5A);
    b.link.clearTrace();
    // The first read of this click is block A; block B then finds the card silent.
    b.link.host.onPump([&b] {
        const QStringList t = b.link.trace();
        if (!t.isEmpty() && t.last().contains(" < ")) b.link.silent(true);
    });
    f.cmdRead.click();
    EXPECT_EQ(f.txtMsg.text(), "Failure");
    EXPECT_EQ(f.byteOf(34), 0x5A);
    EXPECT_FALSE(f.LoadOnChange);
    EXPECT_EQ(f.ChkChange.value(), 1);
    b.link.silent(false);
    b.link.clearTrace();
    clickBit(f, 6, 0);
    EXPECT_TRUE(b.link.sent().isEmpty());
}

TEST(Ad9888, LoadSendsTheBlockAndChecksTheFirstFourteen) {
    struct Row {
        const char* name;
        int refused; // register the card keeps, -1: none
        bool ok;
    };
    for (const Row& row : {Row{"pass", -1, true}, Row{"refused 05H", 0x05, false},
                           Row{"refused 15H, unchecked", 0x15, true}}) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
        b.link.card().setRefusedRegister(32, row.refused);
        clickBit(f, 6, 1);
        clickBit(f, 45, 7);
        const int clamp = f.byteOf(6), mode = f.byteOf(45);
        b.link.clearTrace();
        f.cmdLoad.click();
        ASSERT_GE(b.link.sent().size(), 2);
        EXPECT_TRUE(b.link.sent()[0].startsWith("57 52 45 45 20 FF"));
        EXPECT_EQ(b.link.lastSent().size(), 6);
        EXPECT_EQ(QByteArray::fromHex(b.link.sent()[0].toLatin1()).size(), 6 + 23);
        EXPECT_EQ(b.link.dialogs.messages(), row.ok ? QStringList() : QStringList{"Failure"});
        EXPECT_EQ(b.link.reg(32, 0x05) == clamp, row.refused != 0x05);
        EXPECT_EQ(b.link.reg(32, 0x15) == mode, row.refused != 0x15);
        EXPECT_EQ(f.cmdLoad.caption(), "&Load");
        EXPECT_TRUE(f.cmdLoad.enabled());
    }
}

// With load-on-change every row change writes its register at once.
TEST(Ad9888, LoadOnChangeWritesRowByRow) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    b.link.setReg(32, 0x05, 0x10);
    b.link.setReg(32, 0x0E, 0x40);
    b.link.setReg(32, 0x11, 0x5A);
    b.link.setReg(32, 0x16, 0xFE);
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    f.ChkChange.click();
    struct Row {
        int member, bit;
        int reg, value;
        int writes; // a slider row writes from its slider and from the row
    };
    for (const Row& r : {Row{6, 0, 0x05, 0x11, 2}, Row{17, 5, 0x0E, 0x60, 1},
                         Row{34, 7, 0x11, 0xDA, 2}, Row{52, 0, 0x16, 0xFF, 1}}) {
        SCOPED_TRACE(r.member);
        b.link.clearTrace();
        clickBit(f, r.member, r.bit);
        EXPECT_EQ(b.link.sent(),
                  QStringList(r.writes, regWrite(r.reg, QByteArray(1, char(r.value)))));
        EXPECT_EQ(b.link.reg(32, r.reg), r.value);
    }
    // Status rows write nothing.
    b.link.clearTrace();
    f.ucBitsField1_ClickBit(40);
    EXPECT_TRUE(b.link.sent().isEmpty());
}

// Row 1 sends 01H as a byte but 02H as the decimal text of its byte, after the slider's own
// writes.
TEST(Ad9888, RowOneSendsRegisterTwoAsText) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    f.ChkChange.click();
    f.ucBitsField1(2).WriteByte(208);
    f.ucBitsField1(1).WriteByte(104);
    f.ucBitsField1_ClickBit(2);
    b.link.clearTrace();
    clickBit(f, 1, 0); // 104 -> 105
    const QByteArray b1(1, char(105)), b2(1, char(208));
    EXPECT_EQ(b.link.sent(),
              (QStringList{regWrite(1, b1), regWrite(2, b2), regWrite(1, b1), regWrite(2, "208")}));
    EXPECT_EQ(f.txtPLLc.text(), "1693");
}

TEST(Ad9888, SlidersAndLists) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    const int m1 = f.byteOf(1), m2 = f.byteOf(2);
    f.HScrlPLL.userSetValue(4096);
    EXPECT_EQ(f.txtPLLc.text(), "4096");
    EXPECT_EQ(f.byteOf(1), m1);
    EXPECT_EQ(f.byteOf(2), m2);
    f.HScrlPLL.userSetValue(1343);
    EXPECT_EQ(f.byteOf(1), 83);
    EXPECT_EQ(f.byteOf(2), 240);
    f.HScrlPhA.userSetValue(17);
    EXPECT_EQ(f.byteOf(5), 136);
    EXPECT_EQ(f.txtPhAdj.text(), "17");
    f.cbo03_2.userSelect(5);
    EXPECT_EQ(f.byteOf(4), 40);
    EXPECT_EQ(f.byteOf(3) & 56, 40);
    f.cbo15_2.userSelect(2);
    EXPECT_EQ(f.byteOf(50), 4);
    EXPECT_EQ(f.byteOf(45) & 6, 4);
    // A field of 0 shows a text that is none of the list's items.
    f.ucBitsField1(50).WriteByte(0);
    f.ucBitsField1_ClickBit(50);
    EXPECT_EQ(f.cbo15_2.text(), " 75 MHz");
    EXPECT_EQ(f.cbo15_2.listIndex(), -1);
    // Typed divisors: spread below 4096, half to even; beyond 16 bits error 6, rows unchanged.
    const struct {
        const char* typed;
        int m1, m2; // -1: overflow
    } typed[] = {{"1000.5", 62, 128}, {"1001.5", 62, 160}, {"5000", 62, 160}, {"-1e12", -1, -1}};
    for (const auto& t : typed) {
        SCOPED_TRACE(t.typed);
        if (t.m1 < 0) {
            EXPECT_THROW(f.txtPLLc.setText(t.typed), OverflowError);
            EXPECT_EQ(f.byteOf(1), 62);
            continue;
        }
        f.txtPLLc.setText(t.typed);
        EXPECT_EQ(f.byteOf(1), t.m1);
        EXPECT_EQ(f.byteOf(2), t.m2);
    }
}

TEST(Ad9888, DefaultsTakeTheListTextAsBytes) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    b.link.clearTrace();
    f.cmdDefault.click();
    EXPECT_TRUE(b.link.sent().isEmpty());
    const QByteArray text = kAd9888Default.list;
    EXPECT_EQ(f.byteOf(0), '1');
    EXPECT_EQ(f.byteOf(1), '0');
    EXPECT_EQ(f.byteOf(2), '5' & 240);
    EXPECT_EQ(f.byteOf(3), ',' & 248);
    EXPECT_EQ(f.byteOf(6), text[5]);
    int sum = 0;
    for (int i = 0; i < 26; ++i)
        sum += text[i];
    EXPECT_EQ(f.txtChSum.text(), QString::number(sum));
    EXPECT_TRUE(f.cmdDefault.enabled() && f.cmdLoad.enabled() && f.cmdRead.enabled());
}

// A preset with load-on-change ticked: the rows change without single writes, then one block.
TEST(Ad9888, PresetWithLoadOnChange) {
    SessionBench b;
    FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
    f.ChkChange.click();
    b.link.clearTrace();
    f.control<MenuItem>("mnuPreset4").fireClick();
    EXPECT_EQ(f.byteOf(1) * 16 + f.byteOf(2) / 16, 1687);
    ASSERT_EQ(b.link.sent().size(), 2);
    EXPECT_TRUE(b.link.sent()[0].startsWith("57 52 45 45 20 FF 69 70 A0"));
    EXPECT_EQ(b.link.sent()[1], "52 44 45 45 20 FF");
    EXPECT_EQ(b.link.reg(32, 0x03), 160);
}

namespace {

struct SavedRow {
    bool exists = false;
    int reg05 = -1;
    QString description;
};

SavedRow rowIn(SessionBench& b, const QString& table, const QString& name) {
    Recordset rs = b.session->DbRez->OpenRecordset(table);
    rs.setIndex("Name");
    rs.Seek("=", name);
    SavedRow r;
    if (rs.NoMatch()) return r;
    r.exists = true;
    r.reg05 = int(rs.Fields("05").Value().toInt());
    r.description = rs.Fields("Description").Value().toString();
    return r;
}

} // namespace

// Saving asks once, for the first table, and writes both tables or neither.
TEST(Ad9888, SaveToBothTables) {
    struct Row {
        const char* name;
        const char* typed;
        MsgResult answer;
        const char* question;
        bool saved;
    };
    const Row table[] = {
        {"new name", "My panel", MsgResult::Yes, "Are you sure to add new settings?", true},
        {"new name, No", "My panel", MsgResult::No, "Are you sure to add new settings?", false},
        {"existing", "1024x768x75", MsgResult::Yes,
         "Are you sure to change Settings of 1024x768x75?", true},
        {"existing, Cancel", "1024x768x75", MsgResult::Cancel,
         "Are you sure to change Settings of 1024x768x75?", false},
        {"only in the customer table", "Cust only", MsgResult::Yes,
         "Are you sure to add new settings?", true},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        ASSERT_TRUE(b.start());
        b.session->DbRez->Execute(
            "INSERT INTO tblCustValues (NN, Name, NameSort, Vertical) VALUES (99, 'Cust only', "
            "'Cust only', 0)");
        FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
        f.ucBitsField1(6).WriteByte(77);
        const SavedRow before = rowIn(b, "tblDefValues", row.typed);
        // The name dialog answers with a name and a description.
        b.session->forms.registerForm("frmInputBox", [&b, &row]() -> std::unique_ptr<Form> {
            auto box = std::make_unique<Form>("frmInputBox");
            b.st().SelRezName = QString("  ") + row.typed + " ";
            b.st().SelRezDescription = "typed by hand";
            return box;
        });
        b.link.dialogs.answer(row.answer);
        f.cmdSave.click();
        ASSERT_EQ(b.link.dialogs.asked().size(), 1u);
        EXPECT_EQ(b.link.dialogs.asked()[0].text.toStdString(), row.question);
        for (const char* t : {"tblDefValues", "tblCustValues"}) {
            const SavedRow after = rowIn(b, t, row.typed);
            if (row.saved) {
                EXPECT_EQ(after.reg05, 77) << t;
                EXPECT_EQ(after.description, "typed by hand") << t;
            } else if (QString(t) == "tblDefValues") {
                EXPECT_EQ(after.exists, before.exists);
                EXPECT_EQ(after.reg05, before.reg05);
            }
        }
    }
}

// A row of the list goes into both chips; the verdict is the transmitter's check. The short
// image still takes its channel values: with the card's gains at 100 and the preset's at 128, one
// step up of the red gain slider (still at 100) moves the register from 128 to 101 by the
// slider's own step of 101 - 128.
TEST(Ad9888, PresetListLoadsBothChips) {
    struct Row {
        const char* name;
        int refusedTx; // transmitter register the card keeps, -1: none
        const char* verdict;
    };
    for (const Row& row : {Row{"both load", -1, "Load OK"}, Row{"37H kept", 0x37, "Load Failed"}}) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        for (int reg : {0x08, 0x09, 0x0A})
            b.link.setReg(32, reg, 100);
        FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
        b.link.card().setRefusedRegister(96, row.refusedTx);
        f.cmdPreset.click();
        EXPECT_TRUE(f.lstPresets.visible());
        const int rows = f.lstPresets.listCount();
        f.cmdPreset.click();
        EXPECT_EQ(f.lstPresets.listCount(), 2 * rows); // every click adds again
        b.link.clearTrace();
        QString seen;
        f.txtMsg.onChange.connect([&] { seen = f.txtMsg.text(); });
        f.lstPresets.userSelect(f.lstPresets.indexOf("1280x1024x60"));
        const QStringList sent = b.link.sent();
        ASSERT_EQ(sent.size(), 5);
        EXPECT_TRUE(sent[0].startsWith("57 52 45 45 20 FF 00"));
        EXPECT_EQ(sent[1], "52 44 45 45 20 FF");
        EXPECT_TRUE(sent[2].startsWith("57 52 45 45 60 FF"));
        EXPECT_EQ(sent[3], "52 44 45 45 60 FF");
        EXPECT_EQ(sent[4], "52 44 45 45 60 FE");
        EXPECT_EQ(seen.toStdString(), row.verdict);
        EXPECT_FALSE(f.txtMsg.visible() || f.lstPresets.visible());
        EXPECT_FALSE(f.LoadOnChange); // the short image left it off
        EXPECT_EQ(f.byteOf(9), 128);
        EXPECT_EQ(f.HScrlCR.value(), 100);
        f.HScrlCR.stepSmall(1);
        EXPECT_EQ(f.byteOf(9), 101);
        EXPECT_EQ(f.txtRedC.text(), "101");
    }
}

// A database that refuses the write, at once or at the second table: a message saying so, no
// row in either table, the window goes on.
TEST(Ad9888, SaveThatTheDatabaseRefuses) {
    struct Row {
        const char* name;
        const char* setUp;
        const char* undo;
        int questions;
    };
    for (const Row& row :
         {Row{"read-only", "PRAGMA query_only = ON", "PRAGMA query_only = OFF", 0},
          Row{"second table fails",
              "CREATE TRIGGER full BEFORE INSERT ON tblCustValues BEGIN SELECT RAISE(ABORT, "
              "'database or disk is full'); END",
              "DROP TRIGGER full", 1}}) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        FrmAD9888& f = b.open<FrmAD9888>("frmAD9888");
        b.session->forms.registerForm("frmInputBox", [&b]() -> std::unique_ptr<Form> {
            b.st().SelRezName = "My panel";
            return std::make_unique<Form>("frmInputBox");
        });
        b.session->DbRez->Execute(row.setUp);
        b.link.dialogs.answer(MsgResult::Yes);
        EXPECT_NO_THROW(f.cmdSave.click());
        const QStringList m = b.link.dialogs.messages();
        ASSERT_EQ(m.size(), row.questions + 1);
        EXPECT_TRUE(m.last().startsWith("The settings were not saved: ")) << m.last().toStdString();
        b.session->DbRez->Execute(row.undo);
        EXPECT_FALSE(rowIn(b, "tblDefValues", "My panel").exists);
        EXPECT_FALSE(rowIn(b, "tblCustValues", "My panel").exists);
        EXPECT_TRUE(f.cmdSave.enabled());
    }
}
