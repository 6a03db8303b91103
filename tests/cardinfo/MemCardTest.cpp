// Card Memory against the virtual card's data memory.
#include "session/SessionBench.h"

#include "cardinfo/CardMemory.h"
#include "cardinfo/FrmMemCard.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

FrmMemCard& reopen(SessionBench& b) {
    b.session->forms.unload("frmMem_card");
    b.session->forms.collect();
    return b.open<FrmMemCard>("frmMem_card");
}

// Frames as hex: a data memory read or write at an address.
QString readAt(int count, int address) {
    return QStringLiteral("52 44 44 42 A6 %1 %2 %3")
        .arg(count, 2, 16, QChar('0'))
        .arg(address >> 8, 2, 16, QChar('0'))
        .arg(address & 0xFF, 2, 16, QChar('0'))
        .toUpper();
}
QString writeAt(int address, const QByteArray& data) {
    QByteArray f = QByteArray("WRDB") + char(0xA6) + char(0x42) + char(address >> 8) +
                   char(address & 0xFF) + data;
    return test::hexOf(f);
}

QByteArray blanks(const char* s, int n) {
    QByteArray b(s);
    return b + QByteArray(n - b.size(), ' ');
}

void service(FrmMemCard& f) {
    ASSERT_TRUE(f.previewKey(Qt::Key_K, Qt::ShiftModifier));
}

void edit(FrmMemCard& f, TextBox& box, const QString& text) {
    f.fieldClick();
    box.userEdit(text);
}

} // namespace

TEST(CardMemory, CountersFromKnownBytes) {
    struct Row {
        QByteArray block;
        const char *days, *temp, *duration;
    };
    auto block = [](int d0, int d1, int d2, int t, int u0, int u1) {
        return QByteArray("\x00", 1) + char(d0) + char(d1) + char(d2) + char(t) + char(u0) +
               char(u1) + QByteArray(23, '\0');
    };
    for (const Row& r : {
             Row{block(1, 2, 0, 42, 3, 0), " 513", "0", " 3"},
             Row{block(0x9C, 1, 0, 122, 3, 0), " 412", "48", " 3"},
             Row{block(0, 0, 0, 0, 0x10, 0x27), " 0", "-26", " 10000"}, // -25.2 goes down
             Row{block(0xFF, 0xFF, 0xFF, 41, 0, 0), " 16777215", "-1", " 0"},
             Row{block(0, 0, 1, 43, 0, 1), " 65536", "0", " 256"},
             Row{block(0, 0, 0, 44, 0, 0), " 0", "1", " 0"},
             Row{block(0, 0, 0, 255, 0, 0), " 0", "127", " 0"},
             Row{QByteArray(1, '\0'), " 0", "-26", " 0"}, // a failed read
         }) {
        const CardMemory::Counters c = CardMemory::decodeCounters(r.block);
        EXPECT_EQ(c.days, r.days);
        EXPECT_EQ(c.temperature, r.temp);
        EXPECT_EQ(c.duration, r.duration);
    }
}

TEST(CardMemory, LoadShowsTheProductionRecordReadOnly) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    EXPECT_EQ(f.caption(), "Card Memory");
    EXPECT_EQ(f.lblCapture.caption(), "Card Information");
    EXPECT_EQ(f.txtPartN.text(), "VK-4410-TX");
    EXPECT_EQ(f.txtSerN.text(), "VK24T-001873");
    EXPECT_EQ(f.txtDate.text(), "03/14/2009");
    EXPECT_EQ(f.txtSalesOrder.text(), QString::fromLatin1(blanks("SO-58213", 30)));
    EXPECT_EQ(f.txtTechCode.text(), QString::fromLatin1(blanks("JT/FINAL", 30)));
    EXPECT_EQ(f.txtDays.text(), " 412");
    EXPECT_EQ(f.txtTemp.text(), "48");
    EXPECT_EQ(f.txtDuration.text(), " 3");
    EXPECT_EQ(f.grRepair.rows(), 1);
    EXPECT_EQ(f.grRepair.textMatrix(0, 0), "When/Who");
    EXPECT_EQ(f.grRepair.textMatrix(0, 1), "What");
    EXPECT_EQ(b.link.sent(),
              (QStringList{readAt(30, 0x0000), readAt(30, 0x0040), readAt(30, 0x0060),
                           readAt(30, 0x0080), readAt(30, 0x0200), readAt(30, 0x0220),
                           readAt(30, 0x0240), readAt(30, 0x0260), readAt(32, 0x0500)}));
    for (Control* c : std::initializer_list<Control*>{&f.txtPartN, &f.txtSerN, &f.txtDate,
                                                      &f.cmdApplyMem, &f.cmdAddR, &f.cmdClear})
        EXPECT_FALSE(c->enabled()) << c->name().toStdString();
    for (Control* c : std::initializer_list<Control*>{&f.txtSalesOrder, &f.txtTechCode, &f.grRepair,
                                                      &f.cmdApplyMem, &f.lblRepiar})
        EXPECT_FALSE(c->visible()) << c->name().toStdString();
}

TEST(CardMemory, ServiceChordsOpenTheSectionAndClear) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    const int h = f.height();
    EXPECT_FALSE(f.previewKey(Qt::Key_K, Qt::NoModifier));
    EXPECT_FALSE(f.txtPartN.enabled());
    EXPECT_TRUE(f.previewKey(Qt::Key_K, Qt::ControlModifier));
    EXPECT_EQ(f.height(), h + 40);
    for (Control* c :
         std::initializer_list<Control*>{&f.txtPartN, &f.txtSerN, &f.txtDate, &f.txtSalesOrder,
                                         &f.txtTechCode, &f.cmdApplyMem, &f.cmdAddR, &f.grRepair})
        EXPECT_TRUE(c->enabled() && c->visible()) << c->name().toStdString();
    EXPECT_FALSE(f.cmdClear.enabled());
    EXPECT_TRUE(f.previewKey(Qt::Key_J, Qt::AltModifier));
    EXPECT_TRUE(f.cmdClear.enabled());

    // The letters are settings.
    SessionBench c;
    c.settings->save("frmMem_card", "ServiceKey", "q");
    FrmMemCard& g = c.open<FrmMemCard>("frmMem_card");
    EXPECT_FALSE(g.previewKey(Qt::Key_K, Qt::ShiftModifier));
    EXPECT_TRUE(g.previewKey(Qt::Key_Q, Qt::ShiftModifier));
    EXPECT_TRUE(g.txtPartN.enabled());
}

TEST(CardMemory, UnchangedOrRefusedApplyWritesNothing) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    service(f);
    b.link.clearTrace();
    f.cmdApplyMem.click();
    EXPECT_TRUE(b.link.dialogs.asked().empty());
    EXPECT_TRUE(b.link.sent().isEmpty());
    // A change typed without a click first does not count either.
    f.txtSerN.userEdit("X");
    f.cmdApplyMem.click();
    EXPECT_TRUE(b.link.dialogs.asked().empty());
    edit(f, f.txtPartN, "VK-1");
    b.link.dialogs.answer(MsgResult::No);
    f.cmdApplyMem.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Are you sure you want to save changes?"});
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_EQ(f.EditState, 0);
}

// Each field goes to its address as the rules say and comes back on the next opening.
TEST(CardMemory, EachFieldRoundTripsThroughTheCard) {
    struct Row {
        const char* box;
        int address;
        const char* typed;
        QByteArray onWire;
        QByteArray inMemory; // 30 bytes at the address afterwards
        QString reloaded;
    };
    const Row rows[] = {
        {"txtPartN", 0x40, "VK-9000-RX", blanks("VK-9000-RX", 30), blanks("VK-9000-RX", 30),
         "VK-9000-RX"},
        {"txtSerN", 0x60, "SN-42", blanks("SN-42", 30), blanks("SN-42", 30), "SN-42"},
        // Not padded: the old date's tail stays behind the shorter new one.
        {"txtDate", 0x200, "1/2/2010", "1/2/2010", blanks("1/2/201009", 30), "1/2/201009"},
        {"txtSalesOrder", 0x220, "SO-1", "SO-1", blanks("SO-18213", 30),
         QString::fromLatin1(blanks("SO-18213", 30))},
        {"txtTechCode", 0x240, "AB/FINAL", "AB/FINAL", blanks("AB/FINAL", 30),
         QString::fromLatin1(blanks("AB/FINAL", 30))},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.typed);
        SessionBench b;
        FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
        service(f);
        edit(f, f.control<TextBox>(r.box), r.typed);
        b.link.clearTrace();
        f.cmdApplyMem.click();
        EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Are you sure you want to save changes?"});
        EXPECT_EQ(b.link.sent(),
                  (QStringList{writeAt(r.address, r.onWire), readAt(30, r.address)}));
        EXPECT_EQ(b.link.dataMemory(r.address, 30), r.inMemory);
        EXPECT_EQ(f.EditState, 0);
        FrmMemCard& g = reopen(b);
        EXPECT_EQ(g.control<TextBox>(r.box).text(), r.reloaded);
    }
}

TEST(CardMemory, PartNumberEdges) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    service(f);
    // Exactly 30 characters: no padding on the wire.
    const QString thirty = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123";
    edit(f, f.txtPartN, thirty);
    b.link.clearTrace();
    f.cmdApplyMem.click();
    EXPECT_EQ(b.link.sent().value(0), writeAt(0x40, thirty.toLatin1()));
    EXPECT_EQ(f.MemFields[1], thirty);
    // Outer blanks: trimmed on the wire, compared untrimmed, so refused.
    b.link.dialogs.clear();
    edit(f, f.txtPartN, " AB ");
    b.link.clearTrace();
    f.cmdApplyMem.click();
    EXPECT_EQ(b.link.sent().value(0), writeAt(0x40, blanks("AB", 30)));
    EXPECT_EQ(b.link.dialogs.messages(),
              (QStringList{"Are you sure you want to save changes?", "Wrong write to mem PartN"}));
    EXPECT_EQ(f.txtPartN.text(), thirty);
    // A long date is written whole and shown cut at 20.
    edit(f, f.txtDate, "Manufactured 2009-03-14 Z");
    f.cmdApplyMem.click();
    EXPECT_EQ(b.link.dataMemory(0x200, 25), "Manufactured 2009-03-14 Z");
    EXPECT_EQ(reopen(b).txtDate.text(), "Manufactured 2009-03");
}

TEST(CardMemory, RepairRecordAddedThenCleared) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    service(f);
    const QString what =
        "Replaced the laser driver and both fibre ports; fan cleaned, firmware 2.06 loaded";
    b.link.dialogs.answerText(QString("2026-11-23 JT"));
    b.link.dialogs.answerText(what);
    b.link.clearTrace();
    f.cmdAddR.click();
    const auto& asked = b.link.dialogs.asked();
    ASSERT_GE(asked.size(), 3u);
    EXPECT_EQ(asked[0].text, "Enter Date of repair and Name who repairs :");
    EXPECT_EQ(asked[0].title, "Write to Card/Module Memory");
    EXPECT_EQ(asked[1].text, "Enter the Information of what was repaired :");
    EXPECT_EQ(asked[2].text, "You are going to write to Card/Module memory : \n\rWhen/Who :  ' "
                             "2026-11-23 JT '\n\rWhat     :  ' " +
                                 what + " '\n\rIs it correct? ");
    EXPECT_EQ(asked[2].title, "Write to Card/Module Memory");
    ASSERT_EQ(f.grRepair.rows(), 2);
    EXPECT_EQ(f.grRepair.textMatrix(1, 0), "2026-11-23 JT");
    EXPECT_EQ(f.grRepair.textMatrix(1, 1), what);
    // The pieces are written at address 0 and read back from the record: each differs.
    EXPECT_EQ(b.link.sent(), (QStringList{writeAt(0, "2026-11-23 JT"), readAt(32, 0x500),
                                          writeAt(0, what.left(32).toLatin1()), readAt(32, 0x520),
                                          writeAt(0, what.mid(32).toLatin1()), readAt(32, 0x540)}));
    EXPECT_EQ(b.link.dialogs.messages().mid(1), QStringList(3, "Wrong write to mem Repair"));
    EXPECT_GT(what.size(), 64);
    EXPECT_EQ(b.link.dataMemory(0, int(what.size()) - 32), what.mid(32).toLatin1());

    // Clear both: counters and the one row.
    ASSERT_TRUE(f.previewKey(Qt::Key_J, Qt::ShiftModifier));
    b.link.dialogs.clear();
    b.link.clearTrace();
    f.cmdClear.click();
    EXPECT_EQ(b.link.dialogs.messages(),
              (QStringList{"Are you sure to clear memory?",
                           "Would you like to erase Table of repairs?"}));
    EXPECT_EQ(b.link.dialogs.asked()[1].title, "Memory Erase");
    EXPECT_EQ(
        b.link.sent(),
        (QStringList{writeAt(0, QByteArray::fromHex("000100002A") + QByteArray(27, '\0')),
                     readAt(30, 0), writeAt(0x500, QByteArray(32, '\0')), readAt(30, 0x500)}));
    for (TextBox* t : {&f.txtDays, &f.txtTemp, &f.txtDuration})
        EXPECT_EQ(t->text(), "0");
    EXPECT_EQ(f.grRepair.rows(), 1);
    EXPECT_FALSE(f.cmdClear.enabled());
    // The card keeps one day of running time.
    FrmMemCard& g = reopen(b);
    EXPECT_EQ(g.txtDays.text(), " 1");
    EXPECT_EQ(g.txtTemp.text(), "0");
}

TEST(CardMemory, RepairTableReadingRules) {
    struct Row {
        const char* name;
        std::vector<std::pair<int, QByteArray>> memory;
        QStringList rows;
    };
    const QByteArray a = blanks("2009-05-01 KL", 32), c = blanks("2010-01-02 MN", 32);
    const Row rows[] = {
        {"empty", {}, {}},
        // Rows come every 64 bytes and show the same text twice; 0x520 is never read.
        {"two",
         {{0x500, a}, {0x520, blanks("Fan replaced", 32)}, {0x540, c}},
         {"2009-05-01 KL", "2010-01-02 MN"}},
        {"control code", {{0x500, a}, {0x540, QByteArray("\x05") + c.mid(1)}}, {"2009-05-01 KL"}},
        {"blank block", {{0x500, QByteArray(32, ' ')}, {0x540, c}}, {}},
        {"foreign in the first four", {{0x500, QByteArray("AB\xC9") + a.mid(3)}}, {}},
        {"foreign later",
         {{0x500, QByteArray("ABCD\xC9") + a.mid(5)}},
         {QString::fromLatin1("ABCD\xC9"
                              "05-01 KL")}},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        SessionBench b;
        for (const auto& [addr, bytes] : r.memory)
            b.link.card().setDataMemory(addr, bytes);
        FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
        ASSERT_EQ(f.grRepair.rows(), r.rows.size() + 1);
        for (int i = 0; i < r.rows.size(); ++i) {
            EXPECT_EQ(f.grRepair.textMatrix(i + 1, 0), r.rows[i]);
            EXPECT_EQ(f.grRepair.textMatrix(i + 1, 1), f.grRepair.textMatrix(i + 1, 0));
        }
    }
}

// A table to the end of page 14: the 40th row would end past it and is not added.
TEST(CardMemory, FullTableStopsAtPage14) {
    SessionBench b;
    b.link.card().setDataMemory(0x500, QByteArray(0x0F00 - 0x500, 'A'));
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    EXPECT_EQ(f.grRepair.rows(), 1 + 39);
    EXPECT_EQ(b.link.sent().last(), readAt(32, 0x0EC0));
}

TEST(CardMemory, ACardThatStopsAnswering) {
    SessionBench b;
    FrmMemCard& f = b.open<FrmMemCard>("frmMem_card");
    service(f);
    b.link.silent(true);
    edit(f, f.txtPartN, "VK-1");
    f.cmdApplyMem.click();
    EXPECT_EQ(b.link.dialogs.messages(),
              (QStringList{"Are you sure you want to save changes?", "Wrong write to mem PartN"}));
    EXPECT_EQ(f.txtPartN.text(), "VK-4410-TX");
    EXPECT_EQ(f.EditState, 0);
    // Clear fails twice and keeps the counters; the row stays.
    b.link.card().setDataMemory(0x500, blanks("2009-05-01 KL", 32));
    b.link.silent(false);
    FrmMemCard& g = reopen(b);
    ASSERT_EQ(g.grRepair.rows(), 2);
    ASSERT_TRUE(g.previewKey(Qt::Key_J, Qt::ControlModifier));
    b.link.silent(true);
    b.link.dialogs.clear();
    g.cmdClear.click();
    EXPECT_EQ(
        b.link.dialogs.messages(),
        (QStringList{"Are you sure to clear memory?", "Wrong writing to mem ",
                     "Would you like to erase Table of repairs?", "Couldn't clear memory(i)"}));
    EXPECT_EQ(g.txtDays.text(), " 412");
    EXPECT_EQ(g.grRepair.rows(), 2);
    // Opened with the card silent: what a one-character reply gives.
    FrmMemCard& h = reopen(b);
    EXPECT_EQ(h.txtDays.text(), " 0");
    EXPECT_EQ(h.txtTemp.text(), "-26");
    EXPECT_EQ(h.txtDuration.text(), " 0");
    EXPECT_EQ(h.txtPartN.text(), QString(QChar(0)));
    EXPECT_EQ(h.grRepair.rows(), 1);
}
