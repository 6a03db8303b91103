#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the single-register tool: address, the byte as cells and as a slider, the
// actions below.
QWidget* buildFrmRLRegView(Form& form);

} // namespace velmorak
