#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the list of resolutions: menu, toolbar, pick list, grid and buttons.
QWidget* buildFrmSettingsView(Form& form);

} // namespace velmorak
