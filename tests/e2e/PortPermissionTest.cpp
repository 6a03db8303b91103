// A port this user may not open, made for real: the tool runs as the unprivileged user nobody
// (dropped to with setpriv from root) against the virtual card's pseudo-terminal, whose owner,
// group and mode each case sets.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

namespace {

// The tool and its seed database copied where nobody may run and write them, and a starter that
// opens the tool's settings and state folder to nobody, then drops to it.
struct NobodyTool {
    NobodyTool() {
        const QString build = velmorak::test::buildDir();
        ok = QFile::copy(build + "/velmorak", dir.filePath("velmorak")) &&
             QFile::copy(build + "/DBDefaults.MDB", dir.filePath("DBDefaults.MDB"));
        QFile starter(dir.filePath("as-nobody"));
        ok = ok && starter.open(QIODevice::WriteOnly);
        starter.write("#!/bin/sh\n"
                      "home=$(dirname \"$VELMORAK_STATE_FILE\")\n"
                      "chmod -R a+rwX \"$home\"\n"
                      "export HOME=\"$home\"\n"
                      "unset XDG_RUNTIME_DIR\n"
                      "exec setpriv --reuid=65534 --regid=65534 --clear-groups \"$(dirname "
                      "\"$0\")/velmorak\"\n");
        starter.close();
        ok = ok && ::chmod(QFile::encodeName(dir.path()).constData(), 01777) == 0 &&
             ::chmod(QFile::encodeName(starter.fileName()).constData(), 0755) == 0 &&
             ::chmod(QFile::encodeName(dir.filePath("DBDefaults.MDB")).constData(), 0666) == 0;
    }
    QString program() const { return dir.filePath("as-nobody"); }
    QTemporaryDir dir;
    bool ok = false;
};

// The main window's reason line once it says something, or empty after the time.
QString reasonShown(const AppProcess& app, int ms) {
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        for (const QString& l : app.state())
            if (l.startsWith("frmStart.lblReason\t") && !l.section('\t', 3).isEmpty())
                return l.section('\t', 3);
        QThread::msleep(50);
    }
    return {};
}

} // namespace

TEST(AppPermission, APortNobodyMayNotOpenIsExplainedWithItsFix) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "dropping to another user needs root; as a user, the card's pty is "
                        "the user's own";
    struct Case {
        const char* name;
        gid_t group; // the device's group
        mode_t mode;
        const char* words; // after "Permission denied on <device>: "; empty: it connects
    };
    const group* tty = ::getgrnam("tty");
    ASSERT_NE(tty, nullptr);
    const Case cases[] = {
        {"a group nobody is not in", tty->gr_gid, 0660,
         "you are not in the tty group. Run \"sudo usermod -aG tty $USER\", then log out and in "
         "again."},
        {"root's own device", 0, 0600, "this user may not open it."},
        {"a device open to everyone", tty->gr_gid, 0666, ""},
    };
    NobodyTool tool;
    ASSERT_TRUE(tool.ok);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        SimProcess sim;
        ASSERT_TRUE(sim.started());
        // The pty itself: the link beside the card lies in a folder only root may enter.
        const QString device = QFileInfo(sim.link()).canonicalFilePath();
        const QByteArray native = QFile::encodeName(device);
        ASSERT_EQ(::chown(native.constData(), 0, c.group), 0);
        ASSERT_EQ(::chmod(native.constData(), c.mode), 0);
        AppProcess app(device, {}, tool.program());
        if (*c.words) {
            EXPECT_EQ(reasonShown(app, 20000),
                      QString("Permission denied on %1: %2").arg(device, c.words));
        } else {
            EXPECT_TRUE(app.waitFor("frmStart.cmdConnect\t1\t0\tConnected", 20000))
                << app.state().join('\n').toStdString();
        }
    }
}
