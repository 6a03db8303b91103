#include "resdb/Recordset.h"

#include "resdb/SqliteHandle.h"

#include <sqlite3.h>

namespace velmorak {

using detail::quoteIdent;
using detail::Stmt;

namespace {

DbError noCurrentRecord() {
    return DbError(DbErr::NoCurrentRecord, QStringLiteral("No current record."));
}

DbError readOnly() {
    return DbError(DbErr::ReadOnly,
                   QStringLiteral("Cannot update. Database or object is read-only."));
}

} // namespace

DbValue Field::Value() const {
    return rs_->value(ordinal_);
}

void Field::setValue(const DbValue& v) {
    rs_->setValue(ordinal_, v);
}

QString Field::Name() const {
    return rs_->columns_.at(ordinal_);
}

Recordset::Recordset() = default;

Recordset::~Recordset() {
    Close();
}

Recordset::Recordset(Recordset&& o) noexcept {
    *this = std::move(o);
}

Recordset& Recordset::operator=(Recordset&& o) noexcept {
    if (this == &o) return *this;
    fetch_ = std::move(o.fetch_);
    conn_ = std::move(o.conn_);
    kind_ = std::exchange(o.kind_, Kind::Closed);
    source_ = std::move(o.source_);
    columns_ = std::move(o.columns_);
    byName_ = std::move(o.byName_);
    keys_ = std::move(o.keys_);
    keysStale_ = o.keysStale_;
    staleKey_ = o.staleKey_;
    indexName_ = std::move(o.indexName_);
    indexColumn_ = std::move(o.indexColumn_);
    noMatch_ = o.noMatch_;
    currentDeleted_ = o.currentDeleted_;
    cachedKey_ = std::exchange(o.cachedKey_, -1);
    cachedChanges_ = o.cachedChanges_;
    cache_ = std::move(o.cache_);
    rows_ = std::move(o.rows_);
    pos_ = o.pos_;
    mode_ = std::exchange(o.mode_, EditMode::None);
    buffer_ = std::move(o.buffer_);
    dirty_ = std::move(o.dirty_);
    return *this;
}

void Recordset::requireOpen() const {
    if (kind_ == Kind::Closed || !conn_ || !conn_->db)
        throw DbError(DbErr::ObjectClosed, QStringLiteral("Object invalid or no longer set."));
}

int Recordset::size() const {
    return int(kind_ == Kind::Table ? keys_.size() : rows_.size());
}

bool Recordset::Eof() const {
    requireOpen();
    return size() == 0 || pos_ >= size();
}

bool Recordset::Bof() const {
    requireOpen();
    return size() == 0 || pos_ < 0;
}

void Recordset::requireCurrent() const {
    requireOpen();
    if (currentDeleted_) throw RecordDeletedError();
    if (pos_ < 0 || pos_ >= size()) throw noCurrentRecord();
}

void Recordset::beforeMove() {
    requireOpen();
    refreshKeys();
    mode_ = EditMode::None;
}

void Recordset::MoveFirst() {
    beforeMove();
    if (size() == 0) throw noCurrentRecord();
    currentDeleted_ = false;
    pos_ = 0;
}

void Recordset::MoveLast() {
    beforeMove();
    if (size() == 0) throw noCurrentRecord();
    currentDeleted_ = false;
    pos_ = size() - 1;
}

void Recordset::MoveNext() {
    beforeMove();
    if (currentDeleted_) {
        // The deleted row left the key list; pos_ already names the row behind it.
        currentDeleted_ = false;
        return;
    }
    if (Eof()) throw noCurrentRecord();
    ++pos_;
}

void Recordset::MovePrevious() {
    beforeMove();
    if (currentDeleted_) {
        currentDeleted_ = false;
        pos_ = std::max(pos_ - 1, -1);
        return;
    }
    if (Bof()) throw noCurrentRecord();
    --pos_;
}

int Recordset::RecordCount() {
    requireOpen();
    refreshKeys();
    return size();
}

int Recordset::ordinalOf(const QString& name) const {
    const auto it = byName_.constFind(name.toLower());
    if (it == byName_.constEnd())
        throw DbError(DbErr::ItemNotFound,
                      QStringLiteral("Item not found in this collection: %1").arg(name));
    return *it;
}

Field Recordset::Fields(int ordinal) {
    requireOpen();
    if (ordinal < 0 || ordinal >= FieldCount())
        throw DbError(DbErr::ItemNotFound,
                      QStringLiteral("Item not found in this collection: %1").arg(ordinal));
    return Field(this, ordinal);
}

Field Recordset::Fields(const QString& name) {
    requireOpen();
    return Field(this, ordinalOf(name));
}

const QVector<DbValue>& Recordset::currentRow() {
    requireCurrent();
    if (kind_ == Kind::Query) return rows_.at(pos_);
    const qint64 key = keys_.at(pos_);
    const qint64 changes = sqlite3_total_changes64(conn_->handle());
    if (key == cachedKey_ && changes == cachedChanges_) return cache_;
    fetch_->reset();
    fetch_->bind(1, DbValue(key));
    if (!fetch_->step()) {
        fetch_->reset();
        throw RecordDeletedError();
    }
    cache_.resize(FieldCount());
    for (int i = 0; i < FieldCount(); ++i)
        cache_[i] = fetch_->column(i);
    fetch_->reset();
    cachedKey_ = key;
    cachedChanges_ = changes;
    return cache_;
}

DbValue Recordset::value(int ordinal) {
    if (mode_ != EditMode::None) return buffer_.at(ordinal);
    return currentRow().at(ordinal);
}

void Recordset::setValue(int ordinal, const DbValue& v) {
    requireOpen();
    if (mode_ == EditMode::None)
        throw DbError(DbErr::NotEditing,
                      QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    buffer_[ordinal] = v;
    dirty_[ordinal] = true;
}

QString Recordset::orderBy() const {
    return indexColumn_.isEmpty() ? QStringLiteral("rowid")
                                  : quoteIdent(indexColumn_) + QStringLiteral(", rowid");
}

void Recordset::loadKeys() {
    Stmt st(conn_->handle(),
            QStringLiteral("SELECT rowid FROM %1 ORDER BY %2").arg(quoteIdent(source_), orderBy()));
    keys_.clear();
    while (st.step())
        keys_.append(st.column(0).toInt());
    keysStale_ = false;
}

void Recordset::refreshKeys() {
    if (kind_ != Kind::Table || !keysStale_) return;
    loadKeys();
    const qsizetype at = staleKey_ >= 0 ? keys_.indexOf(staleKey_) : -1;
    pos_ = at >= 0 ? int(at) : std::min(pos_, size());
}

void Recordset::markKeysStale() {
    if (keysStale_) return;
    staleKey_ = (!currentDeleted_ && pos_ >= 0 && pos_ < size()) ? keys_.at(pos_) : -1;
    keysStale_ = true;
}

void Recordset::setIndex(const QString& name) {
    requireOpen();
    if (kind_ != Kind::Table)
        throw DbError(DbErr::NotSupported,
                      QStringLiteral("Operation is not supported for this type of object."));
    // The index "Name" of table T is stored as T_Name, since index names are global in the file.
    Stmt find(
        conn_->handle(),
        QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'index' AND "
                       "tbl_name = ?1 COLLATE NOCASE AND name = ?1 || '_' || ?2 COLLATE NOCASE"));
    find.bind(1, DbValue(source_));
    find.bind(2, DbValue(name));
    if (!find.step())
        throw DbError(DbErr::InvalidIndex,
                      QStringLiteral("'%1' isn't an index in this table.").arg(name));
    const QString sqliteName = find.column(0).toString();
    Stmt info(conn_->handle(), QStringLiteral("PRAGMA index_info(%1)").arg(quoteIdent(sqliteName)));
    if (!info.step())
        throw DbError(DbErr::InvalidIndex,
                      QStringLiteral("'%1' isn't an index in this table.").arg(name));
    refreshKeys();
    const qint64 current = (!currentDeleted_ && pos_ >= 0 && pos_ < size()) ? keys_.at(pos_) : -1;
    indexName_ = name;
    indexColumn_ = info.column(2).toString();
    loadKeys();
    const qsizetype at = current >= 0 ? keys_.indexOf(current) : -1;
    pos_ = at >= 0 ? int(at) : 0;
    currentDeleted_ = false;
}

void Recordset::Seek(const QString& comparison, const DbValue& key) {
    requireOpen();
    if (kind_ != Kind::Table)
        throw DbError(DbErr::NotSupported,
                      QStringLiteral("Operation is not supported for this type of object."));
    if (indexColumn_.isEmpty())
        throw DbError(DbErr::NoCurrentIndex,
                      QStringLiteral("Operation invalid without a current index."));
    const QString op = comparison.trimmed();
    const bool backwards = op == QLatin1String("<") || op == QLatin1String("<=");
    if (op != QLatin1String("=") && op != QLatin1String(">") && op != QLatin1String(">=") &&
        !backwards)
        throw DbError(DbErr::NotSupported,
                      QStringLiteral("Invalid comparison '%1' for Seek.").arg(op));
    beforeMove();
    const QString col = quoteIdent(indexColumn_);
    const QString dir = backwards ? QStringLiteral(" DESC") : QString();
    Stmt st(conn_->handle(),
            QStringLiteral("SELECT rowid FROM %1 WHERE %2 %3 ?1 ORDER BY %2%4, rowid%4 LIMIT 1")
                .arg(quoteIdent(source_), col, op, dir));
    st.bind(1, key);
    const qsizetype at = st.step() ? keys_.indexOf(st.column(0).toInt()) : -1;
    noMatch_ = at < 0;
    if (noMatch_) return;
    pos_ = int(at);
    currentDeleted_ = false;
}

void Recordset::AddNew() {
    requireOpen();
    if (kind_ != Kind::Table) throw readOnly();
    buffer_ = QVector<DbValue>(FieldCount());
    dirty_ = QVector<bool>(FieldCount(), false);
    mode_ = EditMode::Add;
}

void Recordset::Edit() {
    requireOpen();
    if (kind_ != Kind::Table) throw readOnly();
    cachedKey_ = -1; // read the row afresh: it must still be there
    buffer_ = currentRow();
    dirty_ = QVector<bool>(FieldCount(), false);
    mode_ = EditMode::Edit;
}

void Recordset::Update() {
    requireOpen();
    if (mode_ == EditMode::None)
        throw DbError(DbErr::NotEditing,
                      QStringLiteral("Update or CancelUpdate without AddNew or Edit."));
    QStringList cols;
    QVector<DbValue> vals;
    for (int i = 0; i < FieldCount(); ++i)
        if (dirty_.at(i)) {
            cols << quoteIdent(columns_.at(i));
            vals << buffer_.at(i);
        }
    sqlite3* db = conn_->handle();
    const bool adding = mode_ == EditMode::Add;
    const qint64 key =
        adding ? -1 : (currentDeleted_ || pos_ < 0 || pos_ >= size() ? -1 : keys_.at(pos_));
    if (!adding && key < 0) throw RecordDeletedError();
    detail::inSavepoint(*conn_, [&] {
        QString sql;
        if (adding) {
            QStringList marks;
            for (int i = 1; i <= cols.size(); ++i)
                marks << QStringLiteral("?%1").arg(i);
            sql = cols.isEmpty()
                      ? QStringLiteral("INSERT INTO %1 DEFAULT VALUES").arg(quoteIdent(source_))
                      : QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                            .arg(quoteIdent(source_), cols.join(QLatin1Char(',')),
                                 marks.join(QLatin1Char(',')));
        } else {
            QStringList sets;
            for (int i = 0; i < cols.size(); ++i)
                sets << QStringLiteral("%1 = ?%2").arg(cols.at(i)).arg(i + 1);
            if (sets.isEmpty()) sets << QStringLiteral("rowid = rowid");
            sql = QStringLiteral("UPDATE %1 SET %2 WHERE rowid = ?%3")
                      .arg(quoteIdent(source_), sets.join(QLatin1Char(',')))
                      .arg(cols.size() + 1);
        }
        Stmt st(db, sql);
        for (int i = 0; i < vals.size(); ++i)
            st.bind(i + 1, vals.at(i));
        if (!adding) st.bind(int(vals.size()) + 1, DbValue(key));
        st.step();
        if (!adding && sqlite3_changes(db) == 0) throw RecordDeletedError();
    });
    mode_ = EditMode::None;
    cachedKey_ = -1;
    markKeysStale();
}

void Recordset::CancelUpdate() {
    mode_ = EditMode::None;
    buffer_.clear();
    dirty_.clear();
}

void Recordset::Delete() {
    requireOpen();
    if (kind_ != Kind::Table) throw readOnly();
    refreshKeys();
    requireCurrent();
    mode_ = EditMode::None;
    const qint64 key = keys_.at(pos_);
    sqlite3* db = conn_->handle();
    detail::inSavepoint(*conn_, [&] {
        Stmt st(db, QStringLiteral("DELETE FROM %1 WHERE rowid = ?1").arg(quoteIdent(source_)));
        st.bind(1, DbValue(key));
        st.step();
        if (sqlite3_changes(db) == 0) throw RecordDeletedError();
    });
    keys_.remove(pos_);
    currentDeleted_ = true;
    cachedKey_ = -1;
}

void Recordset::Close() {
    CancelUpdate();
    fetch_.reset();
    conn_.reset();
    kind_ = Kind::Closed;
    keys_.clear();
    rows_.clear();
    cache_.clear();
    cachedKey_ = -1;
}

} // namespace velmorak
