#pragma once

#include <QString>

#include <stdexcept>

namespace velmorak {

// Error numbers of the store.
namespace DbErr {
constexpr int Engine = 3000;         // any other failure of the engine; its own text follows
constexpr int InvalidIndex = 3015;   // "'<name>' isn't an index in this table."
constexpr int NoCurrentIndex = 3019; // Seek without an index
constexpr int NotEditing = 3020;     // Update or a field write without AddNew or Edit
constexpr int NoCurrentRecord = 3021;
constexpr int FileNotFound = 3024;
constexpr int ReadOnly = 3027; // a read-only cursor, or a file the engine may not write
constexpr int DiskFull = 3026;
constexpr int Corrupt = 3049; // the file is damaged or no database at all
constexpr int CannotOpen = 3051;
constexpr int DiskIo = 3040; // the system could not read or write the file
constexpr int Locked = 3260; // another program holds the file
constexpr int BadPassword = 3031;
constexpr int NoSuchSource = 3078;  // no such table or query
constexpr int RecordDeleted = 3167; // the row vanished under the cursor
constexpr int DatabaseExists = 3204;
constexpr int NotSupported = 3251;
constexpr int ItemNotFound = 3265; // no field of that name or ordinal
constexpr int BadFormat = 3343;    // not a database of this system
constexpr int ObjectClosed = 3420; // the database or cursor was closed
} // namespace DbErr

// A numbered error of the store.
class DbError : public std::runtime_error {
  public:
    // description is the one line a user reads; statement, what the engine was asked, is for
    // developers only and never shown.
    DbError(int number, const QString& description, const QString& statement = {})
        : std::runtime_error(description.toStdString()), number_(number), description_(description),
          statement_(statement) {}
    int Number() const { return number_; }
    QString Description() const { return description_; }
    QString Statement() const { return statement_; }

  private:
    int number_;
    QString description_;
    QString statement_;
};

// 3167: the current row was deleted, by this cursor or under it.
class RecordDeletedError : public DbError {
  public:
    RecordDeletedError() : DbError(DbErr::RecordDeleted, QStringLiteral("Record is deleted.")) {}
};

} // namespace velmorak
