#include "forms/Controls.h"

#include "forms/Form.h"
#include "platform/Host.h"

namespace velmorak {

namespace {
template <class T> bool assign(T& field, const T& v) {
    if (field == v) return false;
    field = v;
    return true;
}
} // namespace

void Button::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}
void Button::setDefault(bool on) {
    if (assign(default_, on)) changed(Prop::Default);
}
void Button::setCancel(bool on) {
    if (assign(cancel_, on)) changed(Prop::Default);
}
void Button::click() {
    if (enabled() && visible()) onClick();
}

void Label::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}
void Frame::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}
void Shape::setFillColor(quint32 rgb) {
    if (assign(fill_, rgb)) changed(Prop::Value);
}
void PictureBox::setPicture(const QString& path) {
    if (assign(picture_, path)) changed(Prop::Picture);
}

// --- TextBox

void TextBox::setText(const QString& t) {
    if (text_ == t) return;
    text_ = t;
    selStart_ = std::min(selStart_, int(text_.size()));
    selLength_ = std::min(selLength_, int(text_.size()) - selStart_);
    changed(Prop::Text);
    onChange();
}

void TextBox::setLocked(bool on) {
    if (assign(locked_, on)) changed(Prop::Locked);
}

void TextBox::setMaxLength(int n) {
    if (n < 0) throw InvalidPropertyValue(QStringLiteral("MaxLength %1").arg(n));
    if (assign(maxLength_, n)) changed(Prop::MaxLength);
}

void TextBox::setSelStart(int s) {
    if (s < 0) throw InvalidPropertyValue(QStringLiteral("SelStart %1").arg(s));
    s = std::min(s, int(text_.size()));
    bool c = assign(selStart_, s);
    c |= assign(selLength_, 0);
    if (c) changed(Prop::Selection);
}

void TextBox::setSelLength(int n) {
    if (n < 0) throw InvalidPropertyValue(QStringLiteral("SelLength %1").arg(n));
    n = std::min(n, int(text_.size()) - selStart_);
    if (assign(selLength_, n)) changed(Prop::Selection);
}

void TextBox::setSelText(const QString& t) {
    QString next = text_;
    next.replace(selStart_, selLength_, t);
    int caret = selStart_ + int(t.size());
    userEdit(next, caret);
}

void TextBox::userEdit(const QString& t, int cursor) {
    int caret = cursor < 0 ? int(t.size()) : std::min(cursor, int(t.size()));
    bool textChanged = text_ != t;
    text_ = t;
    selStart_ = caret;
    selLength_ = 0;
    if (textChanged) changed(Prop::Text);
    changed(Prop::Selection);
    if (textChanged) onChange();
}

void TextBox::keyPress(int& keyAscii) {
    onKeyPress(keyAscii);
    if (keyAscii == 0 || locked_ || !enabled()) return;
    if (keyAscii == 8) {
        if (selLength_ > 0) {
            setSelText(QString());
        } else if (selStart_ > 0) {
            QString next = text_;
            next.remove(selStart_ - 1, 1);
            userEdit(next, selStart_ - 1);
        }
        return;
    }
    if (keyAscii < 32) return;
    if (maxLength_ > 0 && text_.size() - selLength_ >= maxLength_) return;
    setSelText(QString(QChar(keyAscii)));
}

void TextBox::type(const QString& keys) {
    for (QChar c : keys) {
        int k = c.unicode();
        keyPress(k);
    }
}

// --- CheckBox, OptionButton

void CheckBox::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}

void CheckBox::setValue(int v) {
    if (v < 0 || v > 2) throw InvalidPropertyValue(QStringLiteral("CheckBox value %1").arg(v));
    if (!assign(value_, v)) return;
    changed(Prop::Value);
    onClick();
}

void CheckBox::click() {
    if (enabled() && visible()) setValue(value_ == 0 ? 1 : 0);
}

void OptionButton::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}

void OptionButton::setValue(bool on) {
    if (!assign(value_, on)) return;
    if (on && owner()) {
        for (Control* c : owner()->controls()) {
            auto* o = dynamic_cast<OptionButton*>(c);
            if (o && o != this && o->container == container && o->value_) {
                o->value_ = false;
                o->changed(Prop::Value);
            }
        }
    }
    changed(Prop::Value);
    if (on) onClick();
}

void OptionButton::click() {
    if (enabled() && visible()) setValue(true);
}

// --- MenuItem

void MenuItem::setCaption(const QString& c) {
    if (assign(caption_, c)) changed(Prop::Caption);
}

QString MenuItem::plainCaption() const {
    QString out;
    for (qsizetype i = 0; i < caption_.size(); ++i) {
        if (caption_[i] == u'&' && i + 1 < caption_.size()) ++i;
        out += caption_[i];
    }
    return out;
}

void MenuItem::setChecked(bool on) {
    if (assign(checked_, on)) changed(Prop::Checked);
}

void MenuItem::addChild(MenuItem& child) {
    if (child.parent_) std::erase(child.parent_->children_, &child);
    child.parent_ = this;
    children_.push_back(&child);
}

void MenuItem::click() {
    for (MenuItem* m = this; m; m = m->parent_)
        if (!m->enabled() || !m->visible()) return;
    onClick();
}

// --- StatusBar, ProgressBar

void StatusBar::setPanelCount(int n) {
    if (n < 0) throw InvalidPropertyValue(QStringLiteral("panel count %1").arg(n));
    if (n == panels_.size()) return;
    while (panels_.size() < n)
        panels_ << QString();
    while (panels_.size() > n)
        panels_.removeLast();
    changed(Prop::Panels);
}

QString StatusBar::panelText(int panel) const {
    if (panel < 1 || panel > panels_.size())
        throw RunTimeError(35600, QStringLiteral("Index out of bounds"));
    return panels_[panel - 1];
}

void StatusBar::setPanelText(int panel, const QString& t) {
    if (panel < 1) throw RunTimeError(35600, QStringLiteral("Index out of bounds"));
    if (panel <= panels_.size() && panels_[panel - 1] == t) return;
    while (panels_.size() < panel)
        panels_ << QString();
    panels_[panel - 1] = t;
    changed(Prop::Panels);
}

void ProgressBar::setMin(int v) {
    if (v > max_) throw InvalidPropertyValue(QStringLiteral("Min %1 above Max").arg(v));
    if (!assign(min_, v)) return;
    value_ = std::max(value_, min_);
    changed(Prop::Range);
}

void ProgressBar::setMax(int v) {
    if (v < min_) throw InvalidPropertyValue(QStringLiteral("Max %1 below Min").arg(v));
    if (!assign(max_, v)) return;
    value_ = std::min(value_, max_);
    changed(Prop::Range);
}

void ProgressBar::setValue(int v) {
    if (v < min_ || v > max_) throw InvalidPropertyValue(QStringLiteral("Value %1").arg(v));
    if (assign(value_, v)) changed(Prop::Value);
}

// --- Timer

Timer::Timer(QString name, int index) : Control(std::move(name), index) {
    onPropertyChanged.connect([this](Prop p) {
        if (p == Prop::Enabled) rearm();
    });
}

void Timer::setInterval(int ms) {
    if (ms < 0) throw InvalidPropertyValue(QStringLiteral("Interval %1").arg(ms));
    if (!assign(interval_, ms)) return;
    rearm();
    changed(Prop::Interval);
}

void Timer::setHost(const Host* h) {
    host_ = h;
    rearm();
}

void Timer::rearm() {
    armed_ = host_ != nullptr;
    if (host_) armedAt_ = host_->now();
}

void Timer::poll(qint64 now) {
    if (!enabled() || interval_ <= 0) return;
    if (!armed_) {
        armed_ = true;
        armedAt_ = now;
        return;
    }
    if (now - armedAt_ < interval_) return;
    armedAt_ = now;
    onTick();
}

} // namespace velmorak
