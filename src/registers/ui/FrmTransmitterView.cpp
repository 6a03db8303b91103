#include "registers/ui/FrmTransmitterView.h"

#include "forms/ui/MenuBar.h"
#include "registers/TransmitterMap.h"
#include "registers/ui/RegisterEditorView.h"

#include <QHBoxLayout>
#include <QLayout>
#include <QMainWindow>
#include <QTabWidget>

namespace velmorak {

QWidget* buildFrmTransmitterView(Form& form) {
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QHBoxLayout(central);
    outer->addWidget(buildEditorTabs(kTransmitterMap), 1);
    outer->addLayout(
        buildEditorActions({"cmdRead", "cmdLoad", "cmdDefault", "cmdSave", "cmdPreset"}));
    w->setCentralWidget(central);
    w->resize(1120, 640);
    return w;
}

} // namespace velmorak
