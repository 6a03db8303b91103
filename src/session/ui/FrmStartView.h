#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the main window: menus, port row, card box, sync box, status bar.
QWidget* buildFrmStartView(Form& form);

} // namespace velmorak
