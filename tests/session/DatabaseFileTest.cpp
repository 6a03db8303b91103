// Export and import of the whole database file, with real files in a temporary folder.
#include "SessionBench.h"

#include "resdb/Database.h"
#include "session/DatabaseFile.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

const QString kFailed = "Couldn't Export DataBase. It must be closed.";
const QString kWrongName = "Couldn't Import DataBase. Inappropriate file.";

QByteArray bytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& data) {
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(data);
}

QString description(Database& db, const char* name) {
    Recordset rs = db.OpenRecordset("tblDefValues");
    rs.setIndex("Name");
    rs.Seek("=", QString::fromLatin1(name));
    return rs.NoMatch() ? "<none>" : rs.Fields("Description").Value().toString();
}

// A database file like the live one, with one description changed, at path.
void otherDatabase(SessionBench& b, const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    ASSERT_TRUE(QFile::copy(b.dbPath(), path));
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    auto db = Database::OpenDatabase(path, kDbConnect);
    db->Execute("UPDATE tblDefValues SET Description = 'imported' WHERE Name = '640x480x60';");
    db->Close();
}

} // namespace

TEST(DatabaseFile, Export) {
    struct Row {
        const char* name;
        const char* target; // in the bench folder; null: the live file itself
        const char* written;
        QStringList messages;
    };
    const Row table[] = {
        {"named", "out/DBDefaults.MDB", "out/DBDefaults.MDB", {}},
        {"no extension", "out/copy", "out/copy.mdb", {}},
        {"onto the live file", nullptr, nullptr, {kFailed}},
        {"folder missing", "no/such/DBDefaults.MDB", nullptr, {kFailed}},
        {"a folder in the way", "out/taken.mdb", nullptr, {kFailed}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        ASSERT_TRUE(b.start());
        QDir(b.dir.path()).mkpath("out/taken.mdb");
        const QByteArray live = bytes(b.dbPath());
        b.link.dialogs.clear();
        b.link.dialogs.answerText(row.target ? b.dir.filePath(row.target) : b.dbPath());
        b.frm().mnuExport.fireClick();
        ASSERT_GE(b.link.dialogs.asked().size(), 1u);
        EXPECT_EQ(b.link.dialogs.asked()[0].kind, "save");
        EXPECT_EQ(b.link.dialogs.asked()[0].title, "Export Database to ");
        EXPECT_EQ(b.link.dialogs.messages(), row.messages);
        if (row.written) {
            EXPECT_EQ(bytes(b.dir.filePath(row.written)), live);
        }
        EXPECT_EQ(bytes(b.dbPath()), live);
        ASSERT_TRUE(b.session->DbRez);
        EXPECT_EQ(description(*b.session->DbRez, "640x480x60"), "VGA 640x480, 60 Hz");
    }
}

TEST(DatabaseFile, CancelledDialogsDoNothing) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    Database* before = b.session->DbRez.get();
    b.frm().mnuExport.fireClick();
    b.frm().mnuImport.fireClick();
    EXPECT_EQ(b.session->DbRez.get(), before);
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
    EXPECT_FALSE(QFile::exists(b.dir.filePath("DBDefauO.MDB")));
}

TEST(DatabaseFile, Import) {
    enum Source { Other, OtherPassword, NotADatabase, Folder };
    struct Row {
        const char* name;
        const char* source; // in the bench folder
        Source kind;
        QStringList messages;
        bool replaced;    // the live file now holds the source
        bool backedUp;    // DBDefauO.MDB holds the old live file
        const char* seen; // the description the reopened database shows, null: none open
    };
    const Row table[] = {
        {"imported", "site/DBDefaults.MDB", Other, {}, true, true, "imported"},
        {"name in a folder", "DBDefaults.MDB.d/x.mdb", Other, {}, true, true, "imported"},
        {"backup copy name", "site/DBDefaults.MDB.bak", Other, {}, true, true, "imported"},
        {"wrong name", "site/other.mdb", Other, {kWrongName}, false, false, "VGA 640x480, 60 Hz"},
        {"small letters",
         "site/dbdefaults.mdb",
         Other,
         {kWrongName},
         false,
         false,
         "VGA 640x480, 60 Hz"},
        {"another password", "site/DBDefaults.MDB", OtherPassword, {kFailed}, true, true, nullptr},
        {"not a database", "site/DBDefaults.MDB", NotADatabase, {kFailed}, true, true, nullptr},
        {"a folder", "site/DBDefaults.MDB", Folder, {kFailed}, false, true, "VGA 640x480, 60 Hz"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b;
        ASSERT_TRUE(b.start());
        const QString source = b.dir.filePath(row.source);
        switch (row.kind) {
        case Other:
            otherDatabase(b, source);
            break;
        case OtherPassword:
            QDir().mkpath(QFileInfo(source).path());
            Database::CreateDatabase(source, "ANOTHER")->Close();
            break;
        case NotADatabase:
            write(source, "just some text, no database\n");
            break;
        case Folder:
            QDir().mkpath(source);
            break;
        }
        const QByteArray live = bytes(b.dbPath());
        const QByteArray imported = bytes(source);
        b.link.dialogs.clear();
        b.link.dialogs.answerText(source);
        b.frm().mnuImport.fireClick();
        EXPECT_EQ(b.link.dialogs.asked()[0].kind, "open");
        EXPECT_EQ(b.link.dialogs.asked()[0].title, "Import Database from ");
        EXPECT_EQ(b.link.dialogs.messages(), row.messages);
        EXPECT_EQ(bytes(b.dbPath()), row.replaced ? imported : live);
        const QString backup = b.dir.filePath("DBDefauO.MDB");
        EXPECT_EQ(QFile::exists(backup), row.backedUp);
        if (row.backedUp) {
            EXPECT_EQ(bytes(backup), live);
        }
        if (row.seen) {
            ASSERT_TRUE(b.session->DbRez);
            EXPECT_EQ(description(*b.session->DbRez, "640x480x60"), row.seen);
        } else {
            EXPECT_FALSE(b.session->DbRez);
            // Windows that need the database say so instead of failing hard.
            try {
                b.session->db();
                ADD_FAILURE() << "no error";
            } catch (const DbError& e) {
                EXPECT_EQ(e.Number(), 3420);
            }
        }
        // Nothing of the old file is lost: the backup opens with the old data.
        if (row.backedUp) {
            auto old = Database::OpenDatabase(backup, kDbConnect);
            EXPECT_EQ(description(*old, "640x480x60"), "VGA 640x480, 60 Hz");
        }
    }
}

// The copy goes through a temporary name: a failure half-way leaves the target untouched, and
// no temporary file stays behind.
TEST(DatabaseFile, CopyIsAllOrNothing) {
    QTemporaryDir dir;
    const QString target = dir.filePath("DBDefaults.MDB");
    write(target, "old contents");
    write(dir.filePath("new.MDB"), "new contents");
    EXPECT_THROW(DatabaseFile::copyFile(dir.filePath("missing"), target), std::exception);
    EXPECT_THROW(DatabaseFile::copyFile(dir.path(), target), std::exception);
    EXPECT_THROW(DatabaseFile::copyFile(target, target), std::exception);
    EXPECT_EQ(bytes(target), "old contents");
    DatabaseFile::copyFile(dir.filePath("new.MDB"), target);
    EXPECT_EQ(bytes(target), "new contents");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files).size(), 2);
}
