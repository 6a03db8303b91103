#include "cardinfo/UcSwitch.h"

namespace velmorak {

namespace {
void checkIndex(int index) {
    if (index < 0 || index >= UcSwitchSH::kSliders)
        throw RunTimeError(
            340, QStringLiteral("Control array element 'picSwitch(%1)' doesn't exist").arg(index));
}
} // namespace

void UcSwitchSH::SetSwitch(qint16 index, bool value) {
    checkIndex(index);
    const int t = value ? kTopOn : kTopOff;
    if (top_[size_t(index)] == t) return;
    top_[size_t(index)] = t;
    changed(Prop::Value);
}

bool UcSwitchSH::SetSwitch(qint16 index) const {
    checkIndex(index);
    return top_[size_t(index)] == kTopOn;
}

void UcSwitchSH::resize(int width) {
    width_ = width;
    const int step = width / kSliders;
    for (int i = 0; i < kSliders; ++i)
        left_[size_t(i)] = i * step;
    changed(Prop::Geometry);
}

void UcSwitchSH::pressSlider(int index) {
    checkIndex(index);
    zone_ = qint16(index);
    onClick();
}

void UcSwitchSH::pressBackground(double x) {
    const int part = width_ / kSliders;
    // A control narrower than its twelve parts has no zones to tell apart.
    zone_ = part > 0 ? qint16(int(x) / part) : 0;
    onClick();
}

UcSwitchD10::UcSwitchD10(QString name, int index)
    : Control(std::move(name), index), ucSwitchSH1(QStringLiteral("ucSwitchSH1")) {
    ucSwitchSH1.onPropertyChanged.connect([this](Prop p) { changed(p); });
}

void UcSwitchD10::resize(int bodyWidth, int bodyHeight) {
    width_ = bodyWidth + 2 * kMargin;
    height_ = bodyHeight + 2 * kMargin;
    ucSwitchSH1.resize(qRound(bodyWidth / 10.5 * 12));
    changed(Prop::Geometry);
}

} // namespace velmorak
