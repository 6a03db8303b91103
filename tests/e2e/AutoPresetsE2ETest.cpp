// The real tool loads the auto presets into the virtual card in real time and reads their
// version. A copy of the tool runs beside a database of two rows, so the load takes seconds.
#include "resdb/Database.h"
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

namespace {

// The hex of a text as the trace writes it.
QString hexOf(const QByteArray& b) {
    return QString::fromLatin1(b.toHex(' ').toUpper());
}

QStringList framesStarting(const QStringList& trace, const QString& hex) {
    QStringList out;
    for (const QString& l : trace) {
        const int at = l.indexOf(" > ");
        if (at >= 0 && l.mid(at + 3).startsWith(hex)) out << l.mid(at + 3, 3 * 8 - 1);
    }
    return out;
}

} // namespace

TEST(AppAutoPresets, LoadsTheTableAndReadsItsVersion) {
    QTemporaryDir dir;
    const QString tool = dir.filePath("velmorak");
    ASSERT_TRUE(QFile::copy(velmorak::test::buildDir() + "/velmorak", tool));
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString db = dir.filePath(kDbFileName);
    ASSERT_TRUE(QFile::copy(velmorak::test::buildDir() + "/" + kDbFileName, db));
    QFile::setPermissions(db, QFile::ReadOwner | QFile::WriteOwner);
    {
        auto d = Database::OpenDatabase(db, kDbConnect);
        d->Execute("DELETE FROM tblDefValues WHERE Name NOT IN ('800x600x56', '640x480x60')");
        d->Close();
    }

    SimProcess sim;
    ASSERT_TRUE(sim.started());
    AppProcess app(sim.link(),
                   {"wait frmStart.cmdConnect 1 0 Connected", "key frmStart Ctrl+Shift+E",
                    "dialog voltar", "wait frmStart.mnuAutoPresets 1 1 Load &Auto Presets",
                    "click frmStart.mnuAutoPresets", "answer OK", "answer OK",
                    "wait frmStart.mnuAutoPresets 1 1 Load &Auto Presets",
                    "click frmStart.mnuDBversion", "answer OK", "quit"},
                   tool);
    EXPECT_TRUE(app.endsCleanly(60000)) << app.state().join('\n').toStdString();
    const QStringList trace = sim.trace();
    EXPECT_EQ(framesStarting(trace, "57 52 44 42"),
              (QStringList{"57 52 44 42 A6 42 20 20", "57 52 44 42 A6 42 22 00",
                           "57 52 44 42 A6 42 18 E0"}));
    EXPECT_EQ(framesStarting(trace, "52 44 44 42"),
              (QStringList{"52 44 44 42 A6 42 20 20", "52 44 44 42 A6 42 22 00",
                           "52 44 44 42 A6 42 18 E0", "52 44 44 42 A6 42 18 E0"}));
    // The version read by mnuDBversion: the record the load wrote.
    ASSERT_FALSE(trace.isEmpty());
    EXPECT_TRUE(trace.last().contains(" < " + hexOf("RDDB\xA6\x42UVersion 2.06 01/23/2009")))
        << trace.last().toStdString();
}
