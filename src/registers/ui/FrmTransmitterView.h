#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the transmitter window: the register tabs with each row's controls beside its
// bits, the actions on the right.
QWidget* buildFrmTransmitterView(Form& form);

} // namespace velmorak
