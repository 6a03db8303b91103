// The store: schema and ordinals, cursors, Seek, edits, errors, password and transactions.
#include "link/ValueHelpers.h"
#include "resdb/Database.h"
#include "resdb/Schema.h"
#include "resdb/SqliteHandle.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sqlite3.h>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>
#endif

using namespace velmorak;

namespace {

struct StoreTest : ::testing::Test {
    QTemporaryDir dir;
    QString path;
    std::unique_ptr<Database> db;

    void SetUp() override {
        path = dir.filePath("DBDefaults.MDB");
        db = Database::CreateDatabase(path, "7QMX4");
        CreateSchema(*db);
    }

    void addRow(const QString& table, const QString& name, int base, const DbValue& mark = {}) {
        Recordset rs = db->OpenRecordset(table);
        rs.AddNew();
        RezRow row;
        row.NN = qint16(rs.RecordCount() + 1);
        row.Name = name;
        row.NameSort = NormalizeRez(name);
        row.Vertical = RezHeight(name);
        for (int i = 0; i < kRegisterCount; ++i)
            row.regs[size_t(i)] = quint8(base + i);
        WriteRezRow(rs, row, true);
        rs.Fields("Mark").setValue(mark);
        rs.Update();
    }

    int errorOf(const std::function<void()>& f) {
        try {
            f();
        } catch (const DbError& e) {
            return e.Number();
        }
        return 0;
    }
};

QByteArray fileBytes(const QString& p) {
    QFile f(p);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

} // namespace

TEST_F(StoreTest, FieldsAtTheirOrdinals) {
    Recordset rs = db->OpenRecordset("tblDefValues");
    ASSERT_EQ(rs.FieldCount(), 40);
    const struct {
        int ordinal;
        const char* name;
    } table[] = {{4, "01"},   {12, "09"},  {13, "0AH"},  {22, "13H"}, {23, "14H"}, {24, "15H"},
                 {26, "17H"}, {27, "08T"}, {29, "0AHT"}, {30, "32H"}, {37, "39H"}};
    for (const auto& c : table)
        EXPECT_EQ(rs.Fields(c.ordinal).Name(), c.name) << c.ordinal;
    for (const char* id : {"NN", "Name", "NameSort", "Vertical"})
        EXPECT_LT(rs.Fields(QString::fromLatin1(id)).Ordinal(), 4) << id;
    EXPECT_GE(rs.Fields("Description").Ordinal(), 38);
    EXPECT_GE(rs.Fields("Mark").Ordinal(), 38);
    EXPECT_EQ(db->OpenRecordset("tblCustValues").FieldNames(), rs.FieldNames());
    EXPECT_EQ(db->TableNames(), QStringList({"tblDefValues", "tblCustValues", "tblVValues",
                                             "tblHValues", "tblCodesRez"}));

    addRow("tblDefValues", "1024x768x60", 1);
    Recordset q =
        db->OpenRecordset("SELECT * from tblDefPresetsQ WHERE tblDefPresetsQ.Vertical = 60");
    ASSERT_EQ(q.FieldCount(), 32);
    EXPECT_EQ(q.Fields(30).Name(), "38H");
    EXPECT_EQ(q.Fields(31).Name(), "39H");
    Recordset t = db->OpenRecordset("tblDefValues");
    QByteArray viaQuery;
    for (int f = 2; f < q.FieldCount(); ++f)
        viaQuery.append(char(q.Fields(f).Value().toInt()));
    EXPECT_EQ(viaQuery, CardMemoryBlock(t));
}

TEST_F(StoreTest, EmptyTableAndListing) {
    Recordset rs = db->OpenRecordset("SELECT * from tblDefValues ORDER BY NameSort");
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(errorOf([&] { rs.MoveLast(); }), DbErr::NoCurrentRecord);
    EXPECT_EQ(errorOf([&] { rs.Fields("Name").Value(); }), DbErr::NoCurrentRecord);

    for (const char* n : {"800x600x60", "640x480x60", "1024x768x60"})
        addRow("tblDefValues", n, 0);
    Recordset l = db->OpenRecordset("SELECT * from tblDefValues ORDER BY NameSort");
    EXPECT_FALSE(l.Eof() && l.Bof());
    l.MoveLast();
    EXPECT_EQ(l.RecordCount(), 3);
    l.MoveFirst();
    QStringList names;
    while (!l.Eof()) {
        names << l.Fields("Name").Value().toString();
        l.MoveNext();
    }
    EXPECT_EQ(names, QStringList({"640x480x60", "800x600x60", "1024x768x60"})); // by NameSort
    EXPECT_EQ(errorOf([&] { l.MoveNext(); }), DbErr::NoCurrentRecord);
    l.MovePrevious();
    EXPECT_EQ(l.Fields("Name").Value().toString(), "1024x768x60");
    EXPECT_EQ(errorOf([&] { l.AddNew(); }), DbErr::ReadOnly);
}

TEST_F(StoreTest, SeekAndNoMatch) {
    for (const char* n : {"800x600x60", "640x480x60", "1024x768x60"})
        addRow("tblDefValues", n, 0);
    Recordset rs = db->OpenRecordset("tblDefValues");
    EXPECT_EQ(errorOf([&] { rs.Seek("=", "640x480x60"); }), DbErr::NoCurrentIndex);
    EXPECT_EQ(errorOf([&] { rs.setIndex("CodeRez"); }), DbErr::InvalidIndex);
    rs.setIndex("Name");
    const struct {
        const char* op;
        const char* key;
        const char* found; // nullptr: NoMatch
    } table[] = {
        {"=", "640x480x60", "640x480x60"},
        {"=", "800X600X60", nullptr},
        {"=", "", nullptr},
        {">=", "7", "800x600x60"},
        {">", "800x600x60", nullptr},
        {"<", "7", "640x480x60"},
        {"<=", "1024x768x60", "1024x768x60"},
    };
    for (const auto& c : table) {
        rs.Seek(c.op, c.key);
        EXPECT_EQ(rs.NoMatch(), c.found == nullptr) << c.op << c.key;
        if (c.found) {
            EXPECT_EQ(rs.Fields("Name").Value().toString(), c.found) << c.op << c.key;
        }
    }
    // The index order: walking from a Seek goes on by name.
    rs.Seek("=", "1024x768x60");
    rs.MoveNext();
    EXPECT_EQ(rs.Fields("Name").Value().toString(), "640x480x60");

    Recordset codes = db->OpenRecordset("tblCodesRez");
    codes.AddNew();
    codes.Fields("CodeRez").setValue(35);
    codes.Fields("NameRez").setValue("1024x768x60");
    codes.Update();
    codes.setIndex("CodeRez");
    codes.Seek("=", 35);
    EXPECT_FALSE(codes.NoMatch());
    codes.Seek("=", 36);
    EXPECT_TRUE(codes.NoMatch());
    codes.setIndex("NameRez");
    codes.Seek("=", "1024x768x60");
    EXPECT_EQ(codes.Fields("CodeRez").Value().toInt(), 35);
}

TEST_F(StoreTest, NullIsNotEmptyText) {
    addRow("tblDefValues", "a", 0, DbValue());
    addRow("tblDefValues", "b", 0, DbValue(QString()));
    addRow("tblDefValues", "c", 0, DbValue("x"));
    Recordset rs = db->OpenRecordset("SELECT * from tblDefValues ORDER BY NameSort");
    const struct {
        bool null;
        const char* text;
    } expect[] = {{true, ""}, {false, ""}, {false, "x"}};
    for (const auto& e : expect) {
        const DbValue m = rs.Fields("Mark").Value();
        EXPECT_EQ(m.isNull(), e.null);
        EXPECT_EQ(m.toString(), e.text);
        rs.MoveNext();
    }
    // Only the unmarked rows reach the stored queries.
    EXPECT_EQ(db->OpenRecordset("tblDefValuesQ").RecordCount(), 2);
}

TEST_F(StoreTest, EditUpdateCancelDelete) {
    addRow("tblDefValues", "640x480x60", 10);
    Recordset rs = db->OpenRecordset("tblDefValues");
    EXPECT_EQ(errorOf([&] { rs.Fields(4).setValue(1); }), DbErr::NotEditing);
    EXPECT_EQ(errorOf([&] { rs.Update(); }), DbErr::NotEditing);
    rs.Edit();
    rs.Fields(4).setValue(200);
    EXPECT_EQ(rs.Fields("01").Value().toInt(), 200); // the edit buffer
    rs.CancelUpdate();
    EXPECT_EQ(rs.Fields("01").Value().toInt(), 10);
    rs.Edit();
    rs.Fields("Description").setValue("VGA");
    rs.Update();
    EXPECT_EQ(db->OpenRecordset("tblDefValues").Fields("Description").Value().toString(), "VGA");

    rs.Delete();
    EXPECT_THROW(rs.Fields("Name").Value(), RecordDeletedError);
    EXPECT_EQ(rs.RecordCount(), 0);
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
}

TEST_F(StoreTest, RowDeletedUnderTheCursorIs3167) {
    addRow("tblDefValues", "640x480x60", 0);
    addRow("tblDefValues", "800x600x60", 0);
    Recordset a = db->OpenRecordset("tblDefValues");
    a.setIndex("Name");
    a.Seek("=", "800x600x60");
    EXPECT_EQ(a.Fields("Name").Value().toString(), "800x600x60");
    Recordset b = db->OpenRecordset("tblDefValues");
    b.setIndex("Name");
    b.Seek("=", "800x600x60");
    b.Delete();

    EXPECT_EQ(errorOf([&] { a.Fields("Name").Value(); }), DbErr::RecordDeleted);
    EXPECT_EQ(errorOf([&] { a.Edit(); }), DbErr::RecordDeleted);
    EXPECT_EQ(errorOf([&] { a.Delete(); }), DbErr::RecordDeleted);
    a.MoveFirst();
    EXPECT_EQ(a.Fields("Name").Value().toString(), "640x480x60");
    // An edit begun before the row went is refused at Update, and nothing is written.
    a.Edit();
    a.Fields("Description").setValue("x");
    Recordset c = db->OpenRecordset("tblDefValues");
    c.Delete();
    EXPECT_EQ(errorOf([&] { a.Update(); }), DbErr::RecordDeleted);
    EXPECT_EQ(db->OpenRecordset("tblDefValues").RecordCount(), 0);
}

TEST_F(StoreTest, UnknownFieldsAndClosedObjects) {
    addRow("tblDefValues", "a", 0);
    Recordset rs = db->OpenRecordset("tblDefValues");
    EXPECT_EQ(errorOf([&] { rs.Fields("NoSuch"); }), DbErr::ItemNotFound);
    EXPECT_EQ(errorOf([&] { rs.Fields(40); }), DbErr::ItemNotFound);
    EXPECT_EQ(errorOf([&] { db->OpenRecordset("SELECT * FROM tblNothing"); }), DbErr::NoSuchSource);
    EXPECT_EQ(errorOf([&] { db->OpenRecordset("VelmorakAccess"); }), DbErr::NoSuchSource);
    db->Close();
    EXPECT_EQ(errorOf([&] { rs.MoveNext(); }), DbErr::ObjectClosed);
    EXPECT_EQ(errorOf([&] { db->OpenRecordset("tblDefValues"); }), DbErr::ObjectClosed);
}

TEST_F(StoreTest, OpenChecksFileAndPassword) {
    db->Close();
    const struct {
        const char* connect;
        int error;
    } table[] = {{";PWD=7QMX4;", 0},       {";PWD=7qmx4;", DbErr::BadPassword},
                 {"", DbErr::BadPassword}, {";PWD=;", DbErr::BadPassword},
                 {"pwd=7QMX4", 0},         {";PWD=7QMX4X;", DbErr::BadPassword}};
    for (const auto& c : table)
        EXPECT_EQ(errorOf([&] { Database::OpenDatabase(path, c.connect); }), c.error) << c.connect;

    const QString missing = dir.filePath("nothing/DBDefaults.MDB");
    EXPECT_EQ(errorOf([&] { Database::OpenDatabase(missing, kDbConnect); }), DbErr::FileNotFound);
    EXPECT_FALSE(QFile::exists(missing));
    EXPECT_EQ(errorOf([&] { Database::OpenDatabase(dir.filePath("x.MDB"), kDbConnect); }),
              DbErr::FileNotFound);

    const struct {
        const char* file;
        QByteArray bytes;
    } others[] = {{"empty.MDB", QByteArray()},
                  {"text.MDB", QByteArray("not a database at all, just some words\n")},
                  {"short.MDB", QByteArray("SQLite format 3\0", 16)}};
    for (const auto& o : others) {
        const QString p = dir.filePath(o.file);
        QFile f(p);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(o.bytes);
        f.close();
        EXPECT_EQ(errorOf([&] { Database::OpenDatabase(p, kDbConnect); }), DbErr::BadFormat)
            << o.file;
        EXPECT_EQ(fileBytes(p), o.bytes) << o.file;
        EXPECT_EQ(QDir(dir.path()).entryList(QStringList{QString::fromLatin1(o.file) + "*"}).size(),
                  1);
    }
    EXPECT_EQ(errorOf([&] { Database::CreateDatabase(path, "x"); }), DbErr::DatabaseExists);
}

TEST_F(StoreTest, BlocksOfARow) {
    RezRow row;
    for (int i = 0; i < kRegisterCount; ++i)
        row.regs[size_t(i)] = quint8(i + 1); // ordinal - 3
    const QByteArray ad = AD9888LoadBlock(row);
    ASSERT_EQ(ad.size(), 23);
    EXPECT_EQ(ad.front(), 1);
    EXPECT_EQ(ad.at(19), 20); // "14H" is carried
    EXPECT_EQ(ad.back(), 23); // "17H"
    EXPECT_EQ(TransmitterLoadBlock(row),
              QByteArray("\x18\x19\x1a\x1b\x1c\x1d\x1e\x1f\x20\x21\x22"));
    const QByteArray mem = CardMemoryBlock(row);
    ASSERT_EQ(mem.size(), 30);
    QByteArray expect;
    for (int v = 1; v <= 34; ++v)
        if (v != 20 && v != 22 && v != 23 && v != 30) expect.append(char(v)); // 14H 16H 17H 35H
    EXPECT_EQ(mem, expect);

    const struct {
        int code;
        int high, low;
    } addr[] = {{16, 0x20, 0}, {17, 0x20, 32}, {31, 0x21, 0xE0},
                {32, 0x22, 0}, {120, 0x2D, 0}, {52, 0x24, 0x80}};
    for (const auto& a : addr) {
        ASSERT_TRUE(CardMemoryAddress(a.code)) << a.code;
        EXPECT_EQ(*CardMemoryAddress(a.code), (CardAddress{a.high, a.low})) << a.code;
        EXPECT_EQ(AutoPresetAddress(a.code / 16 - 1, a.code % 16), (CardAddress{a.high, a.low}));
    }
    EXPECT_FALSE(CardMemoryAddress(15));
}

TEST_F(StoreTest, FailedUpdateLeavesNoHalfRow) {
    addRow("tblDefValues", "640x480x60", 10);
    Recordset rs = db->OpenRecordset("tblDefValues");
    // A value out of a byte's range fails the whole update, not the fields before it.
    rs.Edit();
    rs.Fields(4).setValue(99);
    rs.Fields(5).setValue(300);
    EXPECT_EQ(errorOf([&] { rs.Update(); }), DbErr::Engine);
    rs.CancelUpdate();
    EXPECT_EQ(rs.Fields(4).Value().toInt(), 10);

    // A failure between the write and its commit rolls back edits and inserts alike.
    db->setCommitProbe([] { throw std::runtime_error("cut"); });
    rs.Edit();
    for (int i = 4; i < 38; ++i)
        rs.Fields(i).setValue(0);
    EXPECT_THROW(rs.Update(), std::runtime_error);
    rs.CancelUpdate();
    rs.AddNew();
    rs.Fields("Name").setValue("800x600x60");
    EXPECT_THROW(rs.Update(), std::runtime_error);
    rs.CancelUpdate();
    db->setCommitProbe({});
    db->Close();

    auto again = Database::OpenDatabase(path, kDbConnect);
    Recordset check = again->OpenRecordset("tblDefValues");
    EXPECT_EQ(check.RecordCount(), 1);
    for (int i = 4; i < 38; ++i)
        EXPECT_EQ(check.Fields(i).Value().toInt(), 10 + i - 4);
}

// A refused write says in one line what failed and why, and never shows the statement.
TEST_F(StoreTest, RefusedWritesSayWhatAndWhy) {
    addRow("tblDefValues", "640x480x60", 10);
    const QString file = "The database file " + QDir::toNativeSeparators(path);
    sqlite3* other = nullptr; // a second program on the same file
    struct Row {
        const char* name;
        std::function<void()> setUp, undo;
        int number;
        QString text;
    };
    const Row table[] = {
        {"query only", [&] { db->Execute("PRAGMA query_only = ON"); },
         [&] { db->Execute("PRAGMA query_only = OFF"); }, 3027, file + " is read-only."},
        {"disk full",
         [&] {
             db->Execute("CREATE TABLE filler (x)");
             db->Execute("PRAGMA max_page_count = 1");
         },
         [&] { db->Execute("PRAGMA max_page_count = 1000000"); }, 3026, "The disk is full."},
        {"locked by another program",
         [&] {
             ASSERT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &other), SQLITE_OK);
             ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr),
                       SQLITE_OK);
         },
         [&] { sqlite3_close_v2(other); }, 3260,
         file + " is in use by another program; try again."},
        {"a value no field takes", [] {}, [] {}, 3000,
         "The database refused the change: CHECK constraint failed: 01."},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        row.setUp();
        try {
            Recordset rs = db->OpenRecordset("tblDefValues");
            rs.AddNew();
            rs.Fields("Name").setValue("1024x768x60");
            rs.Fields("Description").setValue(QString(20000, 'x')); // more than a page
            rs.Fields("01").setValue(row.number == 3000 ? 300 : 20);
            rs.Update();
            ADD_FAILURE() << "the write went through";
        } catch (const DbError& e) {
            EXPECT_EQ(e.Number(), row.number);
            EXPECT_EQ(e.Description().toStdString(), row.text.toStdString());
            EXPECT_FALSE(e.Statement().isEmpty());
        }
        row.undo();
    }
    // The file on disk no longer a database under a table: damaged.
    sqlite3* raw = nullptr;
    ASSERT_EQ(sqlite3_open(QFile::encodeName(path).constData(), &raw), SQLITE_OK);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(raw, "SELECT rootpage FROM sqlite_master WHERE name = 'tblDefValues'", -1,
                       &st, nullptr);
    ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
    const int page = sqlite3_column_int(st, 0);
    sqlite3_finalize(st);
    sqlite3_close_v2(raw);
    db->Close();
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    ASSERT_TRUE(f.seek(qint64(page - 1) * 4096));
    f.write(QByteArray(4096, char(0xA5)));
    f.close();
    db = Database::OpenDatabase(path, kDbConnect);
    try {
        Recordset rs = db->OpenRecordset("tblDefValues");
        rs.MoveFirst();
        (void)rs.Fields("Name").Value();
        ADD_FAILURE() << "a damaged table was read";
    } catch (const DbError& e) {
        EXPECT_EQ(e.Number(), 3049);
        EXPECT_EQ(e.Description(), file + " is damaged.");
    }
}

// Result codes the tests above cannot provoke, extended codes included.
TEST(StoreErrors, EngineCodesInOneLine) {
    const struct {
        int code;
        int number;
        const char* text;
    } table[] = {
        {SQLITE_READONLY_DBMOVED, 3027, "The database file /d/x.MDB is read-only."},
        {SQLITE_LOCKED, 3260,
         "The database file /d/x.MDB is in use by another program; try again."},
        {SQLITE_NOTADB, 3049, "The database file /d/x.MDB is damaged."},
        {SQLITE_CANTOPEN, 3051, "The database file /d/x.MDB cannot be opened."},
        {SQLITE_IOERR_WRITE, 3040, "The database file /d/x.MDB could not be read or written."},
        {SQLITE_ERROR, 3078, "Cannot find the input table or query (no such table: t)."},
    };
    for (const auto& c : table) {
        SCOPED_TRACE(c.code);
        const QString said = c.code == SQLITE_ERROR ? "no such table: t" : "engine words";
        const DbError e = detail::engineError(c.code, "/d/x.MDB", said, "UPDATE t SET a = 1");
        EXPECT_EQ(e.Number(), c.number);
        EXPECT_EQ(e.Description(),
                  QString(c.text).replace("/d/x.MDB", QDir::toNativeSeparators("/d/x.MDB")));
        EXPECT_FALSE(e.Description().contains("UPDATE"));
    }
}

#ifdef Q_OS_UNIX
TEST_F(StoreTest, KillInTheMiddleOfASaveLeavesTheOldRow) {
    addRow("tblDefValues", "640x480x60", 10);
    db->Close();
    const pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
        auto child = Database::OpenDatabase(path, kDbConnect);
        child->setCommitProbe([] { ::kill(::getpid(), SIGKILL); });
        Recordset rs = child->OpenRecordset("tblDefValues");
        rs.Edit();
        for (int i = 4; i < 38; ++i)
            rs.Fields(i).setValue(0);
        rs.Update();
        _exit(0); // not reached
    }
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_TRUE(QFile::exists(path + "-journal")); // the half save is there, uncommitted

    auto again = Database::OpenDatabase(path, kDbConnect);
    Recordset ok = again->OpenRecordset("PRAGMA integrity_check");
    EXPECT_EQ(ok.Fields(0).Value().toString(), "ok");
    Recordset check = again->OpenRecordset("tblDefValues");
    for (int i = 4; i < 38; ++i)
        EXPECT_EQ(check.Fields(i).Value().toInt(), 10 + i - 4);
}
#endif
