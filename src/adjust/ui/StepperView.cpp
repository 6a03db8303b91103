#include "adjust/ui/StepperView.h"

#include "adjust/UcScrollChange.h"
#include "forms/Boundary.h"
#include "forms/ui/Binding.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace velmorak {

namespace {
void followBase(Control& c, QWidget* w, Prop p) {
    if (p == Prop::Enabled) w->setEnabled(c.enabled());
    if (p == Prop::Visible) w->setVisible(c.visible());
    if (p == Prop::ToolTip) w->setToolTip(c.toolTipText());
}

void drawPicture(QPainter& p, const QString& file, const QRect& r) {
    const QPixmap pix(file);
    if (!pix.isNull()) p.drawPixmap(r, pix);
}
} // namespace

void registerAdjustWidgetBinders() {
    static const bool once = [] {
        registerWidgetBinder(StepperView::staticMetaObject,
                             [](Control& c, QWidget* w) -> std::optional<Connection> {
                                 auto* model = dynamic_cast<UcScrollChange*>(&c);
                                 auto* view = qobject_cast<StepperView*>(w);
                                 if (!model || !view) return std::nullopt;
                                 view->attach(model);
                                 for (Prop p : {Prop::Enabled, Prop::ToolTip})
                                     followBase(c, w, p);
                                 if (!c.visible()) w->setVisible(false);
                                 QPointer<StepperView> guard(view);
                                 Connection base = c.onPropertyChanged.connect([&c, guard](Prop p) {
                                     if (guard) followBase(c, guard, p);
                                 });
                                 return Connection([guard, base]() mutable {
                                     base.disconnect();
                                     if (guard) guard->attach(nullptr);
                                 });
                             });
        return true;
    }();
    (void)once;
}

StepperView::StepperView(QWidget* parent) : QWidget(parent) {
    registerAdjustWidgetBinders();
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void StepperView::attach(UcScrollChange* model) {
    link_ = ScopedConnection();
    model_ = model;
    held_ = 0;
    if (model_) {
        link_ = model_->onPropertyChanged.connect([this](Prop) { update(); });
        const QSize s = size();
        atBoundary([this, s] { model_->resize(s.width(), s.height()); });
    }
    update();
}

QRect StepperView::leftArrowRect() const {
    return {0, 0, height(), height()};
}

QRect StepperView::rightArrowRect() const {
    if (!model_) return {width() - height(), 0, height(), height()};
    return {model_->rightArrowLeft(), 0, height(), height()};
}

void StepperView::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    if (!model_) return;
    const QSize s = size();
    atBoundary([this, s] {
        if (model_) model_->resize(s.width(), s.height());
    });
}

void StepperView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    if (!model_) return;
    const int h = height();
    const QRect track(model_->trackLeft(), 2, model_->trackWidth(), h - 4);
    p.setPen(QPen(palette().color(QPalette::Mid), 1));
    p.setBrush(palette().color(QPalette::Base));
    p.drawRect(track.adjusted(0, 0, -1, -1));
    const QRect fill(track.left() + 1, track.top() + 1, model_->fillWidth(), track.height() - 2);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor::fromRgb(model_->ColorChange()));
    p.drawRect(fill);
    p.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    p.drawText(QRect(model_->labelLeft(), 0, UcScrollChange::kLabelWidth, h),
               Qt::AlignRight | Qt::AlignVCenter, model_->lblValue.caption());
    drawPicture(p, model_->imLeft.picture(), leftArrowRect());
    drawPicture(p, model_->imRite.picture(), rightArrowRect());
    if (hasFocus()) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        p.setBrush(Qt::NoBrush);
        p.drawRect(track.adjusted(1, 1, -2, -2));
    }
}

void StepperView::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton || !model_) return;
    const QPoint at = e->position().toPoint();
    if (leftArrowRect().contains(at)) {
        held_ = 1;
        atBoundary([this] { model_->leftDown(); });
    } else if (rightArrowRect().contains(at)) {
        held_ = 2;
        atBoundary([this] { model_->rightDown(); });
    }
}

void StepperView::mouseReleaseEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton) release();
}

// Up, then the click that follows it.
void StepperView::release() {
    const int held = std::exchange(held_, 0);
    if (!model_ || held == 0) return;
    atBoundary([this, held] {
        if (held == 1) {
            model_->leftUp();
            if (model_) model_->leftClick();
        } else {
            model_->rightUp();
            if (model_) model_->rightClick();
        }
    });
}

void StepperView::focusOutEvent(QFocusEvent* e) {
    QWidget::focusOutEvent(e);
    // A press that loses its window (a message box) ends its repeat there.
    release();
    update();
}

void StepperView::keyPressEvent(QKeyEvent* e) {
    if (!model_ || (e->key() != Qt::Key_Left && e->key() != Qt::Key_Right)) {
        QWidget::keyPressEvent(e);
        return;
    }
    const bool left = e->key() == Qt::Key_Left;
    atBoundary([this, left] {
        if (left)
            model_->pressLeft();
        else
            model_->pressRight();
    });
}

} // namespace velmorak
