#pragma once

class QTabWidget;
class QWidget;

namespace velmorak {

struct RegisterMap;

// The grids of a register map, one tab each: on every tab a frame named as the map names it,
// holding the grid and, over its "Value" column, one bit row widget per member, named as the
// member ("ucBitsField1(16)"). Binding the window's form to it fills the grids and rows.
QTabWidget* buildRegisterTabs(const RegisterMap& map, QWidget* parent = nullptr);

} // namespace velmorak
