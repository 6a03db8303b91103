#pragma once

#include "forms/Control.h"

#include <QStringList>

#include <vector>

namespace velmorak {

// Items with a current index (-1: none) and a number per item.
class ItemList {
  public:
    int listCount() const { return int(items_.size()); }
    // Throws RunTimeError 381 outside 0..ListCount-1.
    QString list(int i) const;
    const QStringList& items() const { return items_; }
    long itemData(int i) const;
    void setItemData(int i, long v);
    int listIndex() const { return listIndex_; }
    // The index of the item that equals text exactly, or -1.
    int indexOf(const QString& text) const { return int(items_.indexOf(text)); }

  protected:
    void check(int i) const;
    QStringList items_;
    std::vector<long> data_;
    int listIndex_ = -1;
};

// A combo box: Style Dropdown is editable, DropdownList only picks items. ListIndex changes
// fire Click; edits of the text fire Change.
class ComboBox : public Control, public ItemList {
  public:
    enum class Style { Dropdown = 0, DropdownList = 2 };
    using Control::Control;
    const char* kind() const override { return "ComboBox"; }

    Style style() const { return style_; }
    void setStyle(Style s);
    const QString& text() const { return text_; }
    // Dropdown: sets the edit text (Change) and points ListIndex at an equal item, without
    // Click. DropdownList: selects the equal item (Click), or throws RunTimeError 383.
    void setText(const QString& t);
    // -1..ListCount-1, else InvalidPropertyValue. The text follows the item. Click on change.
    void setListIndex(int i);
    // Inserts at index (-1: at the end); the current item stays current.
    void addItem(const QString& item, int index = -1);
    void removeItem(int index);
    void clear();

    void userSelect(int i) {
        if (enabled()) setListIndex(i);
    }
    void userEdit(const QString& t);

    Event<> onClick;
    Event<> onChange;

  private:
    Style style_ = Style::Dropdown;
    QString text_;
};

// A single-choice list. Click fires when ListIndex changes.
class ListBox : public Control, public ItemList {
  public:
    using Control::Control;
    const char* kind() const override { return "ListBox"; }

    void setListIndex(int i);
    QString text() const { return listIndex_ < 0 ? QString() : items_[listIndex_]; }
    bool selected(int i) const;
    // Selecting an item makes it current; deselecting the current one leaves none.
    void setSelected(int i, bool on);
    void addItem(const QString& item, int index = -1);
    void removeItem(int index);
    void clear();
    void userSelect(int i) {
        if (enabled()) setListIndex(i);
    }

    Event<> onClick;

  private:
    void insert(const QString& item, int index);
};

// A read-only grid of texts with fixed (header) rows and columns. Row and Col name the current
// cell; Text reads and writes it.
class Grid : public Control {
  public:
    explicit Grid(QString name, int index = -1);
    const char* kind() const override { return "Grid"; }

    int rows() const { return rows_; }
    int cols() const { return cols_; }
    void setRows(int n);
    void setCols(int n);
    int fixedRows() const { return fixedRows_; }
    int fixedCols() const { return fixedCols_; }
    void setFixedRows(int n);
    void setFixedCols(int n);
    // Throws RunTimeError 381 outside the grid.
    QString textMatrix(int r, int c) const;
    void setTextMatrix(int r, int c, const QString& t);
    int row() const { return row_; }
    int col() const { return col_; }
    void setRow(int r);
    void setCol(int c);
    QString text() const { return textMatrix(row_, col_); }
    void setText(const QString& t) { setTextMatrix(row_, col_, t); }
    // In pixels; -1 means the view's default.
    int colWidth(int c) const;
    void setColWidth(int c, int w);
    int rowHeight() const { return rowHeight_; }
    void setRowHeight(int h);
    void clear(); // empties every cell, keeps the shape
    // Back colour of a cell, 0xRRGGBB; kDefaultBack: the grid's own. Fires Prop::Cell.
    static constexpr quint32 kDefaultBack = 0xFFFFFFFF;
    quint32 cellBackColor(int r, int c) const;
    void setCellBackColor(int r, int c, quint32 rgb);

    // A user's click on a cell: it becomes current, then Click fires.
    void userClick(int r, int c);

    Event<> onClick;
    // The cell a Prop::Cell notification was about.
    int changedRow() const { return changedRow_; }
    int changedCol() const { return changedCol_; }

  private:
    void checkCell(int r, int c) const;
    void reshape(int rows, int cols);
    int rows_ = 2;
    int cols_ = 2;
    int fixedRows_ = 1;
    int fixedCols_ = 1;
    int row_ = 1;
    int col_ = 1;
    int rowHeight_ = -1;
    int changedRow_ = 0;
    int changedCol_ = 0;
    std::vector<QStringList> cells_;
    std::vector<std::vector<quint32>> backs_;
    std::vector<int> widths_;
};

} // namespace velmorak
