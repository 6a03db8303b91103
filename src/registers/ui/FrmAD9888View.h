#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the flat panel window: the register tabs with each row's controls beside its
// bits, the brightness and contrast masters below, the actions on the right.
QWidget* buildFrmAD9888View(Form& form);

} // namespace velmorak
