#include "registers/ui/RegisterTabsView.h"

#include "registers/RegisterMap.h"

#include <QGroupBox>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmorak {

QTabWidget* buildRegisterTabs(const RegisterMap& map, const RowControls& controls,
                              QWidget* parent) {
    auto* tabs = new QTabWidget(parent);
    for (const RegisterGrid& g : map.grids) {
        auto* page = new QWidget;
        auto* pageLayout = new QVBoxLayout(page);
        pageLayout->setContentsMargins(4, 4, 4, 4);
        auto* frame = new QGroupBox(page);
        frame->setObjectName(QString::fromLatin1(g.frame));
        frame->setFlat(true);
        auto* frameLayout = new QVBoxLayout(frame);
        frameLayout->setContentsMargins(0, 0, 0, 0);
        frameLayout->addWidget(new RegisterGridView(map, g, controls, frame));
        pageLayout->addWidget(frame);
        const int index = tabs->addTab(page, QString::fromLatin1(g.caption));
        tabs->setTabToolTip(index, QString::fromLatin1(map.tabText));
    }
    return tabs;
}

} // namespace velmorak
