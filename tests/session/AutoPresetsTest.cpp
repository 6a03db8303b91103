// The auto preset table in the card's data memory: the load from the database, its version and
// the memory viewer, on the virtual clock against the in-process card.
#include "SessionBench.h"

#include "forms/FrmWait.h"
#include "monitor/FrmReadEEPresets.h"
#include "resdb/Database.h"
#include "sim/VirtualCard.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::hexOf;
using velmorak::test::SessionBench;

namespace {

const char* const kAsk = "You are about to load Database of Presets to Memory of RGB Card.";
const char* const kOk = "Loading is OK.";
const char* const kNotWritten = "Wrong Loading. Data is not written.";
const char* const kIncompatible = "Wrong Loading. Database is not compatible.";

// Per slot: Sleep 1, WriteDB (10 + 1000), Sleep 1, ReadDB with a prompt reply (20 + 20, one
// pump, 50 of drain).
constexpr qint64 kSlotMs = 1 + 1010 + 1 + 91;
// The version record: WriteDB and ReadDB alone.
constexpr qint64 kVersionMs = 1010 + 91;
// A ReadDB that gets no reply: the pauses and the whole time-out.
constexpr qint64 kSilentReadMs = 20 + 20 + 1200 + 50;

// The seeded rows by group, each at its slot: group i starts at (32 + 2i) * 256, slot k of the
// height list 480, 600, 720, 768, 864, 960, 1024, 1080, 1200 is 32k bytes on.
struct Slot {
    const char* name;
    int address;
};
const Slot kSeedSlots[] = {
    {"800x600x56", 0x2020},   {"640x480x60", 0x2200},   {"800x600x60", 0x2220},
    {"1280x720x60", 0x2240},  {"1024x768x60", 0x2260},  {"1280x960x60", 0x22A0},
    {"1280x1024x60", 0x22C0}, {"1920x1080x60", 0x22E0}, {"1600x1200x60", 0x2300},
    {"1600x1200x65", 0x2500}, {"1024x768x70", 0x2660},  {"1600x1200x70", 0x2700},
    {"640x480x72", 0x2800},   {"800x600x72", 0x2820},   {"640x480x75", 0x2A00},
    {"800x600x75", 0x2A20},   {"1024x768x75", 0x2A60},  {"1152x864x75", 0x2A80},
    {"1280x1024x75", 0x2AC0}, {"1600x1200x75", 0x2B00}, {"640x480x85", 0x2C00},
    {"800x600x85", 0x2C20},   {"1024x768x85", 0x2C60},  {"1280x960x85", 0x2CA0},
    {"1280x1024x85", 0x2CC0}};
// Progress values, group i times 16 plus the row within it.
const QList<int> kSeedProgress = {1,  17, 18, 19, 20, 21, 22, 23, 24, 33, 49,  50, 65,
                                  66, 81, 82, 83, 84, 85, 86, 97, 98, 99, 100, 101};

// The 30 bytes of a slot: the registers in row order without 14H, 16H, 17H and 35H.
QByteArray slotBytes(Database& db, const QString& name) {
    static const char* const fields[] = {"01",  "02",  "03",  "04",  "05",  "06",  "07",   "08",
                                         "09",  "0AH", "0BH", "0CH", "0DH", "0EH", "0FH",  "10H",
                                         "11H", "12H", "13H", "15H", "08T", "09T", "0AHT", "32H",
                                         "33H", "34H", "36H", "37H", "38H", "39H"};
    Recordset t = db.OpenRecordset("tblDefValues");
    t.setIndex("Name");
    t.Seek("=", name);
    EXPECT_FALSE(t.NoMatch()) << name.toStdString();
    QByteArray b;
    for (const char* f : fields)
        b.append(char(t.Fields(QString::fromLatin1(f)).Value().toInt()));
    return b;
}

QByteArray frame(const char* key, int hi, int lo, const QByteArray& data = {}) {
    QByteArray f(key);
    f += char(0xA6);
    f += char(0x42);
    f += char(hi);
    f += char(lo);
    return f + data;
}

// A connected session with the service menus unlocked, recording the load as it runs.
struct Bench {
    SessionBench b;
    QList<int> progress;
    bool controlsOnDuringLoad = false;
    bool waitShownDuringLoad = true;
    bool messageShownDuringLoad = true;
    std::vector<ScopedConnection> links;

    Bench() {
        EXPECT_TRUE(b.start());
        EXPECT_TRUE(b.st().Connected);
        b.link.dialogs.answerText(QString("voltar"));
        b.frm().previewKey(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        b.link.dialogs.clear();
        b.link.clearTrace();
        links.emplace_back(b.session->forms.onLoaded.connect([this](Form& f) {
            if (auto* w = dynamic_cast<FrmWait*>(&f))
                links.emplace_back(w->ProgBar.onPropertyChanged.connect([this, w](Prop p) {
                    if (p == Prop::Value) progress << w->ProgBar.value();
                }));
        }));
        // Whenever the link pumps during the load.
        b.link.host.onPump([this] {
            FrmWait* w = FrmWait::find(b.session->forms);
            if (!w || !b.session->fn.busy()) return;
            FrmStart& f = b.frm();
            if (f.mnuAutoPresets.enabled() || f.cmdDisconnect.enabled())
                controlsOnDuringLoad = true;
            if (!w->visible()) waitShownDuringLoad = false;
            if (!f.txtMsg.visible() || f.txtMsg.text() != "Loading. Wait a minute...")
                messageShownDuringLoad = false;
        });
    }
    Database& db() { return *b.session->DbRez; }
    // Runs the menu item; returns the virtual time it took.
    qint64 click(MenuItem& m) {
        const qint64 t0 = b.link.host.now();
        m.click();
        return b.link.host.now() - t0;
    }
    qint64 load() { return click(b.frm().mnuAutoPresets); }
    // Hex of the frames sent that begin with this keyword.
    QStringList frames(const char* key) const {
        return b.link.sent().filter(QRegularExpression("^" + hexOf(key)));
    }
    // The main window as it must be after every load, good or bad (the message is hidden once
    // it was shown).
    void expectIdle(bool messageHidden = true) {
        FrmStart& f = b.frm();
        EXPECT_TRUE(f.mnuAutoPresets.enabled());
        EXPECT_TRUE(f.cmdDisconnect.enabled());
        EXPECT_EQ(f.txtMsg.visible(), !messageHidden);
        EXPECT_FALSE(b.session->forms.isLoaded("frmWait"));
        EXPECT_FALSE(controlsOnDuringLoad);
    }
};

} // namespace

// The seed database: every row in its slot, every byte on the wire, the version record, the
// messages and the time the card's pauses take.
TEST(AutoPresets, FullLoadOfTheSeedDatabase) {
    Bench t;
    const qint64 took = t.load();

    QStringList expected;
    for (const Slot& s : kSeedSlots) {
        const int hi = s.address >> 8, lo = s.address & 0xFF;
        expected << hexOf(frame("WRDB", hi, lo, slotBytes(t.db(), s.name)))
                 << hexOf(frame("RDDB", hi, lo));
    }
    expected << hexOf(frame("WRDB", 0x18, 0xE0, "UVersion 2.06 01/23/2009"))
             << hexOf(frame("RDDB", 0x18, 0xE0));
    EXPECT_EQ(t.b.link.sent(), expected);

    // Bytes 29 and 30 of a slot are its height, low byte first.
    const QByteArray first = t.b.link.dataMemory(0x2020, 32);
    EXPECT_EQ(quint8(first[28]) + 256 * quint8(first[29]), 600);
    for (const Slot& s : kSeedSlots)
        EXPECT_EQ(t.b.link.dataMemory(s.address, 30), slotBytes(t.db(), s.name)) << s.name;
    // Slots without a row are left as they were: erased.
    for (int a : {0x2000, 0x2040, 0x2280, 0x2400, 0x2520, 0x2C40})
        EXPECT_EQ(t.b.link.dataMemory(a, 32), QByteArray(32, char(0xFF))) << Qt::hex << a;

    const auto& asked = t.b.link.dialogs.asked();
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].text, kAsk);
    EXPECT_EQ(asked[0].title, "Database of Ptesets");
    EXPECT_EQ(asked[0].buttons, MsgButtons::OKCancel);
    EXPECT_EQ(asked[1].text, kOk);
    EXPECT_EQ(t.b.frm().txtMsg.text(), "Loading OK.");
    EXPECT_EQ(t.progress, kSeedProgress);
    EXPECT_TRUE(t.waitShownDuringLoad);
    EXPECT_TRUE(t.messageShownDuringLoad);
    t.expectIdle();
    // 25 slots, the version, one pump and the 2 s the message stays.
    EXPECT_EQ(took, 25 * kSlotMs + kVersionMs + 1 + 2000);
}

// A group with no rows writes nothing and keeps its memory; the next starts at its own address.
TEST(AutoPresets, EmptyGroupKeepsItsMemory) {
    Bench t;
    t.db().Execute("DELETE FROM tblDefValues WHERE Vertical = 65");
    const QByteArray old(32, char(0x5A));
    t.b.link.card().setDataMemory(0x2500, old);
    t.load();
    const QStringList writes = t.frames("WRDB");
    EXPECT_EQ(writes.size(), 25);
    EXPECT_TRUE(writes.filter(QRegularExpression("^57 52 44 42 A6 42 (24|25) ")).isEmpty());
    EXPECT_EQ(t.b.link.dataMemory(0x2500, 32), old);
    EXPECT_EQ(t.b.link.dataMemory(0x2660, 30), slotBytes(t.db(), "1024x768x70"));
    EXPECT_EQ(t.b.link.dataMemory(0x2700, 30), slotBytes(t.db(), "1600x1200x70"));
    EXPECT_EQ(t.b.link.dialogs.messages().last(), kOk);
    EXPECT_FALSE(t.progress.contains(33));
    EXPECT_TRUE(t.progress.contains(49));
    t.expectIdle();
}

// A second row with the key of the first finds no slot after it: k runs to 15.
TEST(AutoPresets, TwoRowsWithOneKeyAreIncompatible) {
    Bench t;
    t.db().Execute("INSERT INTO tblDefValues SELECT * FROM tblDefValues WHERE Name = '800x600x56';"
                   "UPDATE tblDefValues SET Name = '800x600x56b', NameSort = 'zz' "
                   "WHERE rowid = last_insert_rowid();");
    const qint64 took = t.load();
    EXPECT_EQ(t.frames("WRDB"),
              QStringList{hexOf(frame("WRDB", 0x20, 0x20, slotBytes(t.db(), "800x600x56")))});
    EXPECT_EQ(t.b.link.dialogs.messages(), (QStringList{kAsk, kIncompatible}));
    EXPECT_EQ(t.b.link.dataMemory(0x2020, 30), slotBytes(t.db(), "800x600x56"));
    EXPECT_EQ(t.progress, (QList<int>{1, 2}));
    t.expectIdle();
    EXPECT_EQ(took, kSlotMs + 2000);
}

// Only the first 16 bytes of a slot are compared with what the card gives back.
TEST(AutoPresets, ReadBackComparesSixteenBytes) {
    const struct {
        int kept; // bytes of a write the card keeps
        const char* last;
        int writes;
    } table[] = {{16, kOk, 26}, {15, kNotWritten, 1}};
    for (const auto& row : table) {
        SCOPED_TRACE(row.kept);
        Bench t;
        sim::Faults f = t.b.link.card().faults();
        f.dataWriteBytes = row.kept;
        t.b.link.card().setFaults(f);
        t.load();
        EXPECT_EQ(t.b.link.dialogs.messages().last(), row.last);
        EXPECT_EQ(t.frames("WRDB").size(), row.writes);
        const QByteArray kept = t.b.link.dataMemory(0x2020, 32);
        EXPECT_EQ(kept.left(row.kept), slotBytes(t.db(), "800x600x56").left(row.kept));
        EXPECT_EQ(kept.mid(row.kept), QByteArray(32 - row.kept, char(0xFF)));
        t.expectIdle();
    }
}

// A card that stops answering: the next read-back is one NUL, a write failure; what was
// written stays.
TEST(AutoPresets, CardThatStopsAnsweringMidLoad) {
    Bench t;
    t.b.link.host.onPump([&t] {
        if (t.frames("WRDB").size() >= 3) t.b.link.silent(true);
    });
    const qint64 took = t.load();
    EXPECT_EQ(t.frames("WRDB").size(), 4);
    EXPECT_EQ(t.b.link.dialogs.messages(), (QStringList{kAsk, kNotWritten}));
    for (const Slot& s : {kSeedSlots[0], kSeedSlots[1], kSeedSlots[2], kSeedSlots[3]})
        EXPECT_EQ(t.b.link.dataMemory(s.address, 30), slotBytes(t.db(), s.name)) << s.name;
    EXPECT_EQ(t.b.link.dataMemory(0x2260, 32), QByteArray(32, char(0xFF)));
    t.expectIdle();
    EXPECT_TRUE(t.b.st().Connected); // a silent read is no port failure
    EXPECT_EQ(took, 3 * kSlotMs + 1 + 1010 + 1 + kSilentReadMs);
}

TEST(AutoPresets, CancelLeavesTheCardAlone) {
    Bench t;
    t.b.link.dialogs.answer(MsgResult::Cancel);
    EXPECT_EQ(t.load(), 0);
    EXPECT_TRUE(t.b.link.sent().isEmpty());
    EXPECT_EQ(t.b.link.dialogs.messages(), QStringList{kAsk});
    EXPECT_TRUE(t.progress.isEmpty());
    t.expectIdle(false);
}

TEST(AutoPresets, DatabaseVersion) {
    const struct {
        const char* name;
        std::function<void(SessionBench&)> setUp;
        const char* shown;
        int reads;
    } table[] = {
        {"the seed card", [](SessionBench&) {}, "Autopresets DB Version is  2.06 ", 1},
        {"another record",
         [](SessionBench& b) { b.link.card().setDataMemory(0x18E0, "UVersion 3.10 02/02/2010"); },
         "Autopresets DB Version is  3.10 ", 1},
        {"a short reply", [](SessionBench& b) { b.link.shortReplies(6); },
         "Autopresets DB Version is ", 1},
        {"no link", [](SessionBench& b) { b.frm().cmdDisconnect.click(); },
         "No connection with card", 0},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Bench t;
        row.setUp(t.b);
        t.click(t.b.frm().mnuDBversion);
        EXPECT_EQ(t.b.link.dialogs.messages(), QStringList{row.shown});
        EXPECT_EQ(t.b.link.sent(),
                  row.reads ? QStringList{hexOf(frame("RDDB", 0x18, 0xE0))} : QStringList{});
    }
}

// A query the store cannot run stops the load at the handler's edge with the window given back.
TEST(AutoPresets, StoreErrorGivesTheWindowBack) {
    Bench t;
    t.db().Execute("DROP VIEW tblDefPresetsQ");
    EXPECT_ANY_THROW(t.load());
    EXPECT_TRUE(t.b.link.sent().isEmpty());
    t.expectIdle();
}
