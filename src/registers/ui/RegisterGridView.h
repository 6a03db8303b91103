#pragma once

#include <QList>
#include <QScrollArea>

#include <array>

#include <functional>
#include <vector>

class QGridLayout;
class QLabel;

namespace velmorak {

struct RegisterMap;
struct RegisterGrid;
struct RegisterRow;
class BitsFieldView;

// The widgets a row shows in its "Control" column, left to right.
using RowControls = std::function<QList<QWidget*>(const RegisterRow&)>;

// One register grid drawn as ordinary child widgets in a scrolled sheet: a header row, then per
// member its address, its name (the buddy of its bit row), its bit row and its controls. Every
// control stays a real child, so Tab walks them in reading order and leaves the grid, and
// assistive technology sees each one. Named as the map names the grid ("FlexGr1"), it binds to
// that Grid model, which writes the texts of the cells.
class RegisterGridView : public QScrollArea {
    Q_OBJECT
  public:
    RegisterGridView(const RegisterMap& map, const RegisterGrid& grid,
                     const RowControls& controls = {}, QWidget* parent = nullptr);

    int rows() const { return int(cells_.size()); }
    static constexpr int kCols = 4;
    // The text of a cell (row 0 the headers), as the grid shows it; the "Value" column of a
    // member row holds its bit row instead.
    QString cellText(int r, int c) const;
    void setCellText(int r, int c, const QString& text);
    // Back colour of a cell, 0xRRGGBB; Grid::kDefaultBack: the sheet's own.
    void setCellBack(int r, int c, quint32 rgb);
    BitsFieldView* bitsRow(int r) const;
    // The widgets of a row in Tab order.
    QList<QWidget*> rowWidgets(int r) const;

  private:
    QGridLayout* layout_ = nullptr;
    std::vector<std::array<QLabel*, kCols>> cells_;
    std::vector<BitsFieldView*> bits_;
    std::vector<QList<QWidget*>> controls_;
};

// Lets FormBinding bind RegisterGridView widgets to Grid models by name. Runs once on its own.
void registerGridBinder();

} // namespace velmorak
