#pragma once

#include "forms/Controls.h"

namespace velmorak {

// The stepper: a track with a filled part that shows Value, a label and two arrows. A held
// arrow repeats, first after 600 ms, then every 200 ms. Value counts from 0; a host that works
// in absolute numbers adds Min itself.
class UcScrollChange : public Control, public TimerOwner {
  public:
    static constexpr int kFirstInterval = 600;
    static constexpr int kRepeatInterval = 200;
    // Right margin of the right arrow and the gap left of it, in pixels.
    static constexpr int kRightMargin = 10;
    static constexpr int kLabelGap = 5;
    static constexpr int kLabelWidth = 36;

    explicit UcScrollChange(QString name, int index = -1);
    const char* kind() const override { return "UcScrollChange"; }
    std::vector<Timer*> timers() override { return {&tmScrl}; }

    qint16 Value() const { return value_; }
    void setValue(qint16 v);
    bool MValue() const { return mValue_; }
    void setMValue(bool on) { mValue_ = on; }
    qint16 Max() const { return max_; }
    void setMax(qint16 v);
    qint16 Min() const { return min_; }
    void setMin(qint16 v);
    quint32 ColorChange() const { return shpLeft.fillColor(); }
    void setColorChange(quint32 rgb) { shpLeft.setFillColor(rgb); }
    void ChangeR();
    void ChangeL();
    bool Percent() const { return percent_; }
    void setPercent(bool on);
    qint16 OneStep() const { return oneStep_; }
    void setOneStep(qint16 v) { oneStep_ = v; }

    // Width of one step on the track; 0 while the control has no size.
    int stepWidth() const { return stepWidth_; }
    // 0 idle, 1 left arrow held, 2 right arrow held.
    int repeatState() const { return state_; }
    // Where the arrow pictures are found.
    void setPictureFolder(const QString& folder);
    // Lays the parts out in a control of this size.
    void resize(int width, int height);
    int width() const { return width_; }
    int height() const { return height_; }
    int trackLeft() const { return height_; }
    int trackWidth() const { return trackWidth_; }
    int fillWidth() const { return fillWidth_; }
    int labelLeft() const { return labelLeft_; }
    int rightArrowLeft() const { return rightLeft_; }

    // The user's mouse on an arrow: down, up, then the click that follows the up.
    void leftDown();
    void leftUp();
    void leftClick();
    void rightDown();
    void rightUp();
    void rightClick();
    // A whole short press, as a key does it.
    void pressLeft();
    void pressRight();

    Timer tmScrl;
    Label lblValue;
    Shape shpLeft;
    Image imLeft;
    Image imRite;

    Event<> onClickLeft;
    Event<> onClickRight;

  private:
    void tick();
    void arrowDown(int state, Image& arrow, const char* picture);
    void arrowUp(Image& arrow, const char* picture);
    void measure();
    QString pictureFile(const char* picture) const;
    bool usable() const { return enabled() && visible(); }

    qint16 value_ = 0;
    qint16 max_ = 255;
    qint16 min_ = 0;
    qint16 oneStep_ = 1;
    bool percent_ = true;
    bool mValue_ = false;
    int state_ = 0;
    int stepWidth_ = 0;
    int width_ = 0;
    int height_ = 0;
    int trackWidth_ = 0;
    int fillWidth_ = 0;
    int labelLeft_ = 0;
    int rightLeft_ = 0;
    QString folder_;
};

} // namespace velmorak
