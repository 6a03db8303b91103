#pragma once

#include <QStringList>

namespace velmorak {

class Control;
class Form;

// The text a control shows: caption, text or list item; empty for controls without one.
QString shownText(const Control& c);

// One line a control: "name<TAB>visible<TAB>enabled<TAB>text", with 1 and 0 for the flags;
// the first line is "caption<TAB>" and the window's caption. For diagnostics and outside tests.
QStringList formSnapshot(const Form& form);

class Forms;
// Every open window's lines, each prefixed by the window's name and a dot.
QStringList formsSnapshot(const Forms& forms);

} // namespace velmorak
