#include "forms/ui/FrmWaitView.h"

#include "forms/ui/Binding.h"

#include <QDialog>
#include <QProgressBar>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmWaitView(Form& form) {
    (void)form;
    auto* w = new QDialog;
    auto* bar = named(new QProgressBar, "ProgBar");
    bar->setAccessibleName(QObject::tr("Progress"));
    bar->setTextVisible(true);
    auto* l = new QVBoxLayout(w);
    l->addWidget(bar);
    w->resize(320, 70);
    return w;
}

} // namespace velmorak
