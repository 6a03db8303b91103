#include "registers/ui/FrmRLRegView.h"

#include "forms/ui/Binding.h"
#include "registers/ui/BitsFieldView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmRLRegView(Form& form) {
    (void)form;
    auto* w = new QDialog;
    auto* grid = new QGridLayout;

    auto* addrLabel = named(new QLabel, "lblRegAddr");
    auto* addr = named(new QComboBox, "cboRAddr");
    addrLabel->setBuddy(addr);
    grid->addWidget(addrLabel, 0, 0);
    auto* addrRow = new QHBoxLayout;
    addrRow->addWidget(addr);
    addrRow->addWidget(named(new QLabel, "lblH"));
    addrRow->addStretch();
    grid->addLayout(addrRow, 0, 1);

    auto* devLabel = named(new QLabel, "lblDevAddr");
    auto* dev = named(new QLineEdit, "txtDevAddr");
    dev->setMaximumWidth(60);
    devLabel->setBuddy(dev);
    grid->addWidget(devLabel, 0, 2);
    grid->addWidget(dev, 0, 3);

    auto* bits = named(new BitsFieldView, "ucBitsFieldR");
    bits->setRowName(QObject::tr("Register"));
    grid->addWidget(bits, 1, 0, 1, 4);

    auto* valueLabel = named(new QLabel, "lblValue");
    auto* slider = named(new QScrollBar(Qt::Horizontal), "HScrlR");
    slider->setMinimumWidth(240);
    valueLabel->setBuddy(slider);
    grid->addWidget(valueLabel, 2, 0);
    grid->addWidget(slider, 2, 1, 1, 3);

    grid->addWidget(named(new QCheckBox, "ChkChange"), 3, 0, 1, 4);

    auto* buttons = new QHBoxLayout;
    auto* msg = named(new QLineEdit, "txtMsg");
    msg->setMaximumWidth(90);
    msg->setAccessibleName(QObject::tr("Message"));
    buttons->addWidget(msg);
    buttons->addStretch();
    for (const char* n : {"cmdRead", "cmdLoad", "cmdClose"})
        buttons->addWidget(named(new QPushButton, n));

    auto* l = new QVBoxLayout(w);
    l->addLayout(grid);
    l->addStretch();
    l->addLayout(buttons);
    w->resize(430, 190);
    return w;
}

} // namespace velmorak
