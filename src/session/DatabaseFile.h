#pragma once

#include <QString>

namespace velmorak {

class Session;

// Whole copies of the resolution database out of and into the program's folder. The open
// database is closed around the copy and opened again after it.
class DatabaseFile {
  public:
    explicit DatabaseFile(Session& s) : s_(s) {}

    void exportClick();
    void importClick();

    // The live file and the backup that an import leaves of it.
    QString livePath() const;
    QString backupPath() const;

    // Copies a whole file: written under a temporary name beside the target and renamed over
    // it at the end, so a failure leaves the target as it was. Throws on failure.
    static void copyFile(const QString& from, const QString& to);

  private:
    void closeDatabase();
    void reopen();
    void failed();
    Session& s_;
};

} // namespace velmorak
