// The seed database: every seeded mode is named from its sync counts, its registers follow its
// timing, and the auto preset load places every row in a slot of its own.
#include "link/ValueHelpers.h"
#include "resdb/RezLookup.h"
#include "resdb/SeedData.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>

using namespace velmorak;

namespace {

struct SeedTest : ::testing::Test {
    static inline QTemporaryDir* dir = nullptr;
    static inline SeedSource source;
    std::unique_ptr<Database> db;
    RezClassLists lists;

    static void SetUpTestSuite() {
        dir = new QTemporaryDir;
        source = ReadSeedSource(QStringLiteral(VELMORAK_SEED_SOURCE));
        BuildSeedDatabase(source, dir->filePath(kDbFileName));
    }
    static void TearDownTestSuite() {
        delete dir;
        dir = nullptr;
    }
    void SetUp() override {
        db = Database::OpenDatabase(dir->filePath(kDbFileName), kDbConnect);
        lists = FillRezClassLists(*db);
    }
};

QByteArray block(int v, int h) {
    QByteArray b(24, '\0');
    b[14] = char(v >> 8);
    b[15] = char(v & 0xFF);
    b[16] = char(h >> 8);
    b[17] = char(h & 0xFF);
    b[22] = 2;
    return b;
}

} // namespace

TEST_F(SeedTest, ListsComeFromTheTables) {
    EXPECT_EQ(lists.lstVGroup, QStringList({"56", "60", "65", "70", "72", "75", "85"}));
    EXPECT_EQ(lists.lstVBorders.size(), 8);
    EXPECT_EQ(lists.lstHBorders.size(), 10);
    EXPECT_EQ(lists.lstHGroup, HGroupList());
    EXPECT_EQ(ListRezNames(*db).size(), qsizetype(source.modes.size()));
    EXPECT_EQ(ListRezNames(*db, "tblCustValues"), ListRezNames(*db));
}

TEST_F(SeedTest, EveryModeIsNamedFromItsCounts) {
    // Counts worked out by hand from each timing: SyncV = 195312 * hTotal * vTotal / pclk,
    // SyncH = 2 * vTotal.
    const struct {
        int syncV, syncH;
        const char* name;
    } table[] = {
        {3472, 1250, "800x600x56"},
        {3258, 1050, "640x480x60"},
        {3238, 1256, "800x600x60"},
        {3255, 1500, "1280x720x60"},
        {3255, 1612, "1024x768x60"},
        {3255, 2000, "1280x960x60"},
        {3254, 2132, "1280x1024x60"},
        {3255, 2250, "1920x1080x60"},
        {3255, 2500, "1600x1200x60"},
        {3005, 2500, "1600x1200x65"},
        {2787, 1612, "1024x768x70"},
        {2790, 2500, "1600x1200x70"},
        {2683, 1040, "640x480x72"},
        {2706, 1332, "800x600x72"},
        {2604, 1000, "640x480x75"},
        {2604, 1250, "800x600x75"},
        {2603, 1600, "1024x768x75"},
        {2604, 1800, "1152x864x75"},
        {2603, 2132, "1280x1024x75"},
        {2604, 2500, "1600x1200x75"},
        {2298, 1018, "640x480x85"},
        {2296, 1262, "800x600x85"},
        {2298, 1616, "1024x768x85"},
        {2298, 2022, "1280x960x85"},
        {2297, 2144, "1280x1024x85"},
        {3261, 1868, ""}, // 1440x900x60 (1904 x 934 at 106.5 MHz): not in the database
        {2604, 2250, ""}, // 1920x1080 at 75 Hz: not in the database
        {1700, 1250, ""}, // 800x600 at 115 Hz: above every rate class
    };
    for (const auto& c : table)
        EXPECT_EQ(FindRezName(block(c.syncV, c.syncH), lists, *db), c.name) << c.name;
    EXPECT_EQ(source.modes.size(), 25u);
    // The virtual card's model gives those counts.
    for (const SeedMode& m : source.modes) {
        const QByteArray params = ParamBlockWithCounts(measure({m.width, m.height, m.rate}, 2), 2);
        EXPECT_EQ(FindRezName(params, lists, *db), m.name) << m.name.toStdString();
    }
    // Firmware 1 counts are not classified: they name nothing rather than a wrong mode.
    for (const SeedMode& m : source.modes) {
        const QByteArray params = ParamBlockWithCounts(measure({m.width, m.height, m.rate}, 1), 1);
        EXPECT_EQ(FindRezName(params, lists, *db), "") << m.name.toStdString();
    }
}

TEST_F(SeedTest, FindRezNameEdges) {
    const struct {
        int v, h;
        const char* name;
    } table[] = {
        {3255, 1613, "1024x768x60"}, // 806.5 -> 806
        {3255, 1611, "1024x768x60"}, // 805.5 -> 806
        {3255, 1697, "1024x768x60"}, // 848.5 -> 848
        {3255, 1699, ""},            // 849.5 -> 850: the 864 class, empty at 60 Hz
        {3361, 1612, ""},            // just over the 60 Hz border: 56 Hz, no 768 row there
        {3360, 1612, "1024x768x60"},
        {3700, 1250, "800x600x56"}, // border itself stays in the class above it
        {3701, 1250, ""},           // below 52.8 Hz: class 0
        {2100, 1612, ""},           // above the last rate class
        {0, 0, ""},                 // no sync
        {3255, 3000, ""},           // H above every border: nH 17
    };
    for (const auto& c : table)
        EXPECT_EQ(FindRezName(block(c.v, c.h), lists, *db), c.name) << c.v << " " << c.h;
    EXPECT_EQ(FindRezName(QByteArray(17, '\x10'), lists, *db), "");
    EXPECT_EQ(FindRezName(QByteArray(1, '\0'), lists, *db), "");
}

TEST_F(SeedTest, ClassCodeWalk) {
    const QStringList v = {"300", "200", "100"};
    const QStringList h = {"10", "20"};
    const struct {
        int v, h, code;
    } table[] = {{301, 5, 0},           {300, 5, 16},
                 {150, 15, 2 * 16 + 1}, {100, 20, 3 * 16 + 17},
                 {50, 25, 3 * 16 + 17}, {0, 0, 17 * 16}};
    for (const auto& c : table)
        EXPECT_EQ(RezClassCode(c.v, c.h, v, h), c.code) << c.v << " " << c.h;
    // With all 17 borders below V the walk ends at 0; above it, at 17.
    QStringList all;
    for (int i = 0; i < 17; ++i)
        all << QString::number(1000 - i);
    EXPECT_EQ(RezClassCode(2000, 5, all, h), 0);
    EXPECT_EQ(RezClassCode(10, 5, all, h), 17 * 16);
}

TEST_F(SeedTest, MarkedAndEmptyCells) {
    Recordset rs = db->OpenRecordset("tblCodesRez");
    rs.AddNew();
    rs.Fields("CodeRez").setValue(2 * 16 + 4); // 60 Hz, 864 lines
    rs.Fields("NameRez").setValue(">1152x864x60 not usable");
    rs.Update();
    rs.AddNew();
    rs.Fields("CodeRez").setValue(8 * 16 + 0);
    rs.Update(); // NameRez Null
    rs.Close();
    EXPECT_EQ(FindRezName(block(3255, 1800), lists, *db), "");
    EXPECT_EQ(FindRezName(block(2200, 1000), lists, *db), "640x480x85");
    EXPECT_EQ(FindRezName(block(2100, 1000), lists, *db), "");
}

TEST_F(SeedTest, RegistersFollowTheTiming) {
    Recordset rs = db->OpenRecordset("tblDefValues");
    rs.setIndex("Name");
    for (const SeedMode& m : source.modes) {
        const VesaTiming t = *findVesaTiming({m.width, m.height, m.rate});
        rs.Seek("=", m.name);
        ASSERT_FALSE(rs.NoMatch()) << m.name.toStdString();
        const RezRow r = ReadRezRow(rs);
        const std::string n = m.name.toStdString();
        EXPECT_EQ(r.reg("01") * 16 + r.reg("02") / 16, t.hTotal() - 1) << n;
        EXPECT_EQ(r.reg("02") & 0x0F, 0) << n;
        const double mhz = t.pixelClockKHz / 1000.0;
        const int vco = r.reg("03") >> 6;
        const double lo[] = {10, 41, 82, 150}, hi[] = {41, 82, 150, 205};
        EXPECT_TRUE(mhz >= lo[vco] && mhz < hi[vco]) << n;
        EXPECT_LT(r.reg("05") + r.reg("06"), t.hBack) << n; // clamp inside the back porch
        EXPECT_EQ(r.reg("07"), t.hSync) << n;
        EXPECT_EQ((r.reg("33H") & 1) * 256 + r.reg("32H"), t.hSync + t.hBack) << n;
        EXPECT_EQ(r.reg("34H"), t.vSync + t.vBack) << n;
        EXPECT_EQ((r.reg("37H") & 7) * 256 + r.reg("36H"), t.width) << n;
        EXPECT_EQ(r.reg("38H") + 256 * r.reg("39H"), t.height) << n;
        EXPECT_EQ((r.reg("33H") >> 4) & 1, t.hPositive) << n;
        EXPECT_EQ((r.reg("33H") >> 5) & 1, t.vPositive) << n;
        EXPECT_EQ(r.reg("16H"), 0xFE) << n;
        EXPECT_EQ(r.NameSort, NormalizeRez(m.name)) << n;
        EXPECT_EQ(r.Vertical, m.rate) << n;
        EXPECT_EQ(r.Description.toString(), m.description) << n;
    }
}

// The placement walk of the auto preset load over tblDefPresetsQ.
TEST_F(SeedTest, AutoPresetLoadPlacesEveryRow) {
    QSet<int> addresses;
    int placed = 0;
    Recordset t = db->OpenRecordset("tblDefValues");
    t.setIndex("Name");
    Recordset codes = db->OpenRecordset("tblCodesRez");
    codes.setIndex("NameRez");
    for (int i = 0; i < lists.lstVGroup.size(); ++i) {
        int nHigh = 32 + 2 * i, nLow = 0, k = 0;
        const int nV = int(Val(lists.lstVGroup.at(i)));
        Recordset rs = db->OpenRecordset(
            "SELECT * from tblDefPresetsQ WHERE tblDefPresetsQ.Vertical = " + QString::number(nV));
        if (rs.Eof() && rs.Bof()) continue;
        rs.MoveLast();
        const int n = rs.RecordCount();
        rs.MoveFirst();
        auto advance = [&] {
            nLow += 32;
            if (nLow >= 256) nHigh += nLow / 256, nLow %= 256;
        };
        for (int r = 1; r <= n; ++r) {
            QByteArray s;
            int nRezH = 0;
            for (int f = 2; f < rs.FieldCount(); ++f) {
                const int v = int(rs.Fields(f).Value().toInt());
                s.append(char(v));
                if (f == 30) nRezH = v;
                if (f == 31) nRezH += 256 * v;
            }
            for (int tries = 0; tries < 16; ++tries) {
                if (int(Val(k < lists.lstHGroup.size() ? lists.lstHGroup.at(k) : "")) == nRezH)
                    break;
                advance();
                ++k;
                ASSERT_NE(k, 15) << "incompatible in group " << nV << " row " << r;
            }
            ++k;
            const QString name = rs.Fields("Name").Value().toString();
            t.Seek("=", name);
            EXPECT_EQ(s, CardMemoryBlock(t)) << name.toStdString();
            codes.Seek("=", name);
            ASSERT_FALSE(codes.NoMatch()) << name.toStdString();
            EXPECT_EQ(CardMemoryAddress(int(codes.Fields("CodeRez").Value().toInt()))->value(),
                      nHigh * 256 + nLow)
                << name.toStdString();
            EXPECT_FALSE(addresses.contains(nHigh * 256 + nLow)) << name.toStdString();
            addresses.insert(nHigh * 256 + nLow);
            ++placed;
            advance();
            rs.MoveNext();
        }
    }
    EXPECT_EQ(placed, int(source.modes.size()));
}

TEST(SeedSource, ValidationFindsProblems) {
    const QString base = "vclass 60 3360\nvclass 75 2650\nvclass 0 2450\n"
                         "hborder 570\nhborder 705\nhborder 775\nhborder 850\nhborder 40000\n";
    const struct {
        const char* modes;
        const char* problem; // nullptr: sound
    } table[] = {
        {"mode 640x480x60 VGA\nmode 1024x768x75 XGA\n", nullptr},
        {"mode 640x480x60 a\nmode 640x480x60 b\n", "named twice"},
        {"mode 1280x768x60 a\nmode 1024x768x60 b\n", "slot is taken"},
        {"mode 1280x800x60 a\n", "no slot"},
        {"mode 640x480x85 a\n", "no group"},
        {"mode 641x480x60 a\n", "no VESA timing"},
        {"mode 1600x1200x85 a\n", "beyond 205 MHz"},
        {"mode 1280x960x60 a\n", "measured class"}, // 1000 lines fall in the 864 class here
    };
    for (const auto& c : table) {
        const QStringList p = ValidateSeed(ParseSeedSource(base + c.modes));
        if (!c.problem) {
            EXPECT_TRUE(p.isEmpty()) << p.join("; ").toStdString();
        } else {
            EXPECT_TRUE(p.join("; ").contains(c.problem)) << c.modes << p.join("; ").toStdString();
        }
    }
    EXPECT_TRUE(ValidateSeed(ParseSeedSource("vclass 60 3360\nhborder 570\n"))
                    .join(" ")
                    .contains("last H border"));
    EXPECT_THROW(ParseSeedSource("vclass 60\n"), std::runtime_error);
    EXPECT_THROW(ParseSeedSource("mode 640x480\n"), std::runtime_error);
    EXPECT_THROW(ParseSeedSource("colour red\n"), std::runtime_error);
}

// Open and fill of the lists, as the main window does them; timings are printed for the docs.
TEST(SeedTiming, OpenAndFill) {
    QTemporaryDir dir;
    const QString path = dir.filePath(kDbFileName);
    const SeedSource src = ReadSeedSource(QStringLiteral(VELMORAK_SEED_SOURCE));
    BuildSeedDatabase(src, path);
    auto measure = [&](const char* what) {
        QElapsedTimer clock;
        clock.start();
        auto db = Database::OpenDatabase(path, kDbConnect);
        const QStringList names = ListRezNames(*db);
        const RezClassLists lists = FillRezClassLists(*db);
        const qint64 ms = clock.elapsed();
        std::printf("[timing] %s: %lld rows, open + fill %lld ms\n", what, (long long)names.size(),
                    (long long)ms);
        EXPECT_EQ(lists.lstVGroup.size(), 7);
        EXPECT_LT(ms, 5000);
        return names.size();
    };
    EXPECT_EQ(measure("seed"), qsizetype(src.modes.size()));
    {
        auto db = Database::OpenDatabase(path, kDbConnect);
        db->BeginTrans();
        Recordset rs = db->OpenRecordset("tblDefValues");
        RezRow row = ReadRezRow(rs);
        for (int i = 0; i < 10000 - int(src.modes.size()); ++i) {
            row.Name = QStringLiteral("%1x%2x%3").arg(100 + i % 4000).arg(100 + i / 4000).arg(60);
            row.NameSort = NormalizeRez(row.Name);
            rs.AddNew();
            WriteRezRow(rs, row, true);
            rs.Update();
        }
        db->CommitTrans();
    }
    EXPECT_EQ(measure("10,000 rows"), 10000);
}
