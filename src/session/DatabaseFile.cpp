#include "session/DatabaseFile.h"

#include "forms/Dialogs.h"
#include "platform/Host.h"
#include "resdb/Database.h"
#include "session/Session.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <stdexcept>

namespace velmorak {

namespace {

const char* const kBackupName = "DBDefauO.MDB";
const char* const kFilter = "Database files (*.mdb *.MDB);;All files (*)";

class CopyError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The save dialog's default extension: a name without one gets ".mdb".
QString withDefaultExt(const QString& path) {
    return QFileInfo(path).suffix().isEmpty() ? path + QStringLiteral(".mdb") : path;
}

} // namespace

QString DatabaseFile::livePath() const {
    return s_.platform.appPath + QStringLiteral("/") + QString::fromLatin1(kDbFileName);
}

QString DatabaseFile::backupPath() const {
    return s_.platform.appPath + QStringLiteral("/") + QString::fromLatin1(kBackupName);
}

void DatabaseFile::copyFile(const QString& from, const QString& to) {
    const QFileInfo src(from), dst(to);
    if (dst.exists() && src.exists() && src.canonicalFilePath() == dst.canonicalFilePath())
        throw CopyError("a file cannot be copied onto itself");
    if (!src.isFile()) throw CopyError("no such file");
    QFile in(from);
    if (!in.open(QIODevice::ReadOnly)) throw CopyError(in.errorString().toStdString());
    QSaveFile out(to);
    if (!out.open(QIODevice::WriteOnly)) throw CopyError(out.errorString().toStdString());
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(1 << 16);
        if (chunk.isEmpty() && in.error() != QFileDevice::NoError)
            throw CopyError(in.errorString().toStdString());
        if (out.write(chunk) != chunk.size()) throw CopyError(out.errorString().toStdString());
    }
    if (!out.commit()) throw CopyError(out.errorString().toStdString());
}

void DatabaseFile::closeDatabase() {
    if (s_.DbRez) s_.DbRez->Close();
    s_.DbRez.reset();
    s_.host.sleep(10);
}

void DatabaseFile::failed() {
    s_.dialogs.messageBox(QStringLiteral("Couldn't Export DataBase. It must be closed."),
                          MsgButtons::OK, QString(), MsgIcon::Critical);
}

// A file that does not open (another password, no database) leaves the program without one.
void DatabaseFile::reopen() {
    try {
        s_.DbRez = Database::OpenDatabase(livePath(), QString::fromLatin1(kDbConnect));
    } catch (const std::exception&) {
        failed();
    }
}

void DatabaseFile::exportClick() {
    const auto chosen =
        s_.dialogs.saveFileName(QStringLiteral("Export Database to "), QString::fromLatin1(kFilter),
                                QString::fromLatin1(kDbFileName));
    if (!chosen || chosen->isEmpty()) return;
    const QString target = withDefaultExt(*chosen);
    closeDatabase();
    try {
        copyFile(livePath(), target);
    } catch (const std::exception&) {
        failed();
    }
    reopen();
}

void DatabaseFile::importClick() {
    const auto chosen = s_.dialogs.openFileName(QStringLiteral("Import Database from "),
                                                QString::fromLatin1(kFilter));
    if (!chosen || chosen->isEmpty()) return;
    // The whole path, letter case counting.
    if (!chosen->contains(QLatin1String(kDbFileName))) {
        s_.dialogs.messageBox(QStringLiteral("Couldn't Import DataBase. Inappropriate file."),
                              MsgButtons::OK, QString(), MsgIcon::Critical);
        return;
    }
    closeDatabase();
    try {
        // The live file is replaced only once its backup is whole.
        if (QFileInfo::exists(livePath())) copyFile(livePath(), backupPath());
        copyFile(*chosen, livePath());
    } catch (const std::exception&) {
        failed();
    }
    reopen();
}

} // namespace velmorak
