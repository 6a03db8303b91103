#include "registers/ui/RegisterEditorView.h"

#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"
#include "registers/RegisterMap.h"
#include "registers/ui/RegisterTabsView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
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

QWidget* controlWidget(const QString& name, bool editable, bool words) {
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
    text->setReadOnly(!editable);
    text->setMinimumWidth(words ? 150 : 60);
    return text;
}

QLineEdit* fact(QFormLayout* form, const char* label, const char* box) {
    auto* l = named(new QLabel, QString::fromLatin1(label));
    auto* t = named(new QLineEdit, QString::fromLatin1(box));
    t->setReadOnly(true);
    l->setBuddy(t);
    form->addRow(l, t);
    return t;
}

} // namespace

QList<QWidget*> editorRowControls(const RegisterRow& row, const QStringList& editable) {
    QList<QWidget*> out;
    if (row.control)
        for (const QString& name : QString::fromLatin1(row.control).split(u','))
            out << controlWidget(name, editable.contains(name), row.word1 != nullptr);
    return out;
}

QTabWidget* buildEditorTabs(const RegisterMap& map, const QStringList& editable) {
    QTabWidget* tabs = buildRegisterTabs(
        map, [editable](const RegisterRow& row) { return editorRowControls(row, editable); });
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    tabs->setAccessibleName(QObject::tr("Registers"));
    return tabs;
}

QLayout* buildEditorActions(const QStringList& buttons) {
    auto* right = new QVBoxLayout;
    for (const QString& b : buttons)
        right->addWidget(named(new QPushButton, b));
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
    fact(facts, "lblChSum", "txtChSum");
    fact(facts, "lblDevAddr", "txtDevAddr");
    right->addLayout(facts);
    right->addStretch();
    return right;
}

QMainWindow* buildEditorWindow(Form& form, QLayout* content, const QStringList& buttons) {
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QHBoxLayout(central);
    outer->addLayout(content, 1);
    outer->addLayout(buildEditorActions(buttons));
    w->setCentralWidget(central);
    w->resize(1120, 640);
    return w;
}

} // namespace velmorak
