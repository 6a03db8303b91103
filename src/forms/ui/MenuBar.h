#pragma once

class QMainWindow;

namespace velmorak {

class Form;

// The menu bar of a window from its menu items: a top item becomes a menu, its children
// actions, each named as its control so the binding finds it.
void buildMenuBar(QMainWindow* window, Form& form);

} // namespace velmorak
