#pragma once

#include "registers/ui/RegisterGridView.h"

#include <QList>
#include <QStringList>

class QLayout;
class QTabWidget;
class QWidget;

namespace velmorak {

struct RegisterMap;
struct RegisterRow;

// The widgets of a row's "Control" cell, by the prefixes of the names the map gives them:
// sliders, lists, and text boxes (read-only unless named in `editable`).
QList<QWidget*> editorRowControls(const RegisterRow& row, const QStringList& editable = {});

// The grids of an editor's map on the tab strip TabStrip1, each row with its controls.
QTabWidget* buildEditorTabs(const RegisterMap& map, const QStringList& editable = {});

// The action column of a register editor: the named buttons, the load-on-change box, the preset
// list, the result message, the check sum and the device address.
QLayout* buildEditorActions(const QStringList& buttons);

} // namespace velmorak
