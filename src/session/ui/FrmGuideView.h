#pragma once

class QWidget;

namespace velmorak {

class Form;

// The user guide drawn from its Markdown text.
QWidget* buildFrmGuideView(Form& form);

} // namespace velmorak
