#include "resdb/ui/FrmInputBoxView.h"

#include "forms/Form.h"

#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmInputBoxView(Form& form) {
    (void)form;
    auto* w = new QDialog;
    auto* l = new QVBoxLayout(w);
    auto* nameLabel = new QLabel(QObject::tr("&Name:"));
    auto* names = new QComboBox;
    names->setObjectName(QStringLiteral("cboPresets"));
    names->setEditable(true);
    names->setInsertPolicy(QComboBox::NoInsert);
    nameLabel->setBuddy(names);
    l->addWidget(nameLabel);
    l->addWidget(names);
    auto* descLabel = new QLabel;
    descLabel->setObjectName(QStringLiteral("lblDescription"));
    auto* desc = new QLineEdit;
    desc->setObjectName(QStringLiteral("txtInput"));
    descLabel->setBuddy(desc);
    l->addWidget(descLabel);
    l->addWidget(desc);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const char* n : {"cmdOK", "cmdCancel"}) {
        auto* b = new QPushButton;
        b->setObjectName(QString::fromLatin1(n));
        buttons->addWidget(b);
    }
    l->addLayout(buttons);
    w->resize(360, 170);
    return w;
}

} // namespace velmorak
