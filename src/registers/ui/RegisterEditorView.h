#pragma once

#include "registers/ui/RegisterGridView.h"

#include <QList>
#include <QStringList>

class QLayout;
class QMainWindow;
class QTabWidget;
class QWidget;

namespace velmorak {

class Form;
struct RegisterMap;
struct RegisterRow;

// The widgets of a row's "Control" cell, by the prefixes of the names the map gives them:
// sliders, lists, and text boxes (read-only unless named in `editable`; wide when they show words).
QList<QWidget*> editorRowControls(const RegisterRow& row, const QStringList& editable = {});

// The grids of an editor's map on the tab strip TabStrip1, each row with its controls.
QTabWidget* buildEditorTabs(const RegisterMap& map, const QStringList& editable = {});

// The action column of a register editor: the named buttons, the load-on-change box, the preset
// list, the result message, the check sum and the device address.
QLayout* buildEditorActions(const QStringList& buttons);

// An editor window: its menus, `content` on the left and the action column with `buttons` on
// the right.
QMainWindow* buildEditorWindow(Form& form, QLayout* content, const QStringList& buttons);

} // namespace velmorak
