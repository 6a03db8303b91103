#pragma once

#include <QString>

namespace velmorak {

// Menu items in the accessibility tree carry their control's name as description ("mnuPanel"),
// as every other bound control does, and take the press action as a menu pick. Installed once.
void installMenuItemAccessible();

// A caption as read aloud: the mnemonic marks gone, "&&" left as "&".
QString withoutMnemonic(QString s);

} // namespace velmorak
