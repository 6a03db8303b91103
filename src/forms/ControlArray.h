#pragma once

#include "forms/Control.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace velmorak {

// What a Form needs of any control array.
class ControlArrayBase {
  public:
    explicit ControlArrayBase(QString name) : name_(std::move(name)) {}
    virtual ~ControlArrayBase() = default;
    const QString& name() const { return name_; }
    virtual Control* element(int index) const = 0;
    virtual std::vector<Control*> elements() const = 0;
    virtual Control& loadElement(int index) = 0;

    // Set by the owning form: told of each element loaded and before each one unloaded.
    std::function<void(Control&)> added;
    std::function<void(Control&)> removing;

  private:
    QString name_;
};

// Like controls under one name, addressed by sparse integer indexes; iterates in index order.
template <class T> class ControlArray : public ControlArrayBase {
    using Map = std::map<int, std::unique_ptr<T>>;

  public:
    using ControlArrayBase::ControlArrayBase;

    // Throws RunTimeError 340 when the element is not loaded.
    T& operator()(int i) const { return at(i); }
    T& at(int i) const {
        auto it = items_.find(i);
        if (it == items_.end())
            throw RunTimeError(
                340,
                QStringLiteral("Control array element '%1(%2)' doesn't exist").arg(name()).arg(i));
        return *it->second;
    }
    T* find(int i) const {
        auto it = items_.find(i);
        return it == items_.end() ? nullptr : it->second.get();
    }
    bool exists(int i) const { return items_.count(i) != 0; }
    int count() const { return int(items_.size()); }
    // Lowest and highest loaded index; throw 340 when the array is empty.
    int lbound() const { return first().first; }
    int ubound() const { return last().first; }
    std::vector<int> indexes() const {
        std::vector<int> out;
        for (const auto& [i, _] : items_)
            out.push_back(i);
        return out;
    }

    // A new element in its default state; RunTimeError 360 when it is already loaded.
    T& load(int i) {
        if (exists(i))
            throw RunTimeError(360,
                               QStringLiteral("Object already loaded: %1(%2)").arg(name()).arg(i));
        auto& slot = items_[i];
        slot = std::make_unique<T>(name(), i);
        if (added) added(*slot);
        return *slot;
    }
    void unload(int i) {
        T& e = at(i);
        if (removing) removing(e);
        items_.erase(i);
    }

    Control* element(int i) const override { return find(i); }
    std::vector<Control*> elements() const override {
        std::vector<Control*> out;
        for (const auto& [_, p] : items_)
            out.push_back(p.get());
        return out;
    }
    Control& loadElement(int i) override { return load(i); }

    class iterator {
      public:
        using inner = typename Map::const_iterator;
        explicit iterator(inner it) : it_(it) {}
        T& operator*() const { return *it_->second; }
        T* operator->() const { return it_->second.get(); }
        iterator& operator++() {
            ++it_;
            return *this;
        }
        bool operator==(const iterator& o) const { return it_ == o.it_; }
        bool operator!=(const iterator& o) const { return it_ != o.it_; }

      private:
        inner it_;
    };
    iterator begin() const { return iterator(items_.begin()); }
    iterator end() const { return iterator(items_.end()); }

  private:
    const typename Map::value_type& first() const {
        if (items_.empty()) throw RunTimeError(340, name() + QStringLiteral(" has no elements"));
        return *items_.begin();
    }
    const typename Map::value_type& last() const {
        if (items_.empty()) throw RunTimeError(340, name() + QStringLiteral(" has no elements"));
        return *items_.rbegin();
    }
    Map items_;
};

} // namespace velmorak
