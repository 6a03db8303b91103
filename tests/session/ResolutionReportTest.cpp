// The printed resolution tables, rendered to PDF files and read back with pdftotext.
#include "SessionBench.h"

#include "platform/print/ReportCanvas.h"
#include "resdb/Database.h"
#include "resdb/FrmSettings.h"

#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

const QStringList kLabels = QString("01H 02H 03H 04H 05H 06H 07H 08H 09H 0AH 0BH 0CH 0DH 0EH 0FH "
                                    "10H 11H 12H 13H 15H 16H 17H 8HT 9HT AHT 32H 33H 34H 35H "
                                    "36H 37H 38H 39H")
                                .split(' ');

// A session whose printer dialog prints to a PDF file.
struct PrintBench {
    SessionBench b;
    QPrinter printer{QPrinter::HighResolution};
    ReportCanvas canvas{printer};
    QString pdf = b.dir.filePath("table.pdf");

    PrintBench() {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdf);
        b.link.dialogs.setPrinter(&canvas);
    }
    // VELMORAK_KEEP_PDF=folder keeps each report there, to look at.
    ~PrintBench() {
        const QString keep = qEnvironmentVariable("VELMORAK_KEEP_PDF");
        if (keep.isEmpty() || !QFile::exists(pdf)) return;
        const QString name =
            QString::fromStdString(::testing::UnitTest::GetInstance()->current_test_info()->name());
        QFile::remove(keep + "/" + name + ".pdf");
        QFile::copy(pdf, keep + "/" + name + ".pdf");
    }
    // Rows named Zn, copies of 640x480x60, until the table holds n rows.
    void grow(const char* table, int n) {
        Database& db = *b.session->DbRez;
        const QStringList fields = db.OpenRecordset(table).FieldNames();
        QStringList select;
        for (const QString& f : fields) {
            if (f == "Name")
                select << "'Z' || printf('%02d', :k)";
            else if (f == "NameSort")
                select << "'Z' || printf('%02d', :k)";
            else
                select << '"' + f + '"';
        }
        int count = db.OpenRecordset(QString("SELECT * from %1 ORDER BY NameSort").arg(table))
                        .RecordCount();
        for (int k = count; k < n; ++k) {
            QString s =
                QString("INSERT INTO %1 (\"%2\") SELECT %3 FROM %1 WHERE Name = '640x480x60';")
                    .arg(table, fields.join("\",\""), select.join(','));
            db.Execute(s.replace(":k", QString::number(k)));
        }
    }
    FrmSettings& open() { return b.open<FrmSettings>("frmSettings"); }
    // Ctrl+Shift+P or K, the printer dialog answered OK.
    void print(FrmSettings& f, int key) {
        b.link.dialogs.answer(MsgResult::OK);
        f.previewKey(key, Qt::ControlModifier | Qt::ShiftModifier);
    }
    // The pages of the PDF as pdftotext -layout gives them.
    QStringList pages() const {
        QProcess p;
        p.start("pdftotext", {"-layout", pdf, "-"});
        EXPECT_TRUE(p.waitForFinished(30000));
        QStringList out = QString::fromUtf8(p.readAllStandardOutput()).split('\f');
        if (!out.isEmpty() && out.last().trimmed().isEmpty() && out.last().isEmpty())
            out.removeLast(); // after the last form feed
        return out;
    }
};

QStringList words(const QString& line) {
    return line.split(QRegularExpression("\\s+"), Qt::SkipEmptyParts);
}

// The line of a page that begins with this word.
QStringList lineOf(const QString& page, const QString& first) {
    for (const QString& l : page.split('\n'))
        if (!words(l).isEmpty() && words(l)[0] == first) return words(l);
    return {};
}

int dataLines(const QString& page) {
    int n = 0;
    for (const QString& l : page.split('\n'))
        if (QRegularExpression("^\\s*(Z\\d\\d|\\d+x\\d+x\\d+)\\s").match(l).hasMatch()) ++n;
    return n;
}

} // namespace

TEST(ResolutionReport, FortyRowsAPageAndAnEmptyOneAtTheEnd) {
    struct Row {
        int rows;
        QList<int> perPage; // data lines of each page, the empty last one included
    };
    const Row table[] = {{40, {40, 0}}, {41, {40, 1, 0}}, {25, {25, 0}}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.rows);
        PrintBench p;
        ASSERT_TRUE(p.b.start());
        p.grow("tblDefValues", row.rows);
        FrmSettings& f = p.open();
        p.print(f, Qt::Key_P);
        const QStringList pages = p.pages();
        ASSERT_EQ(pages.size(), row.perPage.size());
        for (int i = 0; i < pages.size(); ++i) {
            SCOPED_TRACE(i + 1);
            EXPECT_EQ(dataLines(pages[i]), row.perPage[i]);
            if (row.perPage[i] == 0) {
                EXPECT_TRUE(pages[i].trimmed().isEmpty());
                continue;
            }
            EXPECT_TRUE(pages[i].contains("TABLE OF RESOLUTIONS"));
            // The page number falls on the line after the title.
            const QStringList lines = pages[i].split('\n');
            int title = -1;
            for (int l = 0; l < lines.size(); ++l)
                if (lines[l].contains("TABLE OF RESOLUTIONS")) title = l;
            ASSERT_GE(title, 0);
            EXPECT_EQ(words(lines[title]), (QStringList{"TABLE", "OF", "RESOLUTIONS"}));
            EXPECT_EQ(words(lines[title + 1]), QStringList{QString::number(i + 1)});
            EXPECT_EQ(lineOf(pages[i], "NAME"), QStringList{"NAME"} + kLabels);
        }
    }
}

// Values in decimal, in label order; a marked row stops after its AD9888 values.
TEST(ResolutionReport, ValuesAndMarkedRows) {
    PrintBench p;
    ASSERT_TRUE(p.b.start());
    p.b.session->DbRez->Execute("UPDATE tblDefValues SET Mark = 'D' WHERE Name = '800x600x56';");
    FrmSettings& f = p.open();
    p.print(f, Qt::Key_P);
    const QStringList pages = p.pages();
    ASSERT_EQ(pages.size(), 2);
    const QStringList vga = lineOf(pages[0], "640x480x60");
    ASSERT_EQ(vga.size(), 34);
    // Divisor 799 (31H F0H), gains 128; 08T BFH; 36H..39H: 640 and 480.
    EXPECT_EQ(vga.mid(1, 2), (QStringList{"49", "240"}));
    EXPECT_EQ(vga[8], "128");
    EXPECT_EQ(vga[23], "191");
    EXPECT_EQ(vga.mid(30), (QStringList{"128", "2", "224", "1"}));
    const QStringList marked = lineOf(pages[0], "800x600x56");
    ASSERT_EQ(marked.size(), 1 + 22 + 3);
    EXPECT_EQ(marked.mid(23), (QStringList{"Marked", "as", "Deleted"}));
    EXPECT_EQ(marked[1], "63"); // divisor 1023
    EXPECT_FALSE(pages[0].contains("14H"));
}

TEST(ResolutionReport, CustomerTableByItsKeys) {
    PrintBench p;
    ASSERT_TRUE(p.b.start());
    p.b.session->DbRez->Execute("DELETE FROM tblCustValues WHERE Name LIKE '1600%';");
    FrmSettings& f = p.open();
    p.print(f, Qt::Key_K);
    const QStringList pages = p.pages();
    ASSERT_EQ(pages.size(), 2);
    EXPECT_TRUE(pages[0].contains("TABLE OF CUSTOMER RESOLUTIONS"));
    EXPECT_EQ(dataLines(pages[0]), 25 - 4);
}

// A cancelled dialog prints nothing and says nothing; a printer that cannot start the document
// is told.
TEST(ResolutionReport, CancelAndPrinterFailure) {
    {
        PrintBench p;
        FrmSettings& f = p.open();
        p.b.link.dialogs.answer(MsgResult::Cancel);
        f.mnuPrint.click();
        EXPECT_FALSE(QFile::exists(p.pdf));
        EXPECT_TRUE(p.b.link.dialogs.messages().isEmpty());
    }
    {
        PrintBench p;
        p.printer.setOutputFileName(p.b.dir.filePath("no/such/folder/table.pdf"));
        FrmSettings& f = p.open();
        p.b.link.dialogs.clear();
        p.b.link.dialogs.answer(MsgResult::OK);
        f.Toolbar1_print_tbl.click();
        ASSERT_EQ(p.b.link.dialogs.messages(), QStringList{"Printer is unabled"});
        EXPECT_EQ(p.b.link.dialogs.asked().back().buttons, MsgButtons::OKCancel);
        // The next print goes on as usual.
        p.printer.setOutputFileName(p.pdf);
        p.print(f, Qt::Key_P);
        EXPECT_EQ(p.pages().size(), 2);
    }
}
