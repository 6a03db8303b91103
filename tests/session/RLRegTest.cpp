// The single-register tool against the virtual card, with the flat panel window under it.
#include "SessionBench.h"

#include "registers/FrmAD9888.h"
#include "registers/FrmRLReg.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

#include <set>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

struct Tool {
    FrmAD9888& panel;
    FrmRLReg& reg;
};

Tool open(SessionBench& b) {
    auto& panel = b.open<FrmAD9888>("frmAD9888");
    panel.mnuLRReg.click();
    auto* reg = b.session->forms.get<FrmRLReg>("frmRLReg");
    if (!reg) throw std::runtime_error("frmRLReg did not open");
    return {panel, *reg};
}

void select(FrmRLReg& f, int reg) {
    const int i = f.cboRAddr.indexOf(QStringLiteral("%1").arg(reg, 2, 16, QChar('0')).toUpper());
    ASSERT_GE(i, 0) << reg;
    f.cboRAddr.userSelect(i);
}

QString write(int reg, int v) {
    return velmorak::test::hexOf(QByteArray("WREE") + char(32) + char(reg) + char(v));
}

} // namespace

TEST(RLReg, OpensOnTheFirstRegisterOfThePanel) {
    SessionBench b;
    Tool t = open(b);
    EXPECT_EQ(t.reg.caption(), "Load / Read Register");
    QStringList want;
    for (const char* a : {"01", "02", "03", "04", "05", "06", "07", "08", "09", "0A", "0B",
                          "0C", "0D", "0E", "0F", "10", "11", "12", "13", "15", "16", "17"})
        want << a;
    EXPECT_EQ(t.reg.cboRAddr.items(), want);
    EXPECT_EQ(t.reg.cboRAddr.listIndex(), 0);
    EXPECT_EQ(t.reg.ucBitsFieldR.ReadByte(), t.panel.byteOf(1));
    EXPECT_EQ(t.reg.HScrlR.value(), t.panel.byteOf(1));
    EXPECT_FALSE(t.reg.LoadOnChange);
    for (int bit = 0; bit < 8; ++bit)
        EXPECT_TRUE(t.reg.ucBitsFieldR.txtBitEnabled(bit)) << bit;
}

// Load sends the cleaned byte and shows it.
TEST(RLReg, LoadMasksReservedBitsAndMirrors) {
    struct Row {
        int reg, put, sent;
    };
    for (const Row& r : {Row{0x02, 255, 240}, Row{0x03, 255, 248}, Row{0x0F, 255, 254},
                         Row{0x0B, 7, 6}, Row{0x05, 255, 255}, Row{0x11, 0x5A, 0x5A}}) {
        SCOPED_TRACE(r.reg);
        SessionBench b;
        Tool t = open(b);
        select(t.reg, r.reg);
        t.reg.HScrlR.userSetValue(r.put);
        b.link.clearTrace();
        b.link.dialogs.answer(MsgResult::Yes);
        t.reg.cmdLoad.click();
        ASSERT_GE(b.link.sent().size(), 2);
        EXPECT_EQ(b.link.sent()[0], write(r.reg, r.sent));
        EXPECT_EQ(b.link.sent()[1],
                  "52 44 45 45 20 " + QStringLiteral("%1").arg(r.reg, 2, 16, QChar('0')).toUpper());
        EXPECT_EQ(b.link.reg(32, r.reg), r.sent);
        EXPECT_EQ(t.reg.ucBitsFieldR.ReadByte(), r.sent);
        EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Are you sure to load info to the Chip?"});
    }
}

// Read puts the chip's byte into the row the table names: 11H to 13H and 15H one row above
// their own, where a field row keeps only its bit; 16H and 17H nowhere.
TEST(RLReg, ReadMirrorsByTheTable) {
    SessionBench b;
    Tool t = open(b);
    struct Row {
        int reg, member; // -1: not mirrored
        int shown;       // what the member holds afterwards
    };
    for (const Row& r :
         {Row{0x01, 1, 0xA1}, Row{0x04, 5, 0xA4}, Row{0x0E, 15, 0xAE}, Row{0x0F, 23, 0xAF},
          Row{0x10, 30, 0xB0}, Row{0x11, 33, 0x01}, Row{0x12, 34, 0xB2}, Row{0x13, 35, 0xB3},
          Row{0x15, 44, 0x01}, Row{0x16, -1, 0}}) {
        SCOPED_TRACE(r.reg);
        const int v = 0xA0 + r.reg;
        b.link.setReg(32, r.reg, v);
        select(t.reg, r.reg);
        std::vector<int> before;
        for (int m = 1; m <= 53; ++m)
            before.push_back(t.panel.byteOf(m));
        t.reg.cmdRead.click();
        EXPECT_EQ(t.reg.ucBitsFieldR.ReadByte(), v);
        EXPECT_EQ(t.reg.HScrlR.value(), v);
        for (int m = 1; m <= 53; ++m) {
            EXPECT_EQ(t.panel.byteOf(m), m == r.member ? r.shown : before[size_t(m - 1)])
                << "member " << m;
        }
    }
}

// The chip keeps its old byte: "Failure", yet the panel takes what was sent and, with its own
// load-on-change, sends every register again row by row.
TEST(RLReg, FailedCompareStillMirrorsAndCatchesUp) {
    SessionBench b;
    Tool t = open(b);
    t.panel.ChkChange.click();
    b.link.card().setRefusedRegister(32, 0x0C);
    select(t.reg, 0x0C);
    const int old = b.link.reg(32, 0x0C);
    t.reg.HScrlR.userSetValue(old ^ 0x80);
    b.link.clearTrace();
    b.link.dialogs.answer(MsgResult::Yes);
    t.reg.cmdLoad.click();
    EXPECT_EQ(b.link.dialogs.messages().last(), "Failure");
    EXPECT_EQ(b.link.reg(32, 0x0C), old);
    EXPECT_EQ(t.panel.byteOf(13), (old ^ 0x80) & 254);
    std::set<int> written;
    const QStringList sent = b.link.sent();
    for (int i = 2; i < sent.size(); ++i) {
        const QByteArray f = QByteArray::fromHex(sent[i].toLatin1());
        ASSERT_TRUE(f.startsWith("WREE")) << sent[i].toStdString();
        written.insert(quint8(f[5]));
    }
    for (int reg = 0x01; reg <= 0x13; ++reg)
        EXPECT_TRUE(reg == 0x14 || written.count(reg)) << "register " << reg;
}

// Load-on-change of the tool itself: bits, slider and a clicked register each send the byte
// unmasked; "No" to the question sends nothing.
TEST(RLReg, LoadOnChangeSendsUnmasked) {
    SessionBench b;
    Tool t = open(b);
    select(t.reg, 0x02);
    t.reg.HScrlR.userSetValue(0);
    t.reg.ChkChange.click();
    b.link.clearTrace();
    t.reg.ucBitsFieldR.click(0);
    t.reg.HScrlR.userSetValue(255);
    EXPECT_EQ(b.link.sent(), (QStringList{write(2, 1), write(2, 255)}));
    t.reg.ChkChange.click();
    b.link.clearTrace();
    b.link.dialogs.answer(MsgResult::No);
    t.reg.cmdLoad.click();
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_EQ(t.reg.ucBitsFieldR.ReadByte(), 255);
}
