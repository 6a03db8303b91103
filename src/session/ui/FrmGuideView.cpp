#include "session/ui/FrmGuideView.h"

#include "session/FrmGuide.h"

#include <QDialog>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmGuideView(Form& form) {
    auto* w = new QDialog;
    auto* layout = new QVBoxLayout(w);
    auto* text = new QTextBrowser;
    text->setAccessibleName(QObject::tr("User guide"));
    text->setOpenExternalLinks(true);
    // The form has read the text in its load, before its view is made.
    if (auto* guide = dynamic_cast<FrmGuide*>(&form)) text->setMarkdown(guide->text());
    layout->addWidget(text);
    w->resize(760, 640);
    return w;
}

} // namespace velmorak
