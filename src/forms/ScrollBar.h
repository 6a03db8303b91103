#pragma once

#include "forms/Control.h"

namespace velmorak {

// A scroll bar or slider. Min may be above Max (a reversed bar): Value then lies in Max..Min.
// Change fires inside any write that alters Value, by code or user; Scroll fires while the user
// drags the thumb, and the end of the drag fires Change once when the value moved.
class ScrollBar : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "ScrollBar"; }

    int min() const { return min_; }
    int max() const { return max_; }
    int value() const { return value_; }
    int smallChange() const { return small_; }
    int largeChange() const { return large_; }
    // A value left outside the new range moves to the nearest end (firing Change).
    void setMin(int v);
    void setMax(int v);
    // Throws InvalidPropertyValue (380) outside the range; an equal value fires nothing.
    void setValue(int v);
    void setSmallChange(int v);
    void setLargeChange(int v);
    int lowest() const { return min_ < max_ ? min_ : max_; }
    int highest() const { return min_ < max_ ? max_ : min_; }
    bool contains(int v) const { return v >= lowest() && v <= highest(); }

    // User actions. Steps count towards Max when positive; values are clamped to the range.
    void userSetValue(int v);
    void stepSmall(int steps);
    void stepLarge(int steps);
    void beginDrag();
    void dragTo(int v);
    void endDrag();
    bool dragging() const { return dragging_; }

    Event<> onChange;
    Event<> onScroll;

  private:
    int clamp(int v) const { return v < lowest() ? lowest() : v > highest() ? highest() : v; }
    void step(int delta);
    void rangeChanged();
    int min_ = 0;
    int max_ = 32767;
    int value_ = 0;
    int small_ = 1;
    int large_ = 1;
    bool dragging_ = false;
    int dragStart_ = 0;
};

} // namespace velmorak
