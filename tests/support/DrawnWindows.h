#pragma once

#include "forms/Forms.h"
#include "forms/ui/FormWindow.h"

#include <initializer_list>
#include <utility>

namespace velmorak::test {

// Windows drawn over their logic from now on, by name.
void drawWindows(Forms& forms,
                 std::initializer_list<std::pair<const char*, ViewRegistry::Builder>> views);

// The drawn window of a form; nullptr when it has none.
FormWindow* drawnView(const Form& f);

// The window is complete: each control has its widget, each widget carries its control's name
// for assistive technology and, where it shows text, a human name; the title starts as given
// (when one is given).
void expectDrawnAndNamed(const Form& f, const QString& title = {});

// A picture of the window, tests/<name>.png in the build folder, to look at by eye.
void savePicture(const Form& f, const QString& name);

} // namespace velmorak::test
