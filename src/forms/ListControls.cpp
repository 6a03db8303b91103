#include "forms/ListControls.h"

#include <algorithm>

namespace velmorak {

namespace {
RunTimeError subscript(int i) {
    return RunTimeError(381, QStringLiteral("Invalid property array index %1").arg(i));
}
} // namespace

// --- ItemList

void ItemList::check(int i) const {
    if (i < 0 || i >= items_.size()) throw subscript(i);
}

QString ItemList::list(int i) const {
    check(i);
    return items_[i];
}

long ItemList::itemData(int i) const {
    check(i);
    return data_[size_t(i)];
}

void ItemList::setItemData(int i, long v) {
    check(i);
    data_[size_t(i)] = v;
}

// --- ComboBox

void ComboBox::setStyle(Style s) {
    if (style_ == s) return;
    style_ = s;
    changed(Prop::Style);
}

void ComboBox::setText(const QString& t) {
    if (style_ == Style::DropdownList) {
        int i = indexOf(t);
        if (i < 0 && !t.isEmpty())
            throw RunTimeError(383, QStringLiteral("'Text' property is read-only"));
        setListIndex(i);
        return;
    }
    int i = indexOf(t);
    if (i != listIndex_) {
        listIndex_ = i;
        changed(Prop::ListIndex);
    }
    if (text_ == t) return;
    text_ = t;
    changed(Prop::Text);
    onChange();
}

void ComboBox::setListIndex(int i) {
    if (i < -1 || i >= listCount())
        throw InvalidPropertyValue(QStringLiteral("%1.ListIndex = %2").arg(fullName()).arg(i));
    if (i == listIndex_) return;
    listIndex_ = i;
    QString t = i < 0 ? QString() : items_[i];
    bool textChanged = text_ != t;
    text_ = t;
    changed(Prop::ListIndex);
    if (textChanged) changed(Prop::Text);
    onClick();
}

void ComboBox::addItem(const QString& item, int index) {
    if (index < -1 || index > listCount()) throw subscript(index);
    if (index < 0) index = listCount();
    items_.insert(index, item);
    data_.insert(data_.begin() + index, 0);
    if (listIndex_ >= index) ++listIndex_;
    changed(Prop::Items);
}

void ComboBox::removeItem(int index) {
    check(index);
    items_.removeAt(index);
    data_.erase(data_.begin() + index);
    bool current = index == listIndex_;
    if (listIndex_ > index) --listIndex_;
    if (current) {
        listIndex_ = -1;
        if (style_ == Style::DropdownList) text_.clear();
    }
    changed(Prop::Items);
}

void ComboBox::clear() {
    items_.clear();
    data_.clear();
    listIndex_ = -1;
    text_.clear();
    changed(Prop::Items);
}

void ComboBox::userEdit(const QString& t) {
    if (enabled() && style_ == Style::Dropdown) setText(t);
}

// --- ListBox

void ListBox::setListIndex(int i) {
    if (i < -1 || i >= listCount())
        throw InvalidPropertyValue(QStringLiteral("%1.ListIndex = %2").arg(fullName()).arg(i));
    if (i == listIndex_) return;
    listIndex_ = i;
    changed(Prop::ListIndex);
    onClick();
}

bool ListBox::selected(int i) const {
    check(i);
    return i == listIndex_;
}

void ListBox::setSelected(int i, bool on) {
    check(i);
    if (on)
        setListIndex(i);
    else if (i == listIndex_)
        setListIndex(-1);
}

void ListBox::addItem(const QString& item, int index) {
    if (index < -1 || index > listCount()) throw subscript(index);
    insert(item, index < 0 ? listCount() : index);
}

void ListBox::insert(const QString& item, int index) {
    items_.insert(index, item);
    data_.insert(data_.begin() + index, 0);
    if (listIndex_ >= index) ++listIndex_;
    changed(Prop::Items);
}

void ListBox::removeItem(int index) {
    check(index);
    items_.removeAt(index);
    data_.erase(data_.begin() + index);
    if (listIndex_ == index)
        listIndex_ = -1;
    else if (listIndex_ > index)
        --listIndex_;
    changed(Prop::Items);
}

void ListBox::clear() {
    items_.clear();
    data_.clear();
    listIndex_ = -1;
    changed(Prop::Items);
}

// --- Grid

Grid::Grid(QString name, int index) : Control(std::move(name), index) {
    reshape(rows_, cols_);
}

void Grid::reshape(int rows, int cols) {
    rows_ = rows;
    cols_ = cols;
    cells_.resize(size_t(rows));
    for (auto& r : cells_) {
        while (r.size() < cols)
            r << QString();
        while (r.size() > cols)
            r.removeLast();
    }
    backs_.resize(size_t(rows));
    for (auto& r : backs_)
        r.resize(size_t(cols), kDefaultBack);
    widths_.resize(size_t(cols), -1);
    row_ = std::clamp(row_, 0, std::max(0, rows - 1));
    col_ = std::clamp(col_, 0, std::max(0, cols - 1));
    changed(Prop::Cells);
}

void Grid::setRows(int n) {
    if (n < fixedRows_) throw InvalidPropertyValue(QStringLiteral("Rows %1").arg(n));
    if (n != rows_) reshape(n, cols_);
}

void Grid::setCols(int n) {
    if (n < fixedCols_) throw InvalidPropertyValue(QStringLiteral("Cols %1").arg(n));
    if (n != cols_) reshape(rows_, n);
}

void Grid::setFixedRows(int n) {
    if (n < 0 || n > rows_) throw InvalidPropertyValue(QStringLiteral("FixedRows %1").arg(n));
    if (n == fixedRows_) return;
    fixedRows_ = n;
    changed(Prop::Cells);
}

void Grid::setFixedCols(int n) {
    if (n < 0 || n > cols_) throw InvalidPropertyValue(QStringLiteral("FixedCols %1").arg(n));
    if (n == fixedCols_) return;
    fixedCols_ = n;
    changed(Prop::Cells);
}

void Grid::checkCell(int r, int c) const {
    if (r < 0 || r >= rows_) throw subscript(r);
    if (c < 0 || c >= cols_) throw subscript(c);
}

QString Grid::textMatrix(int r, int c) const {
    checkCell(r, c);
    return cells_[size_t(r)][c];
}

void Grid::setTextMatrix(int r, int c, const QString& t) {
    checkCell(r, c);
    if (cells_[size_t(r)][c] == t) return;
    cells_[size_t(r)][c] = t;
    changedRow_ = r;
    changedCol_ = c;
    changed(Prop::Cell);
}

quint32 Grid::cellBackColor(int r, int c) const {
    checkCell(r, c);
    return backs_[size_t(r)][size_t(c)];
}

void Grid::setCellBackColor(int r, int c, quint32 rgb) {
    checkCell(r, c);
    if (backs_[size_t(r)][size_t(c)] == rgb) return;
    backs_[size_t(r)][size_t(c)] = rgb;
    changedRow_ = r;
    changedCol_ = c;
    changed(Prop::Cell);
}

void Grid::setRow(int r) {
    if (r < 0 || r >= rows_) throw subscript(r);
    if (r == row_) return;
    row_ = r;
    changed(Prop::RowCol);
}

void Grid::setCol(int c) {
    if (c < 0 || c >= cols_) throw subscript(c);
    if (c == col_) return;
    col_ = c;
    changed(Prop::RowCol);
}

int Grid::colWidth(int c) const {
    if (c < 0 || c >= cols_) throw subscript(c);
    return widths_[size_t(c)];
}

void Grid::setColWidth(int c, int w) {
    if (c < 0 || c >= cols_) throw subscript(c);
    if (widths_[size_t(c)] == w) return;
    widths_[size_t(c)] = w;
    changedCol_ = c;
    changed(Prop::ColWidth);
}

void Grid::setRowHeight(int h) {
    if (h == rowHeight_) return;
    rowHeight_ = h;
    changed(Prop::RowHeight);
}

void Grid::clear() {
    for (auto& r : cells_)
        for (auto& c : r)
            c.clear();
    changed(Prop::Cells);
}

void Grid::userClick(int r, int c) {
    if (!enabled()) return;
    checkCell(r, c);
    bool moved = r != row_ || c != col_;
    row_ = r;
    col_ = c;
    if (moved) changed(Prop::RowCol);
    onClick();
}

} // namespace velmorak
