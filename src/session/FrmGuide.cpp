#include "session/FrmGuide.h"

#include "forms/Dialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace velmorak {

FrmGuide::FrmGuide(Dialogs& dialogs, QStringList folders)
    : Form(QStringLiteral("frmGuide")), dialogs_(dialogs), folders_(std::move(folders)) {
    setCaption(QStringLiteral("Velmorak User Guide"));
}

void FrmGuide::formLoad() {
    for (const QString& folder : folders_) {
        QFile f(QDir(folder).filePath(QString::fromLatin1(kFile)));
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) continue;
        path_ = f.fileName();
        text_ = QString::fromUtf8(f.readAll());
        return;
    }
    dialogs_.messageBox(
        QStringLiteral("The user guide (%1) was not found in:\n%2")
            .arg(QString::fromLatin1(kFile), QDir::toNativeSeparators(folders_.join(u'\n'))),
        MsgButtons::OK, caption());
    unload();
}

QStringList guideFolders(const QString& appPath) {
    QStringList out{appPath};
    if (QCoreApplication::instance()) {
        const QString exe = QCoreApplication::applicationDirPath();
        out << exe << QDir(exe).filePath(QStringLiteral("../share/velmorak"));
    }
    out.removeDuplicates();
    return out;
}

} // namespace velmorak
