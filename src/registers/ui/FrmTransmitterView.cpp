#include "registers/ui/FrmTransmitterView.h"

#include "registers/TransmitterMap.h"
#include "registers/ui/RegisterEditorView.h"

#include <QMainWindow>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmorak {

QWidget* buildFrmTransmitterView(Form& form) {
    auto* left = new QVBoxLayout;
    left->addWidget(buildEditorTabs(kTransmitterMap), 1);
    return buildEditorWindow(form, left,
                             {"cmdRead", "cmdLoad", "cmdDefault", "cmdSave", "cmdPreset"});
}

} // namespace velmorak
