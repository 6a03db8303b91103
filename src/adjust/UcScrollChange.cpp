#include "adjust/UcScrollChange.h"

#include <QDir>

#include <cmath>

namespace velmorak {

namespace {
// A number as Str shows it: a leading blank when it is not negative.
QString strOf(qint64 n) {
    return n < 0 ? QString::number(n) : QStringLiteral(" ") + QString::number(n);
}
} // namespace

UcScrollChange::UcScrollChange(QString name, int index)
    : Control(std::move(name), index), tmScrl(QStringLiteral("tmScrl")),
      lblValue(QStringLiteral("lblValue")), shpLeft(QStringLiteral("shpLeft")),
      imLeft(QStringLiteral("imLeft")), imRite(QStringLiteral("imRite")) {
    tmScrl.setEnabled(false);
    tmScrl.setInterval(kFirstInterval);
    shpLeft.setFillColor(0xC0C0C0);
    tmScrl.onTick.connect([this] { tick(); });
    for (Control* part : std::initializer_list<Control*>{&lblValue, &shpLeft, &imLeft, &imRite})
        part->onPropertyChanged.connect([this](Prop p) { changed(p); });
}

void UcScrollChange::setValue(qint16 v) {
    value_ = v < 0 ? qint16(0) : v;
    fillWidth_ = stepWidth_ * value_;
    if (percent_) {
        const int span = max_ - min_;
        if (span == 0) throw RunTimeError(11, QStringLiteral("Division by zero"));
        lblValue.setCaption(strOf(qint64(std::floor(double(value_) / span * 100))));
    } else {
        lblValue.setCaption(strOf(value_));
    }
    changed(Prop::Value);
}

void UcScrollChange::setMax(qint16 v) {
    max_ = v;
    measure();
}

void UcScrollChange::setMin(qint16 v) {
    min_ = v;
    measure();
}

void UcScrollChange::setPercent(bool on) {
    percent_ = on;
}

// The step width from the track; a span of 0 leaves it as it was.
void UcScrollChange::measure() {
    const int span = max_ - min_;
    if (span != 0) stepWidth_ = int(std::nearbyint(double(trackWidth_) / span));
}

void UcScrollChange::ChangeR() {
    const int n = value_ + oneStep_;
    if (n < max_ - min_) setValue(qint16(n));
}

void UcScrollChange::ChangeL() {
    const int n = value_ - oneStep_;
    if (min_ + n > min_) setValue(qint16(n));
}

void UcScrollChange::setPictureFolder(const QString& folder) {
    folder_ = folder;
    imLeft.setPicture(pictureFile("ARRL.ICO"));
    imRite.setPicture(pictureFile("ARRR.ICO"));
}

QString UcScrollChange::pictureFile(const char* picture) const {
    return QDir(folder_).filePath(QString::fromLatin1(picture));
}

void UcScrollChange::resize(int width, int height) {
    width_ = width;
    height_ = height;
    rightLeft_ = width - kRightMargin - height;
    labelLeft_ = rightLeft_ - kLabelGap - kLabelWidth;
    trackWidth_ = std::max(0, labelLeft_ - trackLeft());
    measure();
    fillWidth_ = stepWidth_ * value_;
    changed(Prop::Geometry);
}

void UcScrollChange::arrowDown(int state, Image& arrow, const char* picture) {
    arrow.setPicture(pictureFile(picture));
    if (state == 1)
        ChangeL();
    else
        ChangeR();
    tmScrl.setEnabled(true);
    state_ = state;
}

void UcScrollChange::arrowUp(Image& arrow, const char* picture) {
    arrow.setPicture(pictureFile(picture));
    tmScrl.setEnabled(false);
    tmScrl.setInterval(kFirstInterval);
    state_ = 0;
}

void UcScrollChange::leftDown() {
    if (usable()) arrowDown(1, imLeft, "ARRLD.ICO");
}
void UcScrollChange::leftUp() {
    if (usable() || state_ != 0) arrowUp(imLeft, "ARRL.ICO");
}
void UcScrollChange::leftClick() {
    if (usable()) onClickLeft();
}
void UcScrollChange::rightDown() {
    if (usable()) arrowDown(2, imRite, "ARRRD.ICO");
}
void UcScrollChange::rightUp() {
    if (usable() || state_ != 0) arrowUp(imRite, "ARRR.ICO");
}
void UcScrollChange::rightClick() {
    if (usable()) onClickRight();
}

void UcScrollChange::pressLeft() {
    leftDown();
    leftUp();
    leftClick();
}

void UcScrollChange::pressRight() {
    rightDown();
    rightUp();
    rightClick();
}

void UcScrollChange::tick() {
    tmScrl.setEnabled(false);
    tmScrl.setInterval(kRepeatInterval);
    if (state_ == 1) {
        ChangeL();
        onClickLeft();
        tmScrl.setEnabled(true);
    } else if (state_ == 2) {
        ChangeR();
        onClickRight();
        tmScrl.setEnabled(true);
    }
}

} // namespace velmorak
