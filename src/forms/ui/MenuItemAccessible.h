#pragma once

namespace velmorak {

// Menu items in the accessibility tree carry their control's name as description ("mnuPanel"),
// as every other bound control does, and take the press action as a menu pick. Installed once.
void installMenuItemAccessible();

} // namespace velmorak
