#pragma once

// Internal: the shared connection and statement handles of the store.

#include "resdb/DbError.h"
#include "resdb/DbValue.h"

#include <QString>

#include <functional>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace velmorak::detail {

struct Connection {
    sqlite3* db = nullptr;
    QString path;
    // Called inside each write of the store after the change and before it is committed.
    std::function<void()> commitProbe;
    ~Connection();
    void close();
    sqlite3* handle() const; // throws ObjectClosed when closed
};

// A prepared statement, finalized on destruction.
class Stmt {
  public:
    Stmt(sqlite3* db, const QString& sql);
    ~Stmt();
    Stmt(const Stmt&) = delete;
    Stmt& operator=(const Stmt&) = delete;

    void bind(int index, const DbValue& v); // index from 1
    bool step();                            // true while a row is there
    void reset();
    int columnCount() const;
    QString columnName(int i) const;
    DbValue column(int i) const;
    sqlite3_stmt* get() const { return st_; }

  private:
    sqlite3* db_;
    sqlite3_stmt* st_ = nullptr;
};

// Throws the numbered error for an engine failure.
// The error of an engine result code (primary or extended) on the file at path, in one line
// that says what failed and why; engineText is the engine's own words for the cases it alone
// can tell, statement is kept out of the text.
DbError engineError(int code, const QString& path, const QString& engineText,
                    const QString& statement);
[[noreturn]] void throwEngine(sqlite3* db, const QString& what);
void exec(sqlite3* db, const QString& sql);
// Runs work inside a savepoint; a throw, from work or the commit probe, rolls it back.
void inSavepoint(Connection& c, const std::function<void()>& work);
QString quoteIdent(const QString& name);

} // namespace velmorak::detail
