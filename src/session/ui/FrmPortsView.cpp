#include "session/ui/FrmPortsView.h"

#include "forms/ui/Binding.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmPortsView(Form& form) {
    (void)form;
    auto* w = new QDialog;
    auto* outer = new QVBoxLayout(w);

    auto* table = named(new QTableWidget, "grdPorts");
    table->setAccessibleName(QObject::tr("Serial devices"));
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->verticalHeader()->hide();
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    table->setMinimumSize(680, 160);
    outer->addWidget(table, 1);

    auto* form2 = new QGridLayout;
    auto* lblCom = named(new QLabel, "lblCom");
    auto* com = named(new QLineEdit, "txtCom");
    com->setMaximumWidth(50);
    lblCom->setBuddy(com);
    auto* lblPath = named(new QLabel, "lblPath");
    auto* path = named(new QLineEdit, "txtPath");
    lblPath->setBuddy(path);
    form2->addWidget(lblCom, 0, 0);
    form2->addWidget(com, 0, 1);
    form2->addWidget(lblPath, 0, 2);
    form2->addWidget(path, 0, 3);
    form2->setColumnStretch(3, 1);
    outer->addLayout(form2);

    auto* bottom = new QHBoxLayout;
    auto* note = named(new QLabel, "lblNote");
    note->setWordWrap(true);
    note->setAccessibleName(QObject::tr("Note"));
    bottom->addWidget(note, 1);
    bottom->addWidget(named(new QPushButton, "cmdBind"));
    bottom->addWidget(named(new QPushButton, "cmdClose"));
    outer->addLayout(bottom);
    w->resize(720, 300);
    return w;
}

} // namespace velmorak
