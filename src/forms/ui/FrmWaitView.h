#pragma once

class QWidget;

namespace velmorak {

class Form;

// The drawing of the progress window: one bar.
QWidget* buildFrmWaitView(Form& form);

} // namespace velmorak
