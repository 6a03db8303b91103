#pragma once

#include "resdb/DbError.h"
#include "resdb/DbValue.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

namespace velmorak {

namespace detail {
struct Connection;
class Stmt;
} // namespace detail

class Recordset;

// One field of the current row of a cursor.
class Field {
  public:
    DbValue Value() const;
    void setValue(const DbValue& v); // only between AddNew or Edit and Update
    QString Name() const;
    int Ordinal() const { return ordinal_; }

  private:
    friend class Recordset;
    Field(Recordset* rs, int ordinal) : rs_(rs), ordinal_(ordinal) {}
    Recordset* rs_;
    int ordinal_;
};

// A cursor over a table or over the result of a query. Table cursors read rows live: a row
// deleted under the cursor reads as RecordDeleted (3167). Query cursors hold their result.
// (EOF is a macro of the C library, hence Eof and Bof.)
class Recordset {
  public:
    enum class Kind { Closed, Table, Query };
    enum class EditMode { None, Edit, Add };

    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    Kind kind() const { return kind_; }
    QString source() const { return source_; }

    bool Eof() const;
    bool Bof() const;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    int RecordCount();

    int FieldCount() const { return int(columns_.size()); }
    Field Fields(int ordinal);
    Field Fields(const QString& name);
    QStringList FieldNames() const { return columns_; }

    // Table cursors: choose an index by name ("Name", "CodeRez", "NameRez"), then Seek on it
    // with "=", "<", "<=", ">=" or ">". NoMatch tells a failed Seek.
    void setIndex(const QString& name);
    QString Index() const { return indexName_; }
    void Seek(const QString& comparison, const DbValue& key);
    bool NoMatch() const { return noMatch_; }

    void AddNew();
    void Edit();
    void Update();
    void CancelUpdate();
    void Delete();
    EditMode editMode() const { return mode_; }

    void Close();

  private:
    friend class Database;
    friend class Field;

    DbValue value(int ordinal);
    void setValue(int ordinal, const DbValue& v);
    int ordinalOf(const QString& name) const;
    void requireOpen() const;
    void requireCurrent() const;
    const QVector<DbValue>& currentRow();
    void loadKeys();
    void refreshKeys();
    void markKeysStale();
    void beforeMove();
    int size() const;
    QString orderBy() const;

    std::shared_ptr<detail::Connection> conn_;
    Kind kind_ = Kind::Closed;
    QString source_;
    QStringList columns_;
    QHash<QString, int> byName_; // lower-case name -> ordinal

    // Table cursors
    QVector<qint64> keys_; // rowids in index order
    bool keysStale_ = false;
    qint64 staleKey_ = 0;
    QString indexName_;
    QString indexColumn_;
    bool noMatch_ = false;
    bool currentDeleted_ = false;
    qint64 cachedKey_ = -1;
    qint64 cachedChanges_ = -1;
    QVector<DbValue> cache_;
    std::unique_ptr<detail::Stmt> fetch_;

    // Query cursors
    QVector<QVector<DbValue>> rows_;

    int pos_ = 0; // -1 before the first row, size() behind the last

    EditMode mode_ = EditMode::None;
    QVector<DbValue> buffer_;
    QVector<bool> dirty_;
};

} // namespace velmorak
