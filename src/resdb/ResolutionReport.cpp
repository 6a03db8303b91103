#include "resdb/ResolutionReport.h"

#include "forms/Control.h"
#include "forms/Dialogs.h"
#include "link/ValueHelpers.h"
#include "platform/ReportPrinter.h"
#include "resdb/Database.h"

namespace velmorak {

namespace {

constexpr int kRowsPerPage = 40;
constexpr int kLabelX = 1300;
constexpr int kValueX = 1250;
constexpr int kStep = 400;
constexpr int kNameX = 150;

const char* const kNameHeader = "     NAME ";
const char* const kAd9888Labels =
    "01H 02H 03H 04H 05H 06H 07H 08H 09H 0AH 0BH 0CH 0DH 0EH 0FH 10H 11H 12H 13H 15H 16H 17H";
const char* const kTxLabels = "8HT 9HT AHT 32H 33H 34H 35H 36H 37H 38H 39H";

// The labels of a blank-separated list, each four characters at most.
QStringList labels(const char* list) {
    QStringList out;
    for (const QString& l : QString::fromLatin1(list).split(u' ', Qt::SkipEmptyParts))
        out << l.left(4);
    return out;
}

// "!@@@@@@@@@@@@@@@@@@": left-aligned in 19 places.
QString nameCell(const DbValue& v) {
    return (v.isNull() ? QString() : v.toString()).left(15).leftJustified(19, u' ');
}

void printValue(ReportPrinter& p, int i, const DbValue& v, bool lineEnd) {
    p.setCurrentX(kValueX + kStep * i);
    p.print(PadCode(v.isNull() ? QString() : QString::number(v.toInt())), lineEnd);
}

void printHeader(ReportPrinter& p, const QString& title) {
    p.print(QString(), true);
    p.print(title, false);
    p.tab(20);
    p.print(QStringLiteral(" %1").arg(p.page()), true);
    p.print(QString(), true);
    p.print(QString::fromLatin1(kNameHeader), false);
    const QStringList all = labels(kAd9888Labels) + labels(kTxLabels);
    for (int i = 1; i <= all.size(); ++i) {
        p.setCurrentX(kLabelX + kStep * i);
        p.print(all[i - 1], i == all.size());
    }
    p.print(QString(), true);
}

void printRow(ReportPrinter& p, Recordset& rs) {
    p.setCurrentX(kNameX);
    p.print(nameCell(rs.Fields(QStringLiteral("Name")).Value()), false);
    // Ordinals 4..22 ("01".."13H"), then 24..26 past "14H".
    int base = 3;
    for (int i = 1; i <= 22; ++i) {
        printValue(p, i, rs.Fields(base + i).Value(), false);
        if (i == 19) base = 4;
    }
    const DbValue mark = rs.Fields(QStringLiteral("Mark")).Value();
    if (mark.isNull() || mark.toString().isEmpty()) {
        base = 4;
        for (int i = 23; i <= 33; ++i)
            printValue(p, i, rs.Fields(base + i).Value(), i == 33);
    } else {
        p.setCurrentX(kValueX + kStep * 23);
        p.print(QStringLiteral(" Marked as Deleted"), true);
    }
}

int errorNumber(const std::exception& e) {
    if (auto* d = dynamic_cast<const DbError*>(&e)) return d->Number();
    if (auto* r = dynamic_cast<const RunTimeError*>(&e)) return r->number();
    if (auto* p = dynamic_cast<const PrinterError*>(&e)) return p->number();
    return 0;
}

} // namespace

ReportSource reportSource(ResolutionTable which) {
    if (which == ResolutionTable::Customer)
        return {QStringLiteral("    TABLE OF CUSTOMER RESOLUTIONS   "),
                QStringLiteral("SELECT * from tblCustValues ORDER BY NameSort")};
    return {QStringLiteral("    TABLE OF RESOLUTIONS   "),
            QStringLiteral("SELECT * from tblDefValues ORDER BY NameSort")};
}

void printResolutionPages(ReportPrinter& p, Recordset& rs, int n, const QString& title) {
    const int pages = n / kRowsPerPage + (n % kRowsPerPage ? 1 : 0);
    for (int page = 1; page <= pages; ++page) {
        printHeader(p, title);
        const int last = std::min(page * kRowsPerPage, n);
        for (int k = (page - 1) * kRowsPerPage + 1; k <= last; ++k) {
            printRow(p, rs);
            rs.MoveNext();
        }
        p.newPage();
    }
}

void printResolutionTable(ResolutionTable which, Database& db, Dialogs& dialogs,
                          const QString& appTitle) {
    const ReportSource src = reportSource(which);
    ReportPrinter* p = dialogs.reportPrinter();
    try {
        // No printer to set up: the first stage fails.
        if (!p || dialogs.printerCount() == 0) return;
        p->setOrientation(ReportPrinter::Orientation::Landscape);
        if (!dialogs.printerDialog()) return;
    } catch (const std::exception&) {
        return;
    }
    Recordset rs;
    try {
        rs = db.OpenRecordset(src.source);
        int n = 0;
        if (!(rs.Eof() && rs.Bof())) {
            rs.MoveLast();
            n = rs.RecordCount();
            rs.MoveFirst();
        }
        printResolutionPages(*p, rs, n, src.title);
        p->endDoc();
    } catch (const std::exception& e) {
        p->killDoc();
        const int number = errorNumber(e);
        if (number == 482)
            dialogs.messageBox(QStringLiteral("Printer is unabled"), MsgButtons::OKCancel,
                               appTitle);
        else
            dialogs.messageBox(QStringLiteral("Error number %1 occurred %2")
                                   .arg(number)
                                   .arg(QString::fromStdString(e.what())),
                               MsgButtons::OK, appTitle);
    }
    rs.Close();
}

} // namespace velmorak
