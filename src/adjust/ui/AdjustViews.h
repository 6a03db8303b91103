#pragma once

class QWidget;

namespace velmorak {

class Form;

// Display Adjustment: the steppers in their groups, the test picture strips and the buttons.
QWidget* buildFrmConsoleView(Form& form);

} // namespace velmorak
