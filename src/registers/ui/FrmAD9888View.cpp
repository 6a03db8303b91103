#include "registers/ui/FrmAD9888View.h"

#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"
#include "registers/Ad9888Map.h"
#include "registers/ui/RegisterTabsView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmorak {

namespace {

// A control of the "Control" column by the prefix of its name.
QWidget* controlWidget(const QString& name) {
    if (name.startsWith(QLatin1String("HScrl"))) {
        auto* bar = named(new QScrollBar(Qt::Horizontal), name);
        bar->setMinimumWidth(160);
        return bar;
    }
    if (name.startsWith(QLatin1String("cbo"))) {
        auto* list = named(new QComboBox, name);
        list->setEditable(true);
        list->setInsertPolicy(QComboBox::NoInsert);
        list->setMinimumWidth(90);
        return list;
    }
    auto* text = named(new QLineEdit, name);
    text->setReadOnly(name != QLatin1String("txtPLLc"));
    text->setMinimumWidth(name.size() > 6 ? 150 : 50);
    return text;
}

// The controls of a row's "Control" cell.
QList<QWidget*> rowControls(const RegisterRow& row) {
    QList<QWidget*> out;
    if (row.control)
        for (const QString& name : QString::fromLatin1(row.control).split(u','))
            out << controlWidget(name);
    return out;
}

QGroupBox* master(const QString& title, const char* bar, const char* text) {
    auto* box = new QGroupBox(title);
    auto* l = new QHBoxLayout(box);
    auto* b = named(new QScrollBar(Qt::Horizontal), QString::fromLatin1(bar));
    b->setMinimumWidth(200);
    b->setAccessibleName(title);
    l->addWidget(b, 1);
    auto* t = named(new QLineEdit, QString::fromLatin1(text));
    t->setReadOnly(true);
    t->setMaximumWidth(60);
    t->setAccessibleName(title + QObject::tr(", value"));
    l->addWidget(t);
    return box;
}

} // namespace

QWidget* buildFrmAD9888View(Form& form) {
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QHBoxLayout(central);

    auto* left = new QVBoxLayout;
    QTabWidget* tabs = buildRegisterTabs(kAd9888Map, rowControls);
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    tabs->setAccessibleName(QObject::tr("Registers"));
    left->addWidget(tabs, 1);
    auto* masters = new QHBoxLayout;
    masters->addWidget(master(QObject::tr("Contrast"), "HScrlContrast", "txtContrast"));
    masters->addWidget(master(QObject::tr("Brightness"), "HScrlBritnes", "txtBrite"));
    left->addLayout(masters);
    outer->addLayout(left, 1);

    auto* right = new QVBoxLayout;
    for (const char* b : {"cmdRead", "cmdLoad", "cmdDefault", "cmdSave", "cmdPreset", "cmdConnect"})
        right->addWidget(named(new QPushButton, QString::fromLatin1(b)));
    right->addWidget(named(new QCheckBox, QStringLiteral("ChkChange")));
    auto* presets = named(new QListWidget, QStringLiteral("lstPresets"));
    presets->setMinimumHeight(160);
    presets->setAccessibleName(QObject::tr("Presets"));
    right->addWidget(presets, 1);
    auto* msg = named(new QLineEdit, QStringLiteral("txtMsg"));
    msg->setReadOnly(true);
    msg->setAccessibleName(QObject::tr("Message"));
    QFont bold = msg->font();
    bold.setBold(true);
    msg->setFont(bold);
    right->addWidget(msg);
    auto* facts = new QFormLayout;
    auto* sumLabel = named(new QLabel, QStringLiteral("lblChSum"));
    auto* sum = named(new QLineEdit, QStringLiteral("txtChSum"));
    sum->setReadOnly(true);
    sumLabel->setBuddy(sum);
    facts->addRow(sumLabel, sum);
    auto* devLabel = named(new QLabel, QStringLiteral("lblDevAddr"));
    auto* dev = named(new QLineEdit, QStringLiteral("txtDevAddr"));
    dev->setReadOnly(true);
    devLabel->setBuddy(dev);
    facts->addRow(devLabel, dev);
    right->addLayout(facts);
    right->addStretch();
    outer->addLayout(right);

    w->setCentralWidget(central);
    w->resize(1120, 640);
    return w;
}

} // namespace velmorak
