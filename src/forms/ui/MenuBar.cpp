#include "forms/ui/MenuBar.h"

#include "forms/Form.h"

#include <QMainWindow>
#include <QMenuBar>

namespace velmorak {

void buildMenuBar(QMainWindow* window, Form& form) {
    for (Control* c : form.controls()) {
        auto* top = dynamic_cast<MenuItem*>(c);
        if (!top || top->parentMenu()) continue;
        QMenu* menu = window->menuBar()->addMenu(top->caption());
        menu->setObjectName(top->name());
        for (MenuItem* child : top->children())
            menu->addAction(child->caption())->setObjectName(child->name());
    }
}

} // namespace velmorak
