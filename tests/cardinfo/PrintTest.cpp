// Card Status printed to a PDF file: one page, one picture of the window, at the window's size
// or fitted to the page's width.
#include "session/SessionBench.h"

#include "cardinfo/CapturePrint.h"
#include "cardinfo/FrmStatus.h"
#include "cardinfo/ui/CardInfoViews.h"
#include "cardinfo/ui/CardWidgets.h"
#include "cardinfo/ui/PrintWindow.h"
#include "forms/ui/FormWindow.h"

#include <QCoreApplication>
#include <QPageLayout>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

QString run(const QString& tool, const QStringList& args) {
    QProcess p;
    p.start(tool, args);
    p.waitForFinished(20000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The images of a PDF as "width height x-ppi y-ppi", one each.
QStringList images(const QString& pdf) {
    QStringList out;
    const QStringList lines = run("pdfimages", {"-list", pdf}).split('\n', Qt::SkipEmptyParts);
    for (const QString& l : lines.mid(2)) {
        const QStringList f = l.simplified().split(' ');
        if (f.size() > 13) out << QStringList{f[3], f[4], f[12], f[13]}.join(' ');
    }
    return out;
}

struct Printed {
    int pages = 0;
    QStringList images;
};

Printed printStatus(SessionBench& b, const QPageSize& page, QWidget** window) {
    ViewRegistry views;
    views.add("frmStatus", buildFrmStatusView);
    views.install(b.session->forms);
    auto& f = dynamic_cast<FrmStatus&>(b.session->forms.show("frmStatus"));
    auto* view = dynamic_cast<FormWindow*>(f.view());
    *window = view ? view->window() : nullptr;
    if (!view) return {};
    view->window()->resize(640, 560);
    QCoreApplication::processEvents();
    EXPECT_EQ(view->window()->size(), QSize(640, 560));

    const QString pdf = b.dir.filePath("status.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    printer.setPageLayout(QPageLayout(page, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    setWindowPrinter(formWindowPrinter([&printer] { return &printer; }));
    b.link.dialogs.answer(MsgResult::OK);
    f.mnuPrintStatusDigCard.click();
    setWindowPrinter(nullptr);
    EXPECT_TRUE(b.link.dialogs.messages().isEmpty())
        << b.link.dialogs.messages().join('|').toStdString();
    const QString info = run("pdfinfo", {pdf});
    const auto m = QRegularExpression("Pages:\\s+(\\d+)").match(info);
    return {m.hasMatch() ? m.captured(1).toInt() : 0, images(pdf)};
}

// Printed size in inches from "width height x-ppi y-ppi".
std::pair<double, double> inches(const QString& image) {
    const QStringList f = image.split(' ');
    return {f[0].toDouble() / f[2].toDouble(), f[1].toDouble() / f[3].toDouble()};
}

} // namespace

TEST(CardStatusPrint, NeedsPopplerTools) {
    ASSERT_FALSE(QStandardPaths::findExecutable("pdfimages").isEmpty())
        << "poppler-utils is missing: run scripts/install-deps";
}

TEST(CardStatusPrint, WindowAtItsOwnSizeOnAWidePage) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    QWidget* w = nullptr;
    const Printed p = printStatus(b, QPageSize(QPageSize::A4), &w);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(p.pages, 1);
    ASSERT_EQ(p.images.size(), 1) << p.images.join('|').toStdString();
    // 640 x 560 screen pixels at the screen's resolution.
    const auto [wi, hi] = inches(p.images[0]);
    EXPECT_NEAR(wi, 640.0 / w->logicalDpiX(), 0.02);
    EXPECT_NEAR(hi, 560.0 / w->logicalDpiY(), 0.02);
}

TEST(CardStatusPrint, WindowWiderThanThePageIsFittedToItsWidth) {
    SessionBench b;
    ASSERT_TRUE(b.start());
    QWidget* w = nullptr;
    // A page 4 inches wide for a window some 6.7 inches wide.
    const Printed p = printStatus(b, QPageSize(QSizeF(4, 6), QPageSize::Inch), &w);
    ASSERT_NE(w, nullptr);
    ASSERT_GT(640.0 / w->logicalDpiX(), 4.0);
    EXPECT_EQ(p.pages, 1);
    ASSERT_EQ(p.images.size(), 1) << p.images.join('|').toStdString();
    const auto [wi, hi] = inches(p.images[0]);
    EXPECT_NEAR(wi, 4.0, 0.02);
    EXPECT_NEAR(hi, 4.0 * 560 / 640, 0.02);
}
