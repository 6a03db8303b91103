// The transmitter window against the virtual card and a copy of the seed database.
#include "SessionBench.h"

#include "registers/FrmTransmitter.h"
#include "registers/MapForm.h"
#include "resdb/Database.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

constexpr int kTx = 96;

// The frame of a single register write, in hex.
QString regWrite(int reg, int value) {
    return velmorak::test::hexOf(QByteArray("WREE") + char(kTx) + char(reg) + char(value));
}

} // namespace

// The card starts with 47 1D 21 0A 02 in 00H-04H, 08H = BEH, 0AH = 80H, and the source of
// 1024x768 in 3AH-3DH.
TEST(Transmitter, OpensWithTheChipRead) {
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    EXPECT_EQ(f.caption(), "PanelLink Transmitter");
    EXPECT_EQ(b.link.sent(), (QStringList{"52 44 45 45 60 FF", "52 44 45 45 60 FE"}));
    EXPECT_EQ(f.txtChSum.text(), "470"); // 71+29+33+10+2+190+128 + 4+3
    EXPECT_EQ(f.txt1.text(), "1D47 h  ");
    EXPECT_EQ(f.txt3.text(), "A21 h  ");
    EXPECT_EQ(f.txt3B.text(), "1024");
    EXPECT_EQ(f.txt3D.text(), "768");
    EXPECT_EQ(f.byteOf(8), 0xBE);
    EXPECT_EQ(f.HScrl0A_1.value(), 4);
    EXPECT_EQ(f.txt0A_1.text(), "4");
    // Words in the "Control" column, grid row = member - 7.
    EXPECT_EQ(f.FlexGr1.textMatrix(1, 3), "T.M.D.S. circuitry enabled");
    EXPECT_EQ(f.FlexGr1.textMatrix(5, 3), " 24-bit w/single-edge clock");
    EXPECT_EQ(f.FlexGr1.textMatrix(7, 3), "Power down");
    EXPECT_EQ(f.controlCell(20), "Remain same"); // built as "Remains same"
    EXPECT_EQ(f.controlCell(16), "Disabled. MSEN output high");
    EXPECT_EQ(f.cbo09.listIndex(), 0);
    EXPECT_EQ(f.txtDevAddr.text(), "96");
    EXPECT_EQ(f.ChkChange.value(), 0);
    EXPECT_TRUE(f.cmdRead.enabled() && f.cmdLoad.enabled());
    EXPECT_EQ(b.st().ChipBase, 96);
}

TEST(Transmitter, MenusWithoutAnEnabledButtonSayNoConnection) {
    {
        SessionBench b({}, QString());
        FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
        EXPECT_TRUE(b.link.sent().isEmpty());
        EXPECT_FALSE(f.cmdRead.enabled() || f.cmdLoad.enabled());
        f.mnuRead.click();
        EXPECT_EQ(b.link.dialogs.messages(), QStringList{"No USB connection"});
    }
    // Load on change disables cmdLoad, and the menu judges by the button.
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    f.ChkChange.click();
    b.link.clearTrace();
    f.mnuLoad.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"No USB connection"});
    EXPECT_TRUE(b.link.sent().isEmpty());
}

TEST(Transmitter, ReadTakesBothRepliesOrFails) {
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    b.link.setReg(kTx, 0x34, 0x25);
    b.link.setReg(kTx, 0x09, 0x04); // receiver detected
    QStringList seen;
    f.txtMsg.onChange.connect([&] { seen << f.txtMsg.text(); });
    b.link.clearTrace();
    const qint64 start = b.link.host.now();
    f.cmdRead.click();
    EXPECT_EQ(b.link.sent(), (QStringList{"52 44 45 45 60 FF", "52 44 45 45 60 FE"}));
    EXPECT_EQ(seen, QStringList{"Read OK"});
    EXPECT_EQ(f.byteOf(33), 0x25);
    EXPECT_EQ(f.HScrl34.value(), 0x25);
    EXPECT_EQ(f.controlCell(18), "Powered-on receiver detected");
    EXPECT_GE(b.link.host.now() - start, 2100);
    EXPECT_FALSE(f.txtMsg.visible());

    // A silent card: Failure, the rows keep what they had.
    b.link.setReg(kTx, 0x34, 0x11);
    b.link.silent(true);
    f.cmdRead.click();
    EXPECT_EQ(seen.last(), "Failure");
    EXPECT_EQ(f.byteOf(33), 0x25);
    EXPECT_TRUE(f.cmdRead.enabled() && f.cmdLoad.enabled());
}

// The check compares 08H without bit 7 and 36H to 39H only.
TEST(Transmitter, LoadChecksTheMaskedRegisters) {
    struct Row {
        const char* name;
        int refused; // register the card keeps
        std::function<void(FrmTransmitter&)> change;
        const char* verdict;
    };
    const Row table[] = {
        {"36H loads", -1, [](FrmTransmitter& f) { f.ucBitsField1(35).click(0); }, "Load OK"},
        {"08H kept, bit 7 only", 0x08, [](FrmTransmitter& f) { f.ucBitsField1(8).WriteByte(0x3E); },
         "Load OK"},
        {"08H kept, bit 6", 0x08, [](FrmTransmitter& f) { f.ucBitsField1(8).click(6); }, "Failure"},
        {"09H kept, not compared", 0x09, [](FrmTransmitter& f) { f.ucBitsField1(17).click(3); },
         "Load OK"},
        {"37H kept", 0x37, [](FrmTransmitter& f) { f.ucBitsField1(36).click(0); }, "Failure"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
        b.link.card().setRefusedRegister(kTx, row.refused);
        row.change(f);
        QStringList seen;
        f.txtMsg.onChange.connect([&] { seen << f.txtMsg.text(); });
        b.link.clearTrace();
        f.cmdLoad.click();
        const QStringList sent = b.link.sent();
        ASSERT_EQ(sent.size(), 3);
        EXPECT_EQ(QByteArray::fromHex(sent[0].toLatin1()).size(), 6 + 11);
        EXPECT_TRUE(sent[0].startsWith("57 52 45 45 60 FF"));
        EXPECT_EQ(sent[1], "52 44 45 45 60 FF");
        EXPECT_EQ(sent[2], "52 44 45 45 60 FE");
        EXPECT_EQ(seen, QStringList{row.verdict});
        EXPECT_EQ(f.cmdLoad.caption(), "&Load");
        EXPECT_TRUE(f.cmdLoad.enabled() && f.cmdRead.enabled() && f.cmdDefault.enabled());
        // The rows show what the chip holds now.
        for (int m : {8, 15, 35, 36})
            EXPECT_EQ(f.byteOf(m), b.link.reg(kTx, kTransmitterMap.rows[size_t(m)].reg)) << m;
    }
}

// With load on change every row change writes its register at once; rows with a slider write
// it from the slider's handler too.
TEST(Transmitter, LoadOnChangeWritesRowByRow) {
    struct Row {
        int member, bit;
        QStringList frames;
        int reg, value; // the card's register afterwards
    };
    const Row table[] = {
        {8, 6, {regWrite(0x08, 0xFE)}, 0x08, 0xFE},
        {9, 5, {regWrite(0x08, 0x9E)}, 0x08, 0x9E},
        {20, 0, {regWrite(0x09, 0x01)}, 0x09, 0x01},
        {16, 4, {regWrite(0x09, 0x10)}, 0x09, 0x10},
        {21, 5, {regWrite(0x0A, 0xA0), regWrite(0x0A, 0xA0)}, 0x0A, 0xA0},
        {22, 4, {regWrite(0x0A, 0x90)}, 0x0A, 0x90},
        {23, 1, {regWrite(0x0A, 0x82), regWrite(0x0A, 0x82)}, 0x0A, 0x82},
        {28, 0, {regWrite(0x32, 0x01), regWrite(0x33, 0x00), regWrite(0x32, 0x01)}, 0x32, 0x01},
        {29, 0, {regWrite(0x32, 0x00), regWrite(0x33, 0x01), regWrite(0x33, 0x01)}, 0x33, 0x01},
        {30, 4, {regWrite(0x33, 0x10)}, 0x33, 0x10},
        {32, 6, {regWrite(0x33, 0x40)}, 0x33, 0x40},
        {33, 0, {regWrite(0x34, 0x01), regWrite(0x34, 0x01)}, 0x34, 0x01},
        {36, 1, {regWrite(0x36, 0x00), regWrite(0x37, 0x02), regWrite(0x37, 0x02)}, 0x37, 0x02},
        {25, 3, {}, 0x0C, 0x00}, // a reserved register, live but with no reaction
    };
    for (const Row& r : table) {
        SCOPED_TRACE(r.member);
        SessionBench b;
        FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
        f.ChkChange.click();
        b.link.clearTrace();
        f.ucBitsField1(r.member).click(r.bit);
        EXPECT_EQ(b.link.sent(), r.frames);
        EXPECT_EQ(b.link.reg(kTx, r.reg), r.value);
    }
}

TEST(Transmitter, WordsAndSlidersFollowTheRows) {
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    f.ChkChange.click();
    b.link.clearTrace();
    // HScrl32 at 256: the ninth bit in 33H, 32H cleared.
    f.HScrl32.userSetValue(256);
    EXPECT_EQ(f.byteOf(28), 0);
    EXPECT_EQ(f.byteOf(29), 1);
    EXPECT_EQ(f.byteOf(32) & 1, 1);
    EXPECT_EQ(f.txt33.text(), "256");
    EXPECT_EQ(b.link.sent(), (QStringList{regWrite(0x32, 0), regWrite(0x33, 1)}));
    f.HScrl36.userSetValue(1280);
    EXPECT_EQ(f.byteOf(35), 0);
    EXPECT_EQ(f.byteOf(36), 5);
    EXPECT_EQ(f.txt37.text(), "1280");
    f.HScrl0A_2.userSetValue(5);
    EXPECT_EQ(f.byteOf(23), 10);
    EXPECT_EQ(f.byteOf(21), 0x8A);
    // MSEL field: a list choice writes 09H; values 4 to 7 have no word.
    b.link.clearTrace();
    f.cbo09.userSelect(3);
    EXPECT_EQ(f.byteOf(16), 0x30);
    EXPECT_EQ(b.link.sent(), QStringList{regWrite(0x09, 0x30)});
    f.ucBitsField1(16).click(6);
    EXPECT_EQ(f.controlCell(16), "NA");
    EXPECT_EQ(f.cbo09.text(), "NA");
    EXPECT_EQ(b.link.reg(kTx, 0x09), 0x70);
    // Status bits show the chip's word, 40H the count of 3AH and 3BH.
    f.ucBitsField1(19).WriteByte(2);
    f.ucBitsField1_ClickBit(19);
    EXPECT_EQ(f.controlCell(19), "High level on EDGE/HTPLG (pin 9)");
    f.ucBitsField1(39).WriteByte(0x20);
    f.ucBitsField1(40).WriteByte(0x13);
    f.ucBitsField1_ClickBit(40);
    EXPECT_EQ(f.txt3B.text(), "800"); // (0x13 & 15) * 256 + 0x20
}

TEST(Transmitter, DefaultsParseTheList) {
    for (const bool loadOnChange : {false, true}) {
        SCOPED_TRACE(loadOnChange);
        SessionBench b;
        FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
        if (loadOnChange) f.ChkChange.click();
        b.link.clearTrace();
        f.cmdDefault.click();
        EXPECT_EQ(f.byteOf(8), 190);
        EXPECT_EQ(f.byteOf(21), 128);
        EXPECT_EQ(f.byteOf(42), 3); // 3DH is past the list: 768 >> 8
        // After a load the rows show the chip again: its identity, and 3AH of the source.
        EXPECT_EQ(f.byteOf(0), loadOnChange ? 0x47 : 0);
        EXPECT_EQ(f.byteOf(40), loadOnChange ? 4 : 0); // 3BH, number 25
        EXPECT_EQ(f.txt1.text(), loadOnChange ? "1D47 h  " : "00 h  ");
        EXPECT_EQ(f.controlCell(14), "Power down");
        EXPECT_EQ(f.controlCell(13), "Rising edge of IDCK+");
        EXPECT_EQ(f.LoadOnChange, loadOnChange);
        // Nothing goes out one register at a time; with load on change, one block load.
        const QStringList block{"57 52 45 45 60 FF BE 00 80 00 00 00 00 00 00 00 00",
                                "52 44 45 45 60 FF", "52 44 45 45 60 FE"};
        EXPECT_EQ(b.link.sent(), loadOnChange ? block : QStringList());
        EXPECT_TRUE(f.cmdDefault.enabled() && f.cmdLoad.enabled() && f.cmdRead.enabled());
    }
}

TEST(Transmitter, ChangeBoxWakesTheReservedRegisters) {
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    for (int m = 24; m <= 27; ++m)
        EXPECT_EQ(backs(f.ucBitsField1(m)), "YYYYYYYY") << m;
    f.ChkChange.click();
    EXPECT_TRUE(f.LoadOnChange);
    EXPECT_FALSE(f.cmdLoad.enabled());
    for (int m = 25; m <= 27; ++m)
        EXPECT_EQ(backs(f.ucBitsField1(m)), "WWWWWWWY") << m;
    EXPECT_EQ(backs(f.ucBitsField1(24)), "YYYYYYYY");
    f.ucBitsField1(26).click(7);
    EXPECT_EQ(f.byteOf(26), 128);
    f.ChkChange.click();
    EXPECT_FALSE(f.LoadOnChange);
    EXPECT_TRUE(f.cmdLoad.enabled());
    for (int m = 25; m <= 27; ++m) {
        EXPECT_EQ(backs(f.ucBitsField1(m)), "YYYYYYYY") << m;
        EXPECT_FALSE(f.ucBitsField1(m).txtBitEnabled(5)) << m;
    }
    EXPECT_EQ(f.byteOf(26), 128);
}

namespace {

struct TxColumns {
    bool exists = false;
    int c08 = -1, c33 = -1, c35 = -1, c36 = -1, c01 = -1;
};

TxColumns rowIn(SessionBench& b, const QString& table, const QString& name) {
    Recordset rs = b.session->DbRez->OpenRecordset(table);
    rs.setIndex("Name");
    rs.Seek("=", name);
    TxColumns r;
    if (rs.NoMatch()) return r;
    r.exists = true;
    auto col = [&rs](const char* c) { return int(rs.Fields(c).Value().toInt()); };
    r.c08 = col("08T");
    r.c33 = col("33H");
    r.c35 = col("35H");
    r.c36 = col("36H");
    r.c01 = col("01");
    return r;
}

} // namespace

// The transmitter columns go into both tables; both questions carry the "add" title.
TEST(Transmitter, SaveIntoBothTables) {
    struct Row {
        const char* typed;
        MsgResult answer;
        const char* question;
        bool saved;
    };
    const Row table[] = {
        {"My link", MsgResult::Yes, "Are you sure to add new settings?", true},
        {"1024x768x75", MsgResult::Yes, "Are you sure to change Settings of 1024x768x75?", true},
        {"1024x768x75", MsgResult::No, "Are you sure to change Settings of 1024x768x75?", false},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(std::string(row.typed) + (row.saved ? " yes" : " no"));
        SessionBench b;
        FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
        f.ucBitsField1(8).WriteByte(0x3F);
        f.ucBitsField1(32).WriteByte(0x51);
        f.ucBitsField1(34).WriteByte(0x77); // 35H is read only: not saved
        f.ucBitsField1(35).WriteByte(0x99);
        const TxColumns before[] = {rowIn(b, "tblDefValues", row.typed),
                                    rowIn(b, "tblCustValues", row.typed)};
        b.session->forms.registerForm("frmInputBox", [&b, &row]() -> std::unique_ptr<Form> {
            b.st().SelRezName = row.typed;
            return std::make_unique<Form>("frmInputBox");
        });
        b.link.dialogs.answer(row.answer);
        f.cmdSave.click();
        ASSERT_EQ(b.link.dialogs.asked().size(), 1u);
        EXPECT_EQ(b.link.dialogs.asked()[0].text.toStdString(), row.question);
        EXPECT_EQ(b.link.dialogs.asked()[0].title, "Add Settings to Database");
        const char* tables[] = {"tblDefValues", "tblCustValues"};
        for (int t = 0; t < 2; ++t) {
            const TxColumns after = rowIn(b, tables[t], row.typed);
            if (!row.saved) {
                EXPECT_EQ(after.exists, before[t].exists) << tables[t];
                EXPECT_EQ(after.c08, before[t].c08) << tables[t];
                continue;
            }
            EXPECT_EQ(after.c08, 0x3F) << tables[t];
            EXPECT_EQ(after.c33, 0x51) << tables[t];
            EXPECT_EQ(after.c36, 0x99) << tables[t];
            // 35H, of the read-only register, and the converter's columns are left alone.
            EXPECT_EQ(after.c35, before[t].exists ? before[t].c35 : 0) << tables[t];
            EXPECT_EQ(after.c01, before[t].exists ? before[t].c01 : 0) << tables[t];
        }
    }
}

// A row of the list loads both chips; this window's rows then show the converter's bytes.
TEST(Transmitter, PresetListLoadsBothChips) {
    SessionBench b;
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    f.cmdPreset.click();
    EXPECT_TRUE(f.lstPresets.visible());
    QString seen;
    f.txtMsg.onChange.connect([&] { seen = f.txtMsg.text(); });
    f.lstPresets.userSelect(f.lstPresets.indexOf("1280x1024x60"));
    EXPECT_EQ(seen, "Load OK");
    EXPECT_EQ(f.byteOf(0), 0);
    // The converter's PLL divisor of 1687, whose block went out behind the leading zero.
    EXPECT_EQ(f.byteOf(1), 105);
    EXPECT_EQ(b.link.reg(32, 0x02), 105);
    EXPECT_FALSE(f.LoadOnChange);
    EXPECT_FALSE(f.txtMsg.visible() || f.lstPresets.visible());
}

// The position is kept under the window's own section, and the window closes from its menu.
TEST(Transmitter, PositionIsKeptUnderItsOwnSection) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    b.settings->save("frmTransmitter", "Layout", "120,80");
    FrmTransmitter& f = b.open<FrmTransmitter>("frmTransmitter");
    EXPECT_EQ(f.left(), 120);
    EXPECT_EQ(f.top(), 80);
    f.move(60, 40);
    f.mnuClose.click();
    EXPECT_EQ(b.session->forms.get("frmTransmitter"), nullptr);
    EXPECT_EQ(b.settings->get("frmTransmitter", "Layout"), "60,40");
    EXPECT_EQ(b.settings->get("frm9888", "Layout"), "");
}
