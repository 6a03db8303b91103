#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the resolution name dialog.
QWidget* buildFrmInputBoxView(Form& form);

} // namespace velmorak
