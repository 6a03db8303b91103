// Monitor Info against the virtual card on the virtual clock.
#include "EdidTools.h"
#include "MonitorBench.h"

#include "monitor/ui/FrmReadEEMonView.h"
#include "sim/VirtualCard.h"

#include <QFile>
#include <QPrinter>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::MonitorBench;
using velmorak::test::SimLink;

namespace {

SimLink::Card kind(bool receiver) {
    SimLink::Card c;
    c.receiver = receiver;
    return c;
}

QString rowText(const Grid& g, int r) {
    QStringList cells;
    for (int c = 0; c < g.cols(); ++c)
        cells << g.textMatrix(r, c);
    return cells.join(' ');
}

const std::vector<int> kFirstBlock = {0, 24, 48, 72, 96, 112};
const std::vector<int> kBothBlocks = {0, 24, 48, 72, 96, 112, 128, 152, 176, 200, 224, 240};

} // namespace

// One block or two by the extension count; the control sum is the last byte as stored, unpadded.
TEST(ReadEEMon, ReadsInSlicesAndShowsTheTable) {
    struct Row {
        const char* what;
        QByteArray memory;
        std::vector<int> offsets;
        int rows;
        const char* lastRow;
        const char* rcs;
    };
    QByteArray lowSum = defaultEdid(DefaultEdid::Dvi);
    lowSum[127] = char(0x05); // a wrong checksum, shown as found
    const std::vector<Row> rows = {
        {"DVI image", defaultEdid(DefaultEdid::Dvi), kFirstBlock, 9,
         "70 00 56 4C 4D 38 46 30 37 36 33 31 39 0A 20 00 13", "13"},
        {"leading zero", lowSum, kFirstBlock, 9,
         "70 00 56 4C 4D 38 46 30 37 36 33 31 39 0A 20 00 05", "5"},
        {"two blocks", velmorak::test::harrier24(), kBothBlocks, 17,
         "F0 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 F7", "F7"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        MonitorBench b;
        b.link.card().setMonitorMemory(0, r.memory);
        FrmReadEEMon& f = b.open();
        EXPECT_EQ(b.readOffsets(), r.offsets);
        EXPECT_EQ(f.caption(), "Read Monitor Info");
        EXPECT_EQ(f.EdidText, r.memory);
        ASSERT_EQ(f.grTable.rows(), r.rows);
        EXPECT_EQ(f.grTable.cols(), 17);
        EXPECT_EQ(rowText(f.grTable, 0), "Address 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");
        EXPECT_EQ(rowText(f.grTable, 1),
                  "0 00 FF FF FF FF FF FF 00 " + rowText(f.grTable, 1).mid(26));
        EXPECT_EQ(f.grTable.textMatrix(2, 0), "10");
        EXPECT_EQ(rowText(f.grTable, r.rows - 1), r.lastRow);
        EXPECT_EQ(f.lblRCS.caption(), r.rcs);
        EXPECT_EQ(f.lblCS.caption(), "Control Sum");
        // No word about the checksum, whatever it is.
        EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
        // The bar follows the rows; the progress window is gone afterwards.
        EXPECT_EQ(b.progress.back(), QStringLiteral("100:%1").arg(r.rows - 1));
        EXPECT_FALSE(b.waitOpen());
        EXPECT_TRUE(b.frm().enabled());
    }
}

// The decoded view tells the fields and checks each block's sum, which the control sum does not.
TEST(ReadEEMon, DecodedViewChecksEachBlock) {
    MonitorBench b;
    QByteArray m = velmorak::test::harrier24();
    m[255] = char(0x10);
    b.link.card().setMonitorMemory(0, m);
    FrmReadEEMon& f = b.open();
    const QStringList items = f.lstDecoded.items();
    for (const char* want :
         {"Manufacturer: HRR", "Model year: 2022", "EDID version: 1.4",
          "Input: Digital, DVI, 8 bits per colour", "Screen size: 52 x 32 cm",
          "Preferred timing: 1920x1200 at 59.95 Hz, 154.00 MHz", "Monitor name: Harrier 24",
          "Checksum of block 0: 41 correct", "Checksum of block 1: 10 wrong, should be F7"})
        EXPECT_TRUE(items.contains(want)) << want;
    EXPECT_EQ(f.lblRCS.caption(), "10");
}

// A card that does not answer leaves a short table and no message.
TEST(ReadEEMon, SilentCardFillsWhatThereIs) {
    MonitorBench b;
    ASSERT_TRUE(b.start());
    b.link.silent(true);
    b.frm().mnuReadMonInfo.click();
    FrmReadEEMon* f = b.window();
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->EdidText, QByteArray(6, '\0'));
    EXPECT_EQ(f->grTable.rows(), 9);
    EXPECT_EQ(rowText(f->grTable, 1), "0 00 00 00 00 00 00" + QString(10, ' '));
    EXPECT_EQ(f->lblRCS.caption(), "0");
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
}

TEST(ReadEEMon, ButtonsByCardKind) {
    struct Row {
        bool receiver, connected;
        bool defaults, transmit, refresh;
    };
    for (const Row& r : {Row{true, true, false, true, true}, Row{false, true, true, false, true},
                         Row{false, false, false, false, false}}) {
        SCOPED_TRACE(testing::Message() << r.receiver << r.connected);
        MonitorBench b(kind(r.receiver));
        ASSERT_TRUE(b.start());
        if (!r.connected) b.frm().cmdDisconnect.click();
        b.frm().mnuReadMonInfo.click();
        FrmReadEEMon* f = b.window();
        ASSERT_NE(f, nullptr);
        EXPECT_EQ(f->cmdDefault.visible(), r.defaults);
        EXPECT_EQ(f->cmdDefaultR.visible(), r.defaults);
        EXPECT_EQ(f->cmdTransmit.visible(), r.transmit);
        EXPECT_EQ(f->mnuRefresh.enabled(), r.refresh);
        EXPECT_EQ(f->cmdDefault.caption(), "Load Default EDID for &DVI");
        EXPECT_EQ(f->cmdDefaultR.caption(), "Load Default EDID for R&GB");
        EXPECT_EQ(f->cmdTransmit.caption(), "Send to &Transmitter through Fiber");
    }
}

// Six slices of the image, then the table read afresh.
TEST(ReadEEMon, DefaultImagesLoadInSlices) {
    for (DefaultEdid which : {DefaultEdid::Dvi, DefaultEdid::Rgb}) {
        const bool dvi = which == DefaultEdid::Dvi;
        SCOPED_TRACE(dvi ? "DVI" : "RGB");
        MonitorBench b;
        FrmReadEEMon& f = b.open();
        b.link.clearTrace();
        b.progress.clear();
        (dvi ? f.cmdDefault : f.cmdDefaultR).click();
        const QByteArray image = defaultEdid(which);
        const auto writes = b.frames("WRM2");
        ASSERT_EQ(writes.size(), 6u);
        EXPECT_EQ(b.link.card().monitorMemory().left(128), image);
        EXPECT_EQ(b.readOffsets(), kFirstBlock);
        EXPECT_EQ(f.EdidText, image);
        EXPECT_EQ(f.lblRCS.caption(), dvi ? "13" : "84");
        const QString kindText = dvi ? "DVI" : "RGB";
        EXPECT_EQ(b.link.dialogs.messages(),
                  (QStringList{"You are sure to load DEFAULT Monitor(" + kindText +
                                   ") Parameters to the Card?\n\r Current Monitor Parameters "
                                   "will be OVERWRITTEN ",
                               "You are about to load DEFAULT Monitor Parameters to the Card",
                               "Default Monitor Parameters are loaded to the Card."}));
        EXPECT_EQ(b.progress,
                  (std::vector<QString>{"7:0", "7:1", "7:2", "7:3", "7:4", "7:5", "7:6"}));
        EXPECT_FALSE(b.waitOpen());
        EXPECT_FALSE(f.txtMsg.visible());
        EXPECT_EQ(f.txtMsg.text(), "Loading. Wait a minute...");
        EXPECT_TRUE(f.cmdDefault.enabled() && f.cmdDefaultR.enabled());
        EXPECT_EQ(b.st().ChipBase, 112);
    }
}

TEST(ReadEEMon, DefaultLoadCancelledOrOffline) {
    struct Row {
        const char* what;
        std::vector<MsgResult> answers;
        bool connected;
        int asked;
    };
    for (const Row& r : {Row{"first question", {MsgResult::Cancel}, true, 1},
                         Row{"second question", {MsgResult::OK, MsgResult::Cancel}, true, 2},
                         Row{"not connected", {}, false, 1}}) {
        SCOPED_TRACE(r.what);
        MonitorBench b;
        FrmReadEEMon& f = b.open();
        if (!r.connected) b.st().Connected = 0;
        b.link.clearTrace();
        for (MsgResult a : r.answers)
            b.link.dialogs.answer(a);
        f.cmdDefault.click();
        EXPECT_TRUE(b.link.sent().isEmpty());
        EXPECT_EQ(b.link.dialogs.messages().size(), r.asked);
        if (!r.connected) {
            EXPECT_EQ(b.link.dialogs.messages().first(), "No Connection");
        }
        EXPECT_TRUE(f.cmdDefault.enabled() && f.cmdDefaultR.enabled());
    }
}

// A Receiver reads its display again before the table is read; a Transmitter reads at once.
TEST(ReadEEMon, RefreshByCardKind) {
    struct Row {
        const char* what;
        bool receiver, monitor, silent;
        const char* message;
        bool commandSent;
        int reads;
    };
    for (const Row& r :
         {Row{"receiver", true, true, false, "Info is refreshed", true, 6},
          Row{"receiver, no monitor", true, false, false, "Couldn't read info", true, 0},
          Row{"receiver, silent", true, true, true, "No any Data", true, 0},
          Row{"transmitter", false, true, false, "Info is refreshed", false, 6}}) {
        SCOPED_TRACE(r.what);
        MonitorBench b(kind(r.receiver));
        FrmReadEEMon& f = b.open();
        // Garbage, but with no extension.
        const QByteArray garbage = QByteArray(126, char(0x11)) + '\0' + char(0x11);
        b.link.card().setMonitorMemory(0, garbage);
        b.link.card().setMonitorAttached(r.monitor);
        b.link.silent(r.silent);
        b.link.clearTrace();
        f.mnuRefresh.click();
        EXPECT_EQ(b.link.dialogs.messages(), QStringList{r.message});
        EXPECT_EQ(b.frames("CMDRRMON").size(), r.commandSent ? 1u : 0u);
        EXPECT_EQ(b.readOffsets().size(), size_t(r.reads));
        EXPECT_TRUE(f.mnuRefresh.enabled());
        if (r.reads) {
            // The receiver's display gave its data back; the transmitter shows what it holds.
            const QByteArray want =
                r.receiver ? sim::VirtualCard::defaultEdid(false).left(128) : garbage;
            EXPECT_EQ(f.EdidText, want);
        }
    }
    MonitorBench b;
    FrmReadEEMon& f = b.open();
    b.st().Connected = 0;
    b.link.clearTrace();
    f.mnuRefresh.fireClick();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"No connection"});
    EXPECT_TRUE(b.link.sent().isEmpty());
}

TEST(ReadEEMon, TransmitSendsTheCommandOnly) {
    MonitorBench b(kind(true));
    FrmReadEEMon& f = b.open();
    b.link.clearTrace();
    f.cmdTransmit.click();
    EXPECT_EQ(b.link.sent(), QStringList{"43 4D 44 52 54 4D 49 4E"});
    EXPECT_EQ(b.link.card().fibreEdid(), b.link.card().monitorMemory());
    EXPECT_TRUE(f.cmdTransmit.enabled());
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
}

TEST(ReadEEMon, SaveWritesTheRawBytes) {
    MonitorBench b;
    b.link.card().setMonitorMemory(0, defaultEdid(DefaultEdid::Rgb));
    FrmReadEEMon& f = b.open();
    const QString path = b.dir.filePath("Monitor.bin");
    b.link.dialogs.answerText(b.dir.filePath("Monitor"));
    f.mnuSave.click();
    ASSERT_EQ(b.link.dialogs.asked().front().title, "Save Monitor Info ");
    EXPECT_EQ(b.link.dialogs.messages(),
              (QStringList{"You are about to save the Info to file " + path,
                           "The EDID is Saved to file " + path}));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray saved = file.readAll();
    EXPECT_EQ(saved, defaultEdid(DefaultEdid::Rgb));
    const QString report = velmorak::test::edidDecode(saved, true);
    EXPECT_TRUE(report.contains("Analog display"));
    EXPECT_TRUE(report.contains("EDID conformity: PASS")) << report.toStdString();
}

// An existing file: No asks again, Yes overwrites; Cancel at the question writes nothing.
TEST(ReadEEMon, SaveAsksBeforeOverwriting) {
    MonitorBench b;
    FrmReadEEMon& f = b.open();
    const QString old = b.dir.filePath("old.bin");
    const QString other = b.dir.filePath("other.bin");
    for (const QString& p : {old}) {
        QFile o(p);
        ASSERT_TRUE(o.open(QIODevice::WriteOnly));
        o.write("keep");
    }
    auto content = [](const QString& p) {
        QFile x(p);
        return x.open(QIODevice::ReadOnly) ? x.readAll() : QByteArray("<none>");
    };
    const QString exists = " This file is already exist. Do you want to rewrite it? ";
    b.link.dialogs.answerText(old);
    b.link.dialogs.answer(MsgResult::No);
    b.link.dialogs.answerText(other);
    b.link.dialogs.answer(MsgResult::Cancel);
    f.mnuSave.click();
    EXPECT_EQ(
        b.link.dialogs.messages(),
        (QStringList{old + exists.mid(1), "You are about to save the Info to file " + other}));
    EXPECT_EQ(content(old), "keep");
    EXPECT_EQ(content(other), "<none>");
    b.link.dialogs.clear();
    b.link.dialogs.answerText(old);
    b.link.dialogs.answer(MsgResult::Yes);
    f.mnuSave.click();
    EXPECT_EQ(content(old), f.EdidText);
    EXPECT_EQ(b.link.dialogs.messages().last(), "The EDID is Saved to file " + old);
    // Cancel in the file chooser: nothing at all.
    b.link.dialogs.clear();
    f.mnuSave.click();
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
}

TEST(ReadEEMon, PrintsTheHexReportToPdf) {
    MonitorBench b;
    b.link.card().setMonitorMemory(0, defaultEdid(DefaultEdid::Dvi));
    FrmReadEEMon& f = b.open();
    // No view, no printer: the printer cannot start.
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrint.click();
    EXPECT_EQ(b.link.dialogs.messages(), QStringList{"Printer is unabled"});

    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    const QString pdf = b.dir.filePath("edid.pdf");
    printer.setOutputFileName(pdf);
    f.printReport = [&](const std::vector<PrintText>& t) { printReport(printer, t, QString()); };
    b.link.dialogs.clear();
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrint.click();
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty());
    const QString text = velmorak::test::pdfText(pdf);
    ASSERT_FALSE(text.isEmpty()) << "pdftotext is missing or the PDF is empty";
    QStringList lines; // the page's lines without blank ones (and the final form feed)
    for (const QString& l : text.split('\n'))
        if (!l.simplified().isEmpty()) lines << l.simplified();
    auto simplified = [&lines](int i) { return lines.value(i); };
    EXPECT_EQ(simplified(0), "Raw EDID");
    EXPECT_EQ(simplified(1), "00: 00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F");
    EXPECT_EQ(simplified(2), "00: 00 FF FF FF FF FF FF 00 59 8D 04 19 1F 2A 01 00");
    EXPECT_EQ(simplified(9), "70: 00 56 4C 4D 38 46 30 37 36 33 31 39 0A 20 00 13");
    EXPECT_EQ(lines.size(), 10) << text.toStdString();

    // Cancel in the printer dialog prints nothing.
    b.link.dialogs.clear();
    QFile::remove(pdf);
    f.mnuPrint.click();
    EXPECT_FALSE(QFile::exists(pdf));
}
