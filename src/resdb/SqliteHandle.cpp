#include "resdb/SqliteHandle.h"

#include "link/ValueHelpers.h"

#include <QDir>

#include <sqlite3.h>

#include <cmath>

namespace velmorak::detail {

Connection::~Connection() {
    close();
}

void Connection::close() {
    if (db) sqlite3_close_v2(db); // statements still open finish the close when finalized
    db = nullptr;
}

sqlite3* Connection::handle() const {
    if (!db) throw DbError(DbErr::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
    return db;
}

DbError engineError(int code, const QString& path, const QString& engineText,
                    const QString& statement) {
    const QString file = QStringLiteral("The database file %1").arg(QDir::toNativeSeparators(path));
    switch (code & 0xFF) {
    case SQLITE_READONLY:
        return DbError(DbErr::ReadOnly, file + QStringLiteral(" is read-only."), statement);
    case SQLITE_FULL:
        return DbError(DbErr::DiskFull, QStringLiteral("The disk is full."), statement);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DbError(DbErr::Locked,
                       file + QStringLiteral(" is in use by another program; try again."),
                       statement);
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return DbError(DbErr::Corrupt, file + QStringLiteral(" is damaged."), statement);
    case SQLITE_CANTOPEN:
        return DbError(DbErr::CannotOpen, file + QStringLiteral(" cannot be opened."), statement);
    case SQLITE_IOERR:
        return DbError(DbErr::DiskIo, file + QStringLiteral(" could not be read or written."),
                       statement);
    default:
        break;
    }
    if (engineText.startsWith(QLatin1String("no such table")))
        return DbError(DbErr::NoSuchSource,
                       QStringLiteral("Cannot find the input table or query (%1).").arg(engineText),
                       statement);
    if ((code & 0xFF) == SQLITE_CONSTRAINT)
        return DbError(DbErr::Engine,
                       QStringLiteral("The database refused the change: %1.").arg(engineText),
                       statement);
    return DbError(DbErr::Engine, QStringLiteral("The database failed: %1.").arg(engineText),
                   statement);
}

namespace {

QString fileOf(sqlite3* db) {
    const char* f = db ? sqlite3_db_filename(db, "main") : nullptr;
    return QString::fromUtf8(f ? f : "");
}

} // namespace

void throwEngine(sqlite3* db, const QString& what) {
    if (!db) throw DbError(DbErr::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
    throw engineError(sqlite3_extended_errcode(db), fileOf(db),
                      QString::fromUtf8(sqlite3_errmsg(db)), what);
}

Stmt::Stmt(sqlite3* db, const QString& sql) : db_(db) {
    const QByteArray utf8 = sql.toUtf8();
    if (sqlite3_prepare_v2(db, utf8.constData(), int(utf8.size()), &st_, nullptr) != SQLITE_OK) {
        sqlite3_finalize(st_);
        st_ = nullptr;
        throwEngine(db, sql);
    }
}

Stmt::~Stmt() {
    sqlite3_finalize(st_);
}

void Stmt::bind(int index, const DbValue& v) {
    int rc = SQLITE_OK;
    if (v.isNull())
        rc = sqlite3_bind_null(st_, index);
    else if (v.isInteger())
        rc = sqlite3_bind_int64(st_, index, v.toInt());
    else if (v.isReal())
        rc = sqlite3_bind_double(st_, index, v.toDouble());
    else {
        const QByteArray t = v.toString().toUtf8();
        rc = sqlite3_bind_text(st_, index, t.constData(), int(t.size()), SQLITE_TRANSIENT);
    }
    if (rc != SQLITE_OK) throwEngine(db_, QStringLiteral("bind"));
}

bool Stmt::step() {
    const int rc = sqlite3_step(st_);
    if (rc == SQLITE_ROW) return true;
    if (rc == SQLITE_DONE) return false;
    const QString sql = QString::fromUtf8(sqlite3_sql(st_));
    sqlite3_reset(st_);
    throwEngine(db_, sql);
}

void Stmt::reset() {
    sqlite3_reset(st_);
    sqlite3_clear_bindings(st_);
}

int Stmt::columnCount() const {
    return sqlite3_column_count(st_);
}

QString Stmt::columnName(int i) const {
    return QString::fromUtf8(sqlite3_column_name(st_, i));
}

DbValue Stmt::column(int i) const {
    switch (sqlite3_column_type(st_, i)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return DbValue(qint64(sqlite3_column_int64(st_, i)));
    case SQLITE_FLOAT:
        return DbValue(sqlite3_column_double(st_, i));
    case SQLITE_BLOB:
        return DbValue(QString::fromLatin1(static_cast<const char*>(sqlite3_column_blob(st_, i)),
                                           sqlite3_column_bytes(st_, i)));
    default:
        return DbValue(QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(st_, i)),
                                         sqlite3_column_bytes(st_, i)));
    }
}

void exec(sqlite3* db, const QString& sql) {
    char* err = nullptr;
    const int rc = sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &err);
    if (rc != SQLITE_OK) {
        const QString msg = QString::fromUtf8(err ? err : sqlite3_errstr(rc));
        sqlite3_free(err);
        throw engineError(sqlite3_extended_errcode(db), fileOf(db), msg, sql);
    }
}

void inSavepoint(Connection& c, const std::function<void()>& work) {
    sqlite3* db = c.handle();
    exec(db, QStringLiteral("SAVEPOINT velmorak_write"));
    try {
        work();
        if (c.commitProbe) c.commitProbe();
    } catch (...) {
        sqlite3_exec(db, "ROLLBACK TO velmorak_write; RELEASE velmorak_write", nullptr, nullptr,
                     nullptr);
        throw;
    }
    exec(db, QStringLiteral("RELEASE velmorak_write"));
}

QString quoteIdent(const QString& name) {
    QString q = name;
    q.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + q + QLatin1Char('"');
}

} // namespace velmorak::detail

namespace velmorak {

qint64 DbValue::toInt() const {
    if (isInteger()) return std::get<qint64>(v_);
    // A Long is the widest whole number of a field.
    if (isReal()) return ToInt32(std::get<double>(v_));
    if (isText()) return ToInt32(Val(std::get<QString>(v_)));
    return 0;
}

double DbValue::toDouble() const {
    if (isInteger()) return double(std::get<qint64>(v_));
    if (isReal()) return std::get<double>(v_);
    if (isText()) return Val(std::get<QString>(v_));
    return 0.0;
}

QString DbValue::toString() const {
    if (isInteger()) return QString::number(std::get<qint64>(v_));
    if (isReal()) return QString::number(std::get<double>(v_), 'g', 15);
    if (isText()) return std::get<QString>(v_);
    return {};
}

} // namespace velmorak
