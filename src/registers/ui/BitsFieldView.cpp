#include "registers/ui/BitsFieldView.h"

#include "forms/ui/Binding.h"
#include "registers/UcBitsField.h"

#include "forms/Boundary.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace velmorak {

namespace {

constexpr int kCellWidth = 16;
constexpr int kCellHeight = 20;
constexpr int kNibbleGap = 6;

QColor backColor(UcBitsField::CellBack back, const QPalette& pal) {
    QColor window = pal.color(QPalette::Base);
    QColor face = pal.color(QPalette::Button);
    // Some themes make the two almost alike; the states must stay apart.
    if (std::abs(face.lightness() - window.lightness()) < 40)
        face = window.lightness() > 128 ? window.darker(125) : window.lighter(160);
    switch (back) {
    case UcBitsField::CellBack::Hidden:
        return QColor::fromRgb(UcBitsField::kHiddenRgb);
    case UcBitsField::CellBack::ButtonFace:
        return face;
    case UcBitsField::CellBack::Window:
        return window;
    case UcBitsField::CellBack::ReadBack:
        return QColor::fromRgb(UcBitsField::kReadBackRgb);
    }
    return window;
}

} // namespace

BitsFieldView::BitsFieldView(QWidget* parent) : QWidget(parent) {
    registerBitsFieldBinder();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2, 1, 2, 1);
    row->setSpacing(1);
    for (int bit = 7; bit >= 0; --bit) {
        auto* c = new QPushButton(QStringLiteral("0"), this);
        c->setFixedSize(kCellWidth, kCellHeight);
        c->setFocusPolicy(Qt::TabFocus);
        connect(c, &QPushButton::clicked, this, guarded([this, bit] {
                    if (model_) model_->click(bit);
                }));
        cells_[size_t(bit)] = c;
        row->addWidget(c);
        if (bit == 4) row->addSpacing(kNibbleGap);
    }
    row->addSpacing(6);
    fsum_ = new QLabel(this);
    hex_ = new QLabel(this);
    for (QLabel* l : {fsum_, hex_}) {
        l->setTextFormat(Qt::PlainText);
        l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        row->addWidget(l);
    }
    fsum_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("-32768")));
    hex_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("FFFFh")) + 4);
    row->addStretch();
    setRowName(tr("Value"));
    sync();
}

void BitsFieldView::setRowName(const QString& name) {
    setAccessibleName(name);
    for (int bit = 0; bit < 8; ++bit)
        cells_[size_t(bit)]->setAccessibleName(tr("%1, bit %2").arg(name).arg(bit));
}

BitsFieldView::~BitsFieldView() = default;

void BitsFieldView::attach(UcBitsField* model) {
    link_ = ScopedConnection();
    model_ = model;
    if (model_) link_ = model_->onPropertyChanged.connect([this](Prop) { sync(); });
    sync();
}

void BitsFieldView::detach() {
    attach(nullptr);
}

void BitsFieldView::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    if (model_) model_->show();
}

void BitsFieldView::changeEvent(QEvent* e) {
    QWidget::changeEvent(e);
    if (e->type() == QEvent::PaletteChange) sync();
}

void BitsFieldView::sync() {
    for (int bit = 0; bit < 8; ++bit) {
        QPushButton* c = cells_[size_t(bit)];
        const auto back = model_ ? model_->txtBitBack(bit) : UcBitsField::CellBack::ButtonFace;
        const bool on = model_ ? model_->txtBitEnabled(bit) : false;
        c->setText(model_ ? model_->txtBit(bit) : QStringLiteral("0"));
        c->setEnabled(on);
        const QColor fg = on ? palette().color(QPalette::Text) : QColor(0x40, 0x40, 0x40);
        c->setStyleSheet(
            QStringLiteral("QPushButton { background: %1; color: %2; border: 1px "
                           "solid #606060; padding: 0; } QPushButton:focus { border: 2px solid "
                           "palette(highlight); }")
                .arg(backColor(back, palette()).name(), fg.name()));
    }
    const bool sums = model_ ? model_->FSum_Visible() : true;
    fsum_->setText(model_ ? model_->lblFSum() : QString());
    hex_->setText(model_ ? model_->lblHex() : QString());
    fsum_->setVisible(sums);
    hex_->setVisible(sums);
    if (model_) {
        setEnabled(model_->enabled());
        setToolTip(model_->toolTipText());
        if (parentWidget() && isHidden() == model_->visible()) setVisible(model_->visible());
    }
}

void registerBitsFieldBinder() {
    static const bool once = [] {
        registerWidgetBinder(BitsFieldView::staticMetaObject,
                             [](Control& c, QWidget* w) -> std::optional<Connection> {
                                 auto* model = dynamic_cast<UcBitsField*>(&c);
                                 auto* view = qobject_cast<BitsFieldView*>(w);
                                 if (!model || !view) return std::nullopt;
                                 view->attach(model);
                                 QPointer<BitsFieldView> guard(view);
                                 return Connection([guard] {
                                     if (guard) guard->detach();
                                 });
                             });
        return true;
    }();
    (void)once;
}

} // namespace velmorak
