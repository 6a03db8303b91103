#include "platform/AppFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace velmorak {

QString applicationFolder(const QString& fileName) {
    const QString exeDir = QCoreApplication::applicationDirPath();
    if (QFile::exists(exeDir + u'/' + fileName)) return exeDir;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (data.isEmpty()) return exeDir;
    const QString target = data + u'/' + fileName;
    if (!QFile::exists(target)) {
        const QString installed = exeDir + QStringLiteral("/../share/velmorak/") + fileName;
        if (QFile::exists(installed) && QDir().mkpath(data)) {
            // Copy to a temporary name first so a failed copy leaves no half file.
            const QString part = target + QStringLiteral(".part");
            QFile::remove(part);
            if (QFile::copy(installed, part)) {
                QFile(part).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
                if (!QFile::rename(part, target)) QFile::remove(part);
            }
        }
    }
    return data;
}

} // namespace velmorak
