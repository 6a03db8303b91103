#pragma once

#include <QString>

namespace velmorak {

class Database;
class Dialogs;
class ReportPrinter;
class Recordset;

// The landscape register tables of the resolution rows: every row one line with its 33 register
// values, 40 rows a page.
enum class ResolutionTable { Default, Customer };

struct ReportSource {
    QString title;
    QString source;
};
ReportSource reportSource(ResolutionTable which);

// Prints the pages of the rows of rs (positioned on the first) on p, n rows in all.
void printResolutionPages(ReportPrinter& p, Recordset& rs, int n, const QString& title);

// The whole report: printer dialog (a cancel or any error there ends it silently), the pages,
// the end of the document; errors while printing are told in a message box.
void printResolutionTable(ResolutionTable which, Database& db, Dialogs& dialogs,
                          const QString& appTitle);

} // namespace velmorak
