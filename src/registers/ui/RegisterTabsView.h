#pragma once

#include "registers/ui/RegisterGridView.h"

class QTabWidget;
class QWidget;

namespace velmorak {

struct RegisterMap;

// The grids of a register map, one tab each: on every tab a frame named as the map names it,
// holding the grid (RegisterGridView) with one bit row widget per member, named as the member
// ("ucBitsField1(16)"), and the row's controls made by `controls`. Binding the window's form to
// it fills the grids and rows.
QTabWidget* buildRegisterTabs(const RegisterMap& map, const RowControls& controls = {},
                              QWidget* parent = nullptr);

} // namespace velmorak
