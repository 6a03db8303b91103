#include "forms/Forms.h"

#include "platform/Host.h"

#include <algorithm>

namespace velmorak {

Forms::~Forms() {
    for (auto& f : open_)
        f->detachView();
    open_.clear();
    unloaded_.clear();
}

void Forms::registerForm(const QString& name, Factory make) {
    factories_[name] = std::move(make);
}

Form* Forms::get(const QString& name) const {
    for (const auto& f : open_)
        if (f->name() == name) return f.get();
    return nullptr;
}

Form& Forms::load(const QString& name) {
    if (Form* f = get(name)) return *f;
    auto it = factories_.find(name);
    if (it == factories_.end())
        throw RunTimeError(424, QStringLiteral("Object required: no window ") + name);
    auto made = it->second();
    Form& f = *made;
    f.name_ = name;
    f.forms_ = this;
    f.setHost(host_);
    if (viewFactory_ && !f.viewFactory_) f.viewFactory_ = viewFactory_;
    open_.push_back(std::move(made));
    try {
        f.load();
    } catch (...) {
        std::erase_if(open_, [&](const auto& p) { return p.get() == &f; });
        throw;
    }
    onLoaded(f);
    return f;
}

Form& Forms::show(const QString& name, bool modal) {
    Form& f = load(name);
    f.show(modal);
    return f;
}

bool Forms::unload(const QString& name) {
    auto it =
        std::find_if(open_.begin(), open_.end(), [&](const auto& p) { return p->name() == name; });
    if (it == open_.end()) return true;
    Form* f = it->get();
    if (!f->unloadHere()) return false;
    // The unload hook may have loaded or unloaded others; find the form again.
    it = std::find_if(open_.begin(), open_.end(), [&](const auto& p) { return p.get() == f; });
    if (it != open_.end()) {
        f->released_ = true;
        unloaded_.push_back(std::move(*it));
        open_.erase(it);
    }
    onUnloaded(name);
    return true;
}

bool Forms::unloadAllBut(std::initializer_list<QString> keep) {
    bool all = true;
    QStringList order = names();
    for (auto i = order.size() - 1; i >= 0; --i) {
        if (std::find(keep.begin(), keep.end(), order[i]) != keep.end()) continue;
        all &= unload(order[i]);
    }
    return all;
}

QStringList Forms::names() const {
    QStringList out;
    for (const auto& f : open_)
        out << f->name();
    return out;
}

std::vector<Form*> Forms::forms() const {
    std::vector<Form*> out;
    for (const auto& f : open_)
        out.push_back(f.get());
    return out;
}

void Forms::pollTimers() {
    if (host_) pollTimers(host_->now());
}

void Forms::collect() {
    // A handler on the stack may belong to an unloaded window.
    if (HandlerScope::depth() == 0) unloaded_.clear();
}

void Forms::pollTimers(qint64 now) {
    collect();
    for (Form* f : forms())
        if (std::any_of(open_.begin(), open_.end(), [f](const auto& p) { return p.get() == f; }))
            f->pollTimers(now);
}

} // namespace velmorak
