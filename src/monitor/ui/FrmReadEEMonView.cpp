#include "monitor/ui/FrmReadEEMonView.h"

#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"
#include "monitor/FrmReadEEMon.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

void printReport(QPrinter& printer, const std::vector<PrintText>& texts,
                 const QString& pdfFallback) {
    if (printer.outputFormat() == QPrinter::NativeFormat &&
        QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(pdfFallback);
    }
    QPainter p;
    if (!p.begin(&printer))
        throw PrintFailure(482, QStringLiteral("The printer cannot start the document."));
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(10);
    p.setFont(font);
    const QFontMetricsF m(font, &printer);
    const double perTwip = printer.resolution() / 1440.0;
    const double width = printer.pageLayout().paintRectPixels(printer.resolution()).width();
    for (const PrintText& t : texts) {
        const double x = t.centred ? (width - m.horizontalAdvance(t.text)) / 2 : t.x * perTwip;
        p.drawText(QPointF(x, (t.line + 1) * m.lineSpacing()), t.text);
    }
    p.end();
}

QWidget* buildFrmReadEEMonView(Form& form, QPrinter* printer) {
    if (auto* f = dynamic_cast<FrmReadEEMon*>(&form); f && printer) {
        const QString pdf = f->appPath() + QStringLiteral("/Monitor.pdf");
        f->printReport = [printer, pdf](const std::vector<PrintText>& t) {
            printReport(*printer, t, pdf);
        };
    }
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QVBoxLayout(central);
    auto* top = new QHBoxLayout;

    auto* table = named(new QTableWidget, "grTable");
    table->setAccessibleName(QObject::tr("Monitor data"));
    table->verticalHeader()->setDefaultSectionSize(20);
    table->setMinimumWidth(64 + 16 * 30 + 24);
    table->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    top->addWidget(table, 3);

    auto* right = new QVBoxLayout;
    auto* decodedLabel = named(new QLabel, "lblDecoded");
    auto* decoded = named(new QListWidget, "lstDecoded");
    decoded->setAccessibleName(QObject::tr("Decoded monitor data"));
    decodedLabel->setBuddy(decoded);
    right->addWidget(decodedLabel);
    right->addWidget(decoded, 1);
    auto* sum = new QHBoxLayout;
    auto* cs = named(new QLabel, "lblCS");
    auto* rcs = named(new QLabel, "lblRCS");
    rcs->setAccessibleName(QObject::tr("Control Sum"));
    rcs->setMinimumWidth(40);
    rcs->setFrameShape(QFrame::Panel);
    rcs->setFrameShadow(QFrame::Sunken);
    sum->addWidget(cs);
    sum->addWidget(rcs);
    sum->addStretch();
    right->addLayout(sum);
    top->addLayout(right, 2);
    outer->addLayout(top, 1);

    auto* buttons = new QHBoxLayout;
    for (const char* b : {"cmdDefault", "cmdDefaultR", "cmdTransmit"})
        buttons->addWidget(named(new QPushButton, b));
    buttons->addStretch();
    auto* msg = named(new QLineEdit, "txtMsg");
    msg->setReadOnly(true);
    msg->setAccessibleName(QObject::tr("Message"));
    msg->setMinimumWidth(180);
    buttons->addWidget(msg);
    buttons->addWidget(named(new QPushButton, "cmdClose"));
    outer->addLayout(buttons);

    w->setCentralWidget(central);
    w->resize(960, 480);
    return w;
}

} // namespace velmorak
