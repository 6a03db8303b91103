// The real tool imports a monitor file into the virtual card and reads it back in Monitor Info.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <QFile>
#include <gtest/gtest.h>

using velmorak::test::SimProcess;
using App = velmorak::test::AppProcess;

namespace {

QByteArray bytesOf(const QString& traceLine) {
    return QByteArray::fromHex(traceLine.section(' ', 2).toLatin1());
}

} // namespace

TEST(AppMonitor, ImportedFileLandsInTheCardAndReadsBack) {
    SimProcess sim({"--transmitter", "--rgb"});
    ASSERT_TRUE(sim.started());
    QByteArray image;
    for (int i = 0; i < 128; ++i)
        image += char(i == 126 ? 0 : (i * 5 + 1) & 0xFF);
    const QString path = sim.dir() + "/import.bin";
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(image);
    }
    App app(sim.link(),
            {"wait frmStart.cmdConnect 1 0 Connected", "click frmStart.mnuFile2Mem",
             "dialog " + path, "answer OK", "answer OK", "click frmStart.mnuReadMonInfo",
             "wait frmReadEEMon.cmdClose 1 1 &Close", "click frmReadEEMon.cmdClose", "quit"});
    ASSERT_TRUE(app.proc.waitForFinished(60000));
    EXPECT_EQ(app.proc.exitCode(), 0);
    const QStringList trace = sim.trace();
    // Six slices went to the card, and the six reads that followed answered with the file.
    QByteArray written, read;
    for (int i = 0; i < trace.size(); ++i) {
        const QByteArray b = bytesOf(trace[i]);
        if (trace[i].contains(" > ") && b.startsWith("WRM2")) written += b.mid(6);
        if (trace[i].contains(" < ") && b.startsWith(QByteArray("RDEE\x80", 5)))
            read += b.mid(6, quint8(b[5]) < 96 ? 24 : 16);
    }
    EXPECT_EQ(written, image);
    EXPECT_EQ(read, image);
}
