// The real tool loads a resolution from the list of resolutions into the virtual card.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <QFile>
#include <QPrinterInfo>
#include <QProcess>
#include <gtest/gtest.h>

using velmorak::test::SimProcess;
using App = velmorak::test::AppProcess;

namespace {

QByteArray bytesOf(const QString& traceLine) {
    return QByteArray::fromHex(traceLine.section(' ', 2).toLatin1());
}

// The reply that follows the last frame beginning with `frame`.
QByteArray replyAfterLast(const QStringList& trace, const QByteArray& frame) {
    QByteArray reply;
    for (int i = 0; i + 1 < trace.size(); ++i)
        if (trace[i].contains(" > ") && bytesOf(trace[i]) == frame && trace[i + 1].contains(" < "))
            reply = bytesOf(trace[i + 1]);
    return reply;
}

} // namespace

// With no source the list offers its first row, 640x480x60, which the card does not hold yet
// (its divider is that of 1024x768x75). After the load the card's chips answer with the row.
TEST(AppPresetList, LoadsARowIntoBothChips) {
    SimProcess sim({"--source", "none"});
    ASSERT_TRUE(sim.started());
    App app(sim.link(),
            {"wait frmStart.cmdConnect 1 0 Connected", "click frmStart.mnuDatabase",
             "wait frmSettings.cboPresets 1 1 640x480x60", "wait frmSettings.cmdLoad 1 1 &Load",
             "click frmSettings.cmdLoad", "answer Yes", "wait frmSettings.txtMsg 0 1 Load OK",
             "wait frmSettings.cmdLoad 1 1 &Load", "quit"});
    ASSERT_TRUE(app.endsCleanly(40000)) << app.state().join('\n').toStdString();
    const QStringList trace = sim.trace();
    QByteArray adBlock, txBlock;
    for (const QString& l : trace) {
        const QByteArray b = bytesOf(l);
        if (l.contains(" > ") && b.startsWith(QByteArray("WREE\x20\xFF", 6))) adBlock = b;
        if (l.contains(" > ") && b.startsWith(QByteArray("WREE\x60\xFF", 6))) txBlock = b;
    }
    ASSERT_EQ(adBlock.size(), 6 + 23);
    ASSERT_EQ(txBlock.size(), 6 + 11);
    // Divider 799: 31H F0H; transmitter 08H BFH, 36H..39H 640 and 480.
    EXPECT_EQ(adBlock.mid(6, 2), QByteArray("\x31\xF0"));
    EXPECT_EQ(txBlock.at(6), '\xBF');
    EXPECT_EQ(txBlock.right(4), QByteArray("\x80\x02\xE0\x01", 4));
    // What the chips hold afterwards, in their own replies.
    const QByteArray ad = replyAfterLast(trace, QByteArray("RDEE\x20\xFF", 6));
    ASSERT_GE(ad.size(), 6 + 0x18);
    EXPECT_EQ(ad.mid(6 + 1, 0x0E), adBlock.mid(6, 0x0E));
    const QByteArray txLow = replyAfterLast(trace, QByteArray("RDEE\x60\xFF", 6));
    ASSERT_GE(txLow.size(), 6 + 9);
    EXPECT_EQ(txLow.at(6 + 8), '\xBF');
    const QByteArray txHigh = replyAfterLast(trace, QByteArray("RDEE\x60\xFE", 6));
    ASSERT_GE(txHigh.size(), 6 + 8);
    EXPECT_EQ(txHigh.mid(6, 8), txBlock.mid(6 + 3, 8)); // 32H..39H
}

// With no printer installed, the print dialog offers a PDF file: the table is printed there.
TEST(AppPresetList, PrintsTheTableToAPdfFile) {
    // A system printer would be the dialog's first choice, and its file field disabled.
    if (!QPrinterInfo::availablePrinters().isEmpty())
        GTEST_SKIP() << "a system printer is installed; this journey needs none";
    SimProcess sim;
    ASSERT_TRUE(sim.started());
    QTemporaryDir out;
    const QString pdf = out.filePath("table.pdf");
    App app(sim.link(), {"wait frmStart.cmdConnect 1 0 Connected", "click frmStart.mnuDatabase",
                         "wait frmSettings.cmdLoad 1 1 &Load", "key frmSettings Ctrl+Shift+P",
                         "dialog " + pdf, "nodialog", "quit"});
    ASSERT_TRUE(app.endsCleanly(40000)) << app.state().join('\n').toStdString();
    ASSERT_TRUE(QFile::exists(pdf));
    QProcess text;
    text.start("pdftotext", {"-layout", pdf, "-"});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QStringList pages = QString::fromUtf8(text.readAllStandardOutput()).split('\f');
    ASSERT_EQ(pages.size(), 3); // a page, the empty one, and what follows the last feed
    EXPECT_TRUE(pages[0].contains("TABLE OF RESOLUTIONS"));
    EXPECT_TRUE(pages[0].contains("1920x1080x60"));
    EXPECT_TRUE(pages[1].trimmed().isEmpty());
}
