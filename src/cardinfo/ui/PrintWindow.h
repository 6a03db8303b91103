#pragma once

#include <functional>

class QPrinter;
class QWidget;

namespace velmorak {

class Form;

// One page with the picture of a window at (0, 0): at the window's own size, or, when the
// window is wider than the page, at the page's width with the height scaled alike. A printer
// left without a destination (no printer on the system) writes a PDF file. Throws
// RunTimeError 482 when the printer cannot be opened.
void printWindowImage(QPrinter& printer, QWidget* window);

// The window printer of the tool: the drawn window of a form on the printer the dialog set up.
std::function<void(Form&)> formWindowPrinter(std::function<QPrinter*()> printer);

} // namespace velmorak
