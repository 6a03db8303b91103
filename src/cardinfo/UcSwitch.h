#pragma once

#include "forms/Control.h"

#include <array>

namespace velmorak {

// A row of twelve sliders; a slider's top is its state: 0 on, 60 off. Zone is the part of the
// control last pressed.
class UcSwitchSH : public Control {
  public:
    static constexpr int kSliders = 12;
    static constexpr int kTopOn = 0;
    static constexpr int kTopOff = 60;

    using Control::Control;
    const char* kind() const override { return "UcSwitchSH"; }

    void SetSwitch(qint16 index, bool value);
    bool SetSwitch(qint16 index) const;
    qint16 Zone() const { return zone_; }
    int top(int index) const { return top_.at(size_t(index)); }
    // Left of each slider after the last resize.
    int sliderLeft(int index) const { return left_.at(size_t(index)); }
    int width() const { return width_; }
    void resize(int width);

    // A press on slider index, or on the background at x.
    void pressSlider(int index);
    void pressBackground(double x);

    Event<> onClick;

  private:
    std::array<int, kSliders> top_{};
    std::array<int, kSliders> left_{};
    int width_ = 0;
    qint16 zone_ = 0;
};

// The row of sliders framed by the picture of the switch body.
class UcSwitchD10 : public Control {
  public:
    // The body spans ten and a half slider steps; the control adds a margin around it.
    static constexpr int kMargin = 4;

    explicit UcSwitchD10(QString name, int index = -1);
    const char* kind() const override { return "UcSwitchD10"; }

    void SetValue(qint16 index, bool value) { ucSwitchSH1.SetSwitch(index, value); }
    // Sizes the control around a body of this size.
    void resize(int bodyWidth, int bodyHeight);
    int width() const { return width_; }
    int height() const { return height_; }

    // Presses on the body picture, the direction mark and the background.
    void pressBody() { click(); }
    void pressDirection() { click(); }
    void pressBackground() { click(); }

    UcSwitchSH ucSwitchSH1;
    Event<> onClick;

  private:
    void click() {
        if (enabled() && visible()) onClick();
    }
    int width_ = 0;
    int height_ = 0;
};

} // namespace velmorak
