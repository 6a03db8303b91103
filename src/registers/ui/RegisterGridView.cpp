#include "registers/ui/RegisterGridView.h"

#include "forms/ListControls.h"
#include "forms/ui/Binding.h"
#include "registers/RegisterMap.h"
#include "registers/ui/BitsFieldView.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QPushButton>

namespace velmorak {

namespace {

// The sheet under the cells: header row in the button colour, body in the base colour, a line
// between rows and between columns, as a grid draws them.
class GridSheet : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        auto* grid = qobject_cast<QGridLayout*>(layout());
        if (!grid) return;
        QPainter p(this);
        p.fillRect(rect(), palette().base());
        for (int c = 0; c < grid->columnCount(); ++c)
            p.fillRect(grid->cellRect(0, c), palette().button());
        p.setPen(palette().color(QPalette::Mid));
        for (int r = 0; r < grid->rowCount(); ++r)
            for (int c = 0; c < grid->columnCount(); ++c) {
                const QRect cell = grid->cellRect(r, c);
                if (!cell.isValid()) continue;
                p.drawLine(cell.topRight(), cell.bottomRight());
                p.drawLine(cell.bottomLeft(), cell.bottomRight());
            }
    }
};

QLabel* cellLabel(QWidget* parent) {
    auto* l = new QLabel(parent);
    l->setTextFormat(Qt::PlainText);
    l->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    l->setContentsMargins(4, 0, 4, 0);
    return l;
}

} // namespace

RegisterGridView::RegisterGridView(const RegisterMap& map, const RegisterGrid& g,
                                   const RowControls& controls, QWidget* parent)
    : QScrollArea(parent) {
    registerGridBinder();
    setObjectName(QString::fromLatin1(g.grid));
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus); // Tab goes to the cells, and scrolls them into sight
    auto* sheet = new GridSheet;
    layout_ = new QGridLayout(sheet);
    layout_->setContentsMargins(0, 0, 0, 0);
    layout_->setSpacing(0);

    const int count = g.last - g.first + 2;
    cells_.resize(size_t(count));
    bits_.resize(size_t(count), nullptr);
    controls_.resize(size_t(count));
    for (int c = 0; c < kCols; ++c) {
        QLabel* h = cellLabel(sheet);
        h->setText(QString::fromLatin1(kGridHeaders[c]));
        cells_[0][size_t(c)] = h;
        layout_->addWidget(h, 0, c);
    }
    for (int m = g.first; m <= g.last; ++m) {
        const RegisterRow& row = map.rows[size_t(m)];
        const int r = m - g.first + 1;
        const QString rowName = QString::fromLatin1(row.name).trimmed();
        auto& cells = cells_[size_t(r)];
        cells[0] = cellLabel(sheet);
        cells[1] = cellLabel(sheet);
        if (row.nameColor) {
            QPalette pal = cells[1]->palette();
            pal.setColor(QPalette::WindowText, QColor::fromRgb(row.nameColor));
            cells[1]->setPalette(pal);
        }
        layout_->addWidget(cells[0], r, 0);
        layout_->addWidget(cells[1], r, 1);

        auto* bits = named(new BitsFieldView(sheet),
                           QStringLiteral("%1(%2)").arg(QString::fromLatin1(map.array)).arg(m));
        bits->setRowName(rowName);
        cells[1]->setBuddy(bits);
        bits_[size_t(r)] = bits;
        layout_->addWidget(bits, r, 2);

        // The "Control" cell: its own text, then the row's controls.
        auto* holder = new QWidget(sheet);
        auto* line = new QHBoxLayout(holder);
        line->setContentsMargins(0, 0, 2, 0);
        line->setSpacing(2);
        cells[3] = cellLabel(holder);
        line->addWidget(cells[3]);
        const QList<QWidget*> own = controls ? controls(row) : QList<QWidget*>();
        bool slider = false;
        for (qsizetype i = 0; i < own.size(); ++i) {
            QWidget* w = own[i];
            w->setAccessibleName(i == 0 ? rowName : rowName + tr(", value"));
            // A slider takes the room; the others keep their natural width.
            if (w->inherits("QAbstractSlider"))
                slider = true;
            else
                w->setSizePolicy(QSizePolicy::Preferred, w->sizePolicy().verticalPolicy());
            line->addWidget(w, w->inherits("QAbstractSlider") ? 1 : 0);
        }
        if (!own.isEmpty()) {
            cells[3]->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
            if (!slider) line->addStretch(1);
        }
        controls_[size_t(r)] = own;
        layout_->addWidget(holder, r, 3);
        layout_->setRowMinimumHeight(r, bits->sizeHint().height() + 2);
    }
    layout_->setColumnStretch(3, 1);
    layout_->setRowStretch(count, 1);
    setWidget(sheet);

    // Tab walks the rows as they read: the bits left to right, then the controls.
    QWidget* prev = nullptr;
    for (int r = 1; r < count; ++r)
        for (QWidget* w : rowWidgets(r)) {
            if (prev) QWidget::setTabOrder(prev, w);
            prev = w;
        }
}

QString RegisterGridView::cellText(int r, int c) const {
    if (r < 0 || r >= rows() || c < 0 || c >= kCols || !cells_[size_t(r)][size_t(c)])
        return QString();
    return cells_[size_t(r)][size_t(c)]->text();
}

void RegisterGridView::setCellText(int r, int c, const QString& text) {
    if (r < 0 || r >= rows() || c < 0 || c >= kCols) return;
    if (QLabel* l = cells_[size_t(r)][size_t(c)]) l->setText(text);
}

void RegisterGridView::setCellBack(int r, int c, quint32 rgb) {
    if (r < 0 || r >= rows() || c < 0 || c >= kCols) return;
    QLabel* l = cells_[size_t(r)][size_t(c)];
    if (!l) return;
    const bool own = rgb != Grid::kDefaultBack;
    if (!own && !l->autoFillBackground()) return;
    QPalette pal = l->palette();
    if (own) pal.setColor(QPalette::Window, QColor::fromRgb(rgb));
    l->setPalette(own ? pal : QPalette());
    l->setAutoFillBackground(own);
}

BitsFieldView* RegisterGridView::bitsRow(int r) const {
    return r > 0 && r < rows() ? bits_[size_t(r)] : nullptr;
}

QList<QWidget*> RegisterGridView::rowWidgets(int r) const {
    QList<QWidget*> out;
    if (BitsFieldView* b = bitsRow(r))
        for (int bit = 7; bit >= 0; --bit)
            out << b->cell(bit);
    if (r > 0 && r < rows()) out << controls_[size_t(r)];
    return out;
}

void registerGridBinder() {
    static const bool once = [] {
        registerWidgetBinder(RegisterGridView::staticMetaObject,
                             [](Control& c, QWidget* w) -> std::optional<Connection> {
                                 auto* grid = dynamic_cast<Grid*>(&c);
                                 auto* view = qobject_cast<RegisterGridView*>(w);
                                 if (!grid || !view) return std::nullopt;
                                 QPointer<RegisterGridView> guard(view);
                                 auto sync = [grid, guard](Prop p) {
                                     if (!guard) return;
                                     auto put = [&](int r, int col) {
                                         if (r >= grid->rows() || col >= grid->cols()) return;
                                         guard->setCellText(r, col, grid->textMatrix(r, col));
                                         guard->setCellBack(r, col, grid->cellBackColor(r, col));
                                     };
                                     if (p == Prop::Cells)
                                         for (int r = 0; r < guard->rows(); ++r)
                                             for (int col = 0; col < RegisterGridView::kCols; ++col)
                                                 put(r, col);
                                     if (p == Prop::Cell)
                                         put(grid->changedRow(), grid->changedCol());
                                     if (p == Prop::Enabled) guard->setEnabled(grid->enabled());
                                     if (p == Prop::Visible) guard->setVisible(grid->visible());
                                     if (p == Prop::ToolTip) guard->setToolTip(grid->toolTipText());
                                 };
                                 for (Prop p : {Prop::Cells, Prop::Enabled, Prop::ToolTip})
                                     sync(p);
                                 if (!grid->visible()) sync(Prop::Visible);
                                 return grid->onPropertyChanged.connect(std::move(sync));
                             });
        return true;
    }();
    (void)once;
}

} // namespace velmorak
