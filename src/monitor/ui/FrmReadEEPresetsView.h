#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the memory dump: one grid filling the window.
QWidget* buildFrmReadEEPresetsView(Form& form);

} // namespace velmorak
