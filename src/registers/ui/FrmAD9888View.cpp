#include "registers/ui/FrmAD9888View.h"

#include "forms/ui/Binding.h"
#include "registers/Ad9888Map.h"
#include "registers/ui/RegisterEditorView.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmorak {

namespace {

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
    auto* left = new QVBoxLayout;
    left->addWidget(buildEditorTabs(kAd9888Map, {QStringLiteral("txtPLLc")}), 1);
    auto* masters = new QHBoxLayout;
    masters->addWidget(master(QObject::tr("Contrast"), "HScrlContrast", "txtContrast"));
    masters->addWidget(master(QObject::tr("Brightness"), "HScrlBritnes", "txtBrite"));
    left->addLayout(masters);
    return buildEditorWindow(
        form, left, {"cmdRead", "cmdLoad", "cmdDefault", "cmdSave", "cmdPreset", "cmdConnect"});
}

} // namespace velmorak
