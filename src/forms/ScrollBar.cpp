#include "forms/ScrollBar.h"

#include <algorithm>

namespace velmorak {

void ScrollBar::setMin(int v) {
    if (min_ == v) return;
    min_ = v;
    rangeChanged();
}

void ScrollBar::setMax(int v) {
    if (max_ == v) return;
    max_ = v;
    rangeChanged();
}

void ScrollBar::rangeChanged() {
    changed(Prop::Range);
    int c = clamp(value_);
    if (c != value_) setValue(c);
}

void ScrollBar::setValue(int v) {
    if (!contains(v))
        throw InvalidPropertyValue(QStringLiteral("%1.Value = %2 outside %3..%4")
                                       .arg(fullName())
                                       .arg(v)
                                       .arg(min_)
                                       .arg(max_));
    if (value_ == v) return;
    value_ = v;
    changed(Prop::Value);
    onChange();
}

void ScrollBar::setSmallChange(int v) {
    if (v < 1) throw InvalidPropertyValue(QStringLiteral("SmallChange %1").arg(v));
    if (small_ == v) return;
    small_ = v;
    changed(Prop::Range);
}

void ScrollBar::setLargeChange(int v) {
    if (v < 1) throw InvalidPropertyValue(QStringLiteral("LargeChange %1").arg(v));
    if (large_ == v) return;
    large_ = v;
    changed(Prop::Range);
}

void ScrollBar::userSetValue(int v) {
    if (enabled()) setValue(clamp(v));
}

void ScrollBar::step(int delta) {
    if (!enabled()) return;
    long long target = (long long)value_ + (min_ <= max_ ? delta : -(long long)delta);
    target = std::clamp<long long>(target, lowest(), highest());
    setValue(int(target));
}

void ScrollBar::stepSmall(int steps) {
    step(steps * small_);
}
void ScrollBar::stepLarge(int steps) {
    step(steps * large_);
}

void ScrollBar::beginDrag() {
    if (!enabled()) return;
    dragging_ = true;
    dragStart_ = value_;
}

void ScrollBar::dragTo(int v) {
    if (!dragging_) beginDrag();
    if (!dragging_) return;
    v = clamp(v);
    if (v == value_) return;
    value_ = v;
    changed(Prop::Value);
    onScroll();
}

void ScrollBar::endDrag() {
    if (!dragging_) return;
    dragging_ = false;
    if (value_ != dragStart_) onChange();
}

} // namespace velmorak
