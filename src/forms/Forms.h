#pragma once

#include "forms/Form.h"

#include <QStringList>

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <vector>

namespace velmorak {

class Host;

// The open windows, by name, in load order. A window is made by its registered factory when
// first loaded; unloading frees it once no window handler is on the stack any more (collect(),
// pollTimers() and the destructor free what was unloaded).
class Forms {
  public:
    using Factory = std::function<std::unique_ptr<Form>()>;

    explicit Forms(Host* host = nullptr) : host_(host) {}
    ~Forms();
    Forms(const Forms&) = delete;
    Forms& operator=(const Forms&) = delete;

    void registerForm(const QString& name, Factory make);
    template <class T> void registerForm(const QString& name) {
        registerForm(name, [] { return std::make_unique<T>(); });
    }
    bool isRegistered(const QString& name) const { return factories_.count(name) != 0; }

    // Makes the window and runs its formLoad, once. Throws RunTimeError 424 for an unknown name.
    Form& load(const QString& name);
    template <class T> T& load(const QString& name) { return cast<T>(load(name)); }
    Form& show(const QString& name, bool modal = false);
    // nullptr when not loaded.
    Form* get(const QString& name) const;
    template <class T> T* get(const QString& name) const { return dynamic_cast<T*>(get(name)); }
    bool isLoaded(const QString& name) const { return get(name) != nullptr; }
    // Runs formUnload; false when the window cancelled. True when it was not loaded.
    bool unload(const QString& name);
    // Unloads every window but those named, latest loaded first; false if any cancelled.
    bool unloadAllBut(std::initializer_list<QString> keep);
    bool unloadAll() { return unloadAllBut({}); }

    // Open windows in load order.
    QStringList names() const;
    std::vector<Form*> forms() const;
    int count() const { return int(open_.size()); }

    // Used for every window shown from now on; headless runs have none.
    void setViewFactory(ViewFactory f) { viewFactory_ = std::move(f); }
    Host* host() const { return host_; }
    // Ticks the timers of every open window at the host's time (or at `now`).
    void pollTimers();
    void pollTimers(qint64 now);
    void collect();

    Event<Form&> onLoaded;
    Event<const QString&> onUnloaded;

  private:
    template <class T> static T& cast(Form& f) {
        auto* t = dynamic_cast<T*>(&f);
        if (!t) throw RunTimeError(13, QStringLiteral("Type mismatch: ") + f.name());
        return *t;
    }
    Host* host_;
    std::map<QString, Factory> factories_;
    std::vector<std::unique_ptr<Form>> open_;
    std::vector<std::unique_ptr<Form>> unloaded_;
    ViewFactory viewFactory_;
};

} // namespace velmorak
