#include "monitor/ui/FrmReadEEPresetsView.h"

#include "forms/ui/Binding.h"

#include <QDialog>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmReadEEPresetsView(Form& form) {
    (void)form;
    auto* w = new QDialog;
    auto* grid = named(new QTableWidget, "grTable");
    grid->setAccessibleName(QObject::tr("Memory"));
    grid->setWordWrap(false);
    auto* l = new QVBoxLayout(w);
    l->addWidget(grid);
    w->resize(1100, 660);
    return w;
}

} // namespace velmorak
