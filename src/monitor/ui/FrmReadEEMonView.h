#pragma once

#include "monitor/EdidPrintout.h"

#include <QString>

#include <vector>

class QPrinter;
class QWidget;

namespace velmorak {

class Form;

// The drawing of Monitor Info: the hexadecimal table with its control sum, the decoded view
// beside it, the buttons below. Its prints go to `printer`.
QWidget* buildFrmReadEEMonView(Form& form, QPrinter* printer);

// Prints a report on the printer: fixed-pitch text, twips from the left of the printable area.
// Without an installed printer (and none picked) the pages go to a PDF file, pdfFallback.
// Throws PrintFailure 482 when the printer cannot start the document.
void printReport(QPrinter& printer, const std::vector<PrintText>& texts,
                 const QString& pdfFallback);

} // namespace velmorak
