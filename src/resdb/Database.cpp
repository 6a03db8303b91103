#include "resdb/Database.h"

#include "resdb/SqliteHandle.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <sqlite3.h>

namespace velmorak {

using detail::exec;
using detail::quoteIdent;
using detail::Stmt;

namespace {

// The password check: one row of a random salt and SHA-256(salt + password), both in hex.
const char* const kAccessTable = "VelmorakAccess";

QString digestOf(const QString& saltHex, const QString& password) {
    QCryptographicHash h(QCryptographicHash::Sha256);
    h.addData(QByteArray::fromHex(saltHex.toLatin1()));
    h.addData(password.toUtf8());
    return QString::fromLatin1(h.result().toHex());
}

bool hasSqliteHeader(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return false;
    return f.read(16) == QByteArray("SQLite format 3\0", 16);
}

DbError badFormat(const QString& path) {
    return DbError(DbErr::BadFormat,
                   QStringLiteral("Unrecognized database format '%1'.").arg(path));
}

void configure(sqlite3* db) {
    sqlite3_busy_timeout(db, 2000);
    // A rollback journal keeps the file itself whole after every commit, so it can be copied as it
    // stands; FULL sync makes a commit survive a kill or a power loss.
    exec(db, QStringLiteral("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL;"));
}

} // namespace

QString passwordOf(const QString& connect) {
    for (const QString& part : connect.split(QLatin1Char(';'))) {
        const qsizetype eq = part.indexOf(QLatin1Char('='));
        if (eq > 0 &&
            part.left(eq).trimmed().compare(QLatin1String("PWD"), Qt::CaseInsensitive) == 0)
            return part.mid(eq + 1);
    }
    return {};
}

Database::Database(std::shared_ptr<detail::Connection> c) : conn_(std::move(c)) {}

Database::~Database() {
    Close();
}

std::unique_ptr<Database> Database::OpenDatabase(const QString& path, const QString& connect) {
    const QFileInfo fi(path);
    if (!fi.exists() || !fi.isFile())
        throw DbError(DbErr::FileNotFound, QStringLiteral("Could not find file '%1'.").arg(path));
    // Checked before the engine sees it, so that a file of another kind is never written to.
    if (!hasSqliteHeader(path)) throw badFormat(path);
    auto c = std::make_shared<detail::Connection>();
    c->path = path;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &c->db, SQLITE_OPEN_READWRITE,
                        nullptr) != SQLITE_OK) {
        const DbError e = detail::engineError(sqlite3_extended_errcode(c->db), path,
                                              QString::fromUtf8(sqlite3_errmsg(c->db)), {});
        c->close();
        throw e;
    }
    QString salt, digest;
    try {
        sqlite3_busy_timeout(c->db, 2000);
        Stmt st(c->db, QStringLiteral("SELECT Salt, Digest FROM %1").arg(quoteIdent(kAccessTable)));
        if (!st.step()) throw badFormat(path);
        salt = st.column(0).toString();
        digest = st.column(1).toString();
    } catch (const DbError& e) {
        if (e.Number() == DbErr::BadFormat) throw;
        throw badFormat(path);
    }
    if (digestOf(salt, passwordOf(connect)) != digest)
        throw DbError(DbErr::BadPassword, QStringLiteral("Not a valid password."));
    configure(c->db);
    return std::unique_ptr<Database>(new Database(std::move(c)));
}

std::unique_ptr<Database> Database::CreateDatabase(const QString& path, const QString& password) {
    if (QFileInfo::exists(path))
        throw DbError(DbErr::DatabaseExists,
                      QStringLiteral("Database already exists: '%1'.").arg(path));
    auto c = std::make_shared<detail::Connection>();
    c->path = path;
    if (sqlite3_open_v2(QFile::encodeName(path).constData(), &c->db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        const DbError e = detail::engineError(sqlite3_extended_errcode(c->db), path,
                                              QString::fromUtf8(sqlite3_errmsg(c->db)), {});
        c->close();
        throw e;
    }
    configure(c->db);
    QByteArray salt(16, '\0');
    for (char& b : salt)
        b = char(QRandomGenerator::system()->bounded(256));
    const QString saltHex = QString::fromLatin1(salt.toHex());
    detail::inSavepoint(*c, [&] {
        exec(c->db, QStringLiteral("CREATE TABLE %1 (Salt TEXT NOT NULL, Digest TEXT NOT NULL)")
                        .arg(quoteIdent(kAccessTable)));
        Stmt st(c->db, QStringLiteral("INSERT INTO %1 (Salt, Digest) VALUES (?1, ?2)")
                           .arg(quoteIdent(kAccessTable)));
        st.bind(1, DbValue(saltHex));
        st.bind(2, DbValue(digestOf(saltHex, password)));
        st.step();
    });
    return std::unique_ptr<Database>(new Database(std::move(c)));
}

Recordset Database::OpenRecordset(const QString& source) {
    sqlite3* db = conn_->handle();
    const QString name = source.trimmed();
    QString type;
    QString realName;
    {
        Stmt find(db, QStringLiteral("SELECT type, name FROM sqlite_master WHERE name = ?1 "
                                     "COLLATE NOCASE AND type IN ('table', 'view')"));
        find.bind(1, DbValue(name));
        if (find.step()) {
            type = find.column(0).toString();
            realName = find.column(1).toString();
        }
    }
    if (realName.compare(QLatin1String(kAccessTable), Qt::CaseInsensitive) == 0)
        throw DbError(DbErr::NoSuchSource,
                      QStringLiteral("Cannot find the input table or query '%1'.").arg(name));

    Recordset rs;
    rs.conn_ = conn_;
    rs.source_ = type == QLatin1String("table") ? realName : name;
    if (type == QLatin1String("table")) {
        rs.kind_ = Recordset::Kind::Table;
        rs.fetch_ = std::make_unique<Stmt>(
            db, QStringLiteral("SELECT * FROM %1 WHERE rowid = ?1").arg(quoteIdent(realName)));
        for (int i = 0; i < rs.fetch_->columnCount(); ++i)
            rs.columns_ << rs.fetch_->columnName(i);
        rs.loadKeys();
    } else {
        rs.kind_ = Recordset::Kind::Query;
        const QString sql = type == QLatin1String("view")
                                ? QStringLiteral("SELECT * FROM %1").arg(quoteIdent(realName))
                                : name;
        Stmt st(db, sql);
        for (int i = 0; i < st.columnCount(); ++i)
            rs.columns_ << st.columnName(i);
        while (st.step()) {
            QVector<DbValue> row(st.columnCount());
            for (int i = 0; i < st.columnCount(); ++i)
                row[i] = st.column(i);
            rs.rows_.append(std::move(row));
        }
    }
    for (int i = 0; i < rs.columns_.size(); ++i)
        rs.byName_.insert(rs.columns_.at(i).toLower(), i);
    rs.pos_ = 0;
    return rs;
}

void Database::Execute(const QString& sql) {
    detail::inSavepoint(*conn_, [&] { exec(conn_->handle(), sql); });
}

void Database::BeginTrans() {
    exec(conn_->handle(), QStringLiteral("BEGIN IMMEDIATE"));
}

void Database::CommitTrans() {
    if (conn_->commitProbe) {
        try {
            conn_->commitProbe();
        } catch (...) {
            sqlite3_exec(conn_->handle(), "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }
    exec(conn_->handle(), QStringLiteral("COMMIT"));
}

void Database::Rollback() {
    exec(conn_->handle(), QStringLiteral("ROLLBACK"));
}

void Database::Close() {
    if (conn_) conn_->close();
}

bool Database::isOpen() const {
    return conn_ && conn_->db;
}

QString Database::path() const {
    return conn_->path;
}

QStringList Database::TableNames() const {
    Stmt st(conn_->handle(), QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' "
                                            "AND name NOT LIKE 'sqlite%' ORDER BY rowid"));
    QStringList names;
    while (st.step()) {
        const QString n = st.column(0).toString();
        if (n != QLatin1String(kAccessTable)) names << n;
    }
    return names;
}

void Database::setCommitProbe(std::function<void()> probe) {
    conn_->commitProbe = std::move(probe);
}

} // namespace velmorak
