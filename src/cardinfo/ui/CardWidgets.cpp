#include "cardinfo/ui/CardWidgets.h"

#include "cardinfo/UcSwitch.h"
#include "forms/Controls.h"
#include "forms/ui/Binding.h"

#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

namespace velmorak {

namespace {
// Geometry of the switch drawing inside its body, in pixels.
constexpr int kWindowTop = 18;
constexpr int kWindowHeight = 24;
constexpr int kKnobHeight = 9;

// Enabled, visible and tool tip of any control on its widget.
void followBase(Control& c, QWidget* w, Prop p) {
    if (p == Prop::Enabled) w->setEnabled(c.enabled());
    if (p == Prop::Visible) w->setVisible(c.visible());
    if (p == Prop::ToolTip) w->setToolTip(c.toolTipText());
}

template <class Model, class View> void registerBinder() {
    registerWidgetBinder(View::staticMetaObject,
                         [](Control& c, QWidget* w) -> std::optional<Connection> {
                             auto* model = dynamic_cast<Model*>(&c);
                             auto* view = qobject_cast<View*>(w);
                             if (!model || !view) return std::nullopt;
                             view->attach(model);
                             for (Prop p : {Prop::Enabled, Prop::ToolTip})
                                 followBase(c, w, p);
                             if (!c.visible()) w->setVisible(false);
                             QPointer<View> guard(view);
                             Connection base = c.onPropertyChanged.connect([&c, guard](Prop p) {
                                 if (guard) followBase(c, guard, p);
                             });
                             return Connection([guard, base]() mutable {
                                 base.disconnect();
                                 if (guard) guard->attach(nullptr);
                             });
                         });
}
} // namespace

void registerCardWidgetBinders() {
    static const bool once = [] {
        registerBinder<PictureBox, PictureView>();
        registerBinder<Shape, LedView>();
        registerBinder<UcSwitchD10, SwitchView>();
        return true;
    }();
    (void)once;
}

// --- PictureView

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
    registerCardWidgetBinders();
}

PictureView::~PictureView() {
    delete bitmap_;
}

void PictureView::attach(PictureBox* model) {
    link_ = ScopedConnection();
    model_ = model;
    if (!model_) return;
    link_ = model_->onPropertyChanged.connect([this](Prop p) {
        if (p == Prop::Picture) setFile(model_->picture());
    });
    setFile(model_->picture());
}

void PictureView::setFile(const QString& path) {
    file_ = path;
    delete svg_;
    svg_ = nullptr;
    delete bitmap_;
    bitmap_ = nullptr;
    if (!QFileInfo::exists(path)) {
        // A missing picture leaves the place empty.
    } else if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive)) {
        svg_ = new QSvgRenderer(path, this);
        svg_->setAspectRatioMode(Qt::KeepAspectRatio);
        if (!svg_->isValid()) {
            delete svg_;
            svg_ = nullptr;
        }
    } else {
        bitmap_ = new QPixmap(path);
    }
    updateGeometry();
    update();
}

QSize PictureView::sizeHint() const {
    if (svg_) return svg_->defaultSize();
    if (bitmap_ && !bitmap_->isNull()) return bitmap_->size();
    return {120, 80};
}

QRectF PictureView::pictureRect() const {
    QSizeF natural = sizeHint();
    if (natural.isEmpty()) return rect();
    natural.scale(size(), Qt::KeepAspectRatio);
    return {(width() - natural.width()) / 2, (height() - natural.height()) / 2, natural.width(),
            natural.height()};
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    if (svg_)
        svg_->render(&p, pictureRect());
    else if (bitmap_ && !bitmap_->isNull())
        p.drawPixmap(pictureRect(), *bitmap_, bitmap_->rect());
}

void PictureView::mousePressEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton && model_) atBoundary([this] { model_->click(); });
}

void PictureView::showEvent(QShowEvent* e) {
    QWidget::showEvent(e);
    raise();
}

// --- LedView

LedView::LedView(QWidget* parent) : QWidget(parent) {
    registerCardWidgetBinders();
    setMinimumSize(14, 14);
}

void LedView::attach(Shape* model) {
    link_ = ScopedConnection();
    model_ = model;
    if (model_) link_ = model_->onPropertyChanged.connect([this](Prop) { update(); });
    update();
}

void LedView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const int d = std::min(width(), height()) - 2;
    const QRectF r((width() - d) / 2.0, (height() - d) / 2.0, d, d);
    p.setPen(QPen(QColor(0x40, 0x40, 0x40), 1));
    p.setBrush(QColor::fromRgb(model_ ? model_->fillColor() : 0xE0E0E0));
    p.drawEllipse(r);
}

// --- SwitchView

SwitchView::SwitchView(QWidget* parent) : QWidget(parent) {
    registerCardWidgetBinders();
    setAccessibleName(tr("Configuration switch"));
}

void SwitchView::attach(UcSwitchD10* model) {
    link_ = ScopedConnection();
    model_ = model;
    if (model_)
        link_ = model_->onPropertyChanged.connect([this](Prop) {
            updateGeometry();
            update();
        });
    updateGeometry();
    update();
}

QSize SwitchView::sizeHint() const {
    return model_ ? QSize(model_->width(), model_->height()) : QSize(218, 62);
}

QRect SwitchView::bodyRect() const {
    const int m = UcSwitchD10::kMargin;
    return QRect(m, m, sizeHint().width() - 2 * m, sizeHint().height() - 2 * m);
}

QRect SwitchView::directionRect() const {
    const QRect b = bodyRect();
    return QRect(b.left() + 4, b.top() + 3, 34, 12);
}

QRect SwitchView::sliderRect(int i) const {
    const QRect b = bodyRect();
    const UcSwitchSH& row = model_->ucSwitchSH1;
    const int step = row.width() / UcSwitchSH::kSliders;
    // The row begins a quarter step inside the body, so its ten sliders sit in the windows.
    const int x = b.left() + step / 4 + row.sliderLeft(i);
    return QRect(x, b.top() + kWindowTop, step / 2 + 2, kWindowHeight);
}

void SwitchView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRect b = bodyRect();
    p.setPen(QPen(QColor(0x20, 0x20, 0x20), 1));
    p.setBrush(QColor(0xC8, 0x1E, 0x1E));
    p.drawRoundedRect(b, 3, 3);
    // The direction mark: "ON" and an arrow up.
    const QRect d = directionRect();
    p.setPen(Qt::white);
    QFont f = font();
    f.setPixelSize(9);
    f.setBold(true);
    p.setFont(f);
    p.drawText(d.adjusted(12, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("ON"));
    QPainterPath arrow;
    arrow.moveTo(d.left() + 5, d.top() + 1);
    arrow.lineTo(d.left() + 9, d.top() + 7);
    arrow.lineTo(d.left() + 1, d.top() + 7);
    arrow.closeSubpath();
    p.fillPath(arrow, Qt::white);
    if (!model_) return;
    for (int i = 0; i < 10; ++i) {
        const QRect w = sliderRect(i);
        p.setPen(QPen(QColor(0x30, 0x30, 0x30), 1));
        p.setBrush(QColor(0x30, 0x30, 0x30));
        p.drawRect(w);
        const int travel = w.height() - kKnobHeight - 4;
        const int top = model_->ucSwitchSH1.top(i);
        const int y = w.top() + 2 + travel * top / UcSwitchSH::kTopOff;
        p.setBrush(QColor(0xF4, 0xF4, 0xF0));
        p.setPen(Qt::NoPen);
        p.drawRect(QRect(w.left() + 2, y, w.width() - 4, kKnobHeight));
        p.setPen(Qt::white);
        p.drawText(QRect(w.left() - 4, w.bottom() + 1, w.width() + 8, 11), Qt::AlignCenter,
                   QString::number(i + 1));
    }
}

void SwitchView::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton || !model_) return;
    const QPoint at = e->position().toPoint();
    atBoundary([this, at] {
        UcSwitchSH& row = model_->ucSwitchSH1;
        const QRect b = bodyRect();
        const QRect band(b.left() + row.width() / UcSwitchSH::kSliders / 4, b.top() + kWindowTop,
                         row.width(), kWindowHeight);
        if (band.contains(at) && at.x() < b.right()) {
            for (int i = 0; i < 10; ++i)
                if (sliderRect(i).contains(at)) return row.pressSlider(i);
            return row.pressBackground(at.x() - band.left());
        }
        if (directionRect().contains(at)) return model_->pressDirection();
        if (b.contains(at)) return model_->pressBody();
        model_->pressBackground();
    });
}

} // namespace velmorak
