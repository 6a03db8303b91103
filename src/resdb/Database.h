#pragma once

#include "resdb/DbError.h"
#include "resdb/DbValue.h"
#include "resdb/Recordset.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace velmorak {

namespace detail {
struct Connection;
}

// The connect text of the resolution database.
inline constexpr const char* kDbConnect = ";PWD=7QMX4;";
inline constexpr const char* kDbFileName = "DBDefaults.MDB";

// An open database file (SQLite) with a password check. Closing it, or destroying it, makes the
// cursors opened from it fail with ObjectClosed.
class Database {
  public:
    // Opens an existing file read-write. Fails with FileNotFound when there is no such file,
    // BadFormat when it is no database of this system, BadPassword when the PWD of the connect
    // text does not fit. Never creates or changes a file on failure.
    static std::unique_ptr<Database> OpenDatabase(const QString& path, const QString& connect);
    // Makes a new, empty file with the given password; fails with DatabaseExists if it is there.
    static std::unique_ptr<Database> CreateDatabase(const QString& path, const QString& password);

    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    // A table name gives a table cursor (Index, Seek, AddNew, Edit, Delete); a stored query
    // name or an SQL text gives a read-only cursor over its result.
    Recordset OpenRecordset(const QString& source);

    // Runs SQL statements as one transaction: all take effect or none.
    void Execute(const QString& sql);
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    void Close();
    bool isOpen() const;
    QString path() const;
    QStringList TableNames() const;

    // For tests: called inside every write after the change and before its commit. A throw
    // from it rolls the write back, as a failure or a kill at that point would.
    void setCommitProbe(std::function<void()> probe);

  private:
    explicit Database(std::shared_ptr<detail::Connection> c);
    std::shared_ptr<detail::Connection> conn_;
};

// The password part of a connect text such as ";PWD=7QMX4;" (empty when there is none).
QString passwordOf(const QString& connect);

} // namespace velmorak
