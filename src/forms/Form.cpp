#include "forms/Form.h"

#include "forms/Forms.h"

#include <QRegularExpression>

#include <stdexcept>

namespace velmorak {

Form::Form(QString name) : name_(std::move(name)), caption_(name_) {}

Form::~Form() {
    detachView();
}

void Form::setCaption(const QString& c) {
    if (caption_ == c) return;
    caption_ = c;
    onPropertyChanged(Prop::Caption);
}

void Form::move(int left, int top) {
    move(left, top, width_, height_);
}

void Form::move(int left, int top, int width, int height) {
    if (width < 0 || height < 0)
        throw InvalidPropertyValue(QStringLiteral("size %1x%2").arg(width).arg(height));
    bool resized = width != width_ || height != height_;
    if (!resized && left == left_ && top == top_) return;
    left_ = left;
    top_ = top;
    width_ = width;
    height_ = height;
    onPropertyChanged(Prop::Geometry);
    if (resized) {
        const HandlerScope running;
        formResize();
    }
}

void Form::setEnabled(bool on) {
    if (enabled_ == on) return;
    enabled_ = on;
    onPropertyChanged(Prop::Enabled);
}

void Form::setWindowState(WindowState s) {
    if (state_ == s) return;
    state_ = s;
    onPropertyChanged(Prop::WindowState);
}

void Form::setKeyPreview(bool on) {
    if (keyPreview_ == on) return;
    keyPreview_ = on;
    onPropertyChanged(Prop::KeyPreview);
}

void Form::claim(const QString& name) {
    if (byName_.contains(name) || arraysByName_.contains(name))
        throw std::logic_error(("control added twice: " + name).toStdString());
}

void Form::attach(Control& c) {
    c.setOwner(this);
    if (auto* t = dynamic_cast<Timer*>(&c)) t->setHost(host_);
    if (auto* o = dynamic_cast<TimerOwner*>(&c))
        for (Timer* t : o->timers())
            t->setHost(host_);
    onControlAdded(c);
}

RunTimeError Form::missing(const QString& name) const {
    return RunTimeError(730, QStringLiteral("Control '%1' not found on %2").arg(name, name_));
}

Control* Form::find(const QString& name) const {
    if (auto* c = byName_.value(name)) return c;
    static const QRegularExpression element(QStringLiteral("^(.+)\\((-?\\d+)\\)$"));
    auto m = element.match(name);
    if (!m.hasMatch()) return nullptr;
    auto* a = arraysByName_.value(m.captured(1));
    return a ? a->element(m.captured(2).toInt()) : nullptr;
}

std::vector<Control*> Form::controls() const {
    std::vector<Control*> out;
    for (const auto& c : singles_)
        out.push_back(c.get());
    for (const auto& a : arrays_)
        for (Control* c : a->elements())
            out.push_back(c);
    return out;
}

void Form::load() {
    if (loaded_ || released_) return;
    const HandlerScope running;
    loaded_ = true;
    formLoad();
}

void Form::reload() {
    if (!loaded_) return load();
    if (released_) return;
    const HandlerScope running;
    formLoad();
}

void Form::show(bool modal) {
    if (released_) return;
    const HandlerScope running;
    load();
    if (!loaded_) return; // unloaded by its own load
    if (!visible_) {
        visible_ = true;
        onPropertyChanged(Prop::Visible);
    }
    if (!view_ && viewFactory_) view_ = viewFactory_(*this);
    formActivate();
    if (view_ && loaded_) view_->show(modal);
}

void Form::hide() {
    if (!visible_) return;
    visible_ = false;
    onPropertyChanged(Prop::Visible);
    if (view_) view_->hide();
}

bool Form::unload() {
    if (forms_) return forms_->unload(name_);
    return unloadHere();
}

bool Form::unloadHere() {
    if (!loaded_) return true;
    bool cancel = false;
    {
        const HandlerScope running;
        formUnload(cancel);
    }
    if (cancel) return false;
    loaded_ = false;
    if (visible_) {
        visible_ = false;
        onPropertyChanged(Prop::Visible);
    }
    detachView();
    return true;
}

void Form::detachView() {
    if (auto* v = std::exchange(view_, nullptr)) v->dispose();
}

bool Form::previewKey(int key, Qt::KeyboardModifiers mods) {
    if (!keyPreview_ || !loaded_) return false;
    const HandlerScope running;
    keyDown(key, mods);
    return key == 0;
}

void Form::setHost(Host* h) {
    host_ = h;
    for (Control* c : controls()) {
        if (auto* t = dynamic_cast<Timer*>(c)) t->setHost(h);
        if (auto* o = dynamic_cast<TimerOwner*>(c))
            for (Timer* t : o->timers())
                t->setHost(h);
    }
}

void Form::pollTimers(qint64 now) {
    for (Control* c : controls()) {
        if (!loaded_) return;
        if (auto* t = dynamic_cast<Timer*>(c)) t->poll(now);
        if (auto* o = dynamic_cast<TimerOwner*>(c))
            for (Timer* t : o->timers())
                if (loaded_) t->poll(now);
    }
}

} // namespace velmorak
