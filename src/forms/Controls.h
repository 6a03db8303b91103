#pragma once

#include "forms/Control.h"

#include <QStringList>
#include <QtGlobal>

#include <vector>

namespace velmorak {

class Host;

class Button : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "Button"; }

    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    // Enter and Escape press the default and the cancel button of a window.
    bool isDefault() const { return default_; }
    void setDefault(bool on);
    bool isCancel() const { return cancel_; }
    void setCancel(bool on);

    // A user's click: nothing happens on a disabled or hidden button.
    void click();
    // Code running the click handler directly.
    void fireClick() { onClick(); }

    Event<> onClick;

  private:
    QString caption_;
    bool default_ = false;
    bool cancel_ = false;
};

class Label : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "Label"; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    Event<> onClick;

  private:
    QString caption_;
};

class Frame : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "Frame"; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);

  private:
    QString caption_;
};

// A drawn marker whose only state is its visibility and colour.
class Shape : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "Shape"; }
    // 0xRRGGBB
    quint32 fillColor() const { return fill_; }
    void setFillColor(quint32 rgb);

  private:
    quint32 fill_ = 0;
};

// A picture loaded from a file; an empty path clears it.
class PictureBox : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "PictureBox"; }
    const QString& picture() const { return picture_; }
    void setPicture(const QString& path);
    void click() {
        if (enabled() && visible()) onClick();
    }
    Event<> onClick;

  private:
    QString picture_;
};

class Image : public PictureBox {
  public:
    using PictureBox::PictureBox;
    const char* kind() const override { return "Image"; }
};

class TextBox : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "TextBox"; }

    const QString& text() const { return text_; }
    // Fires Change when the text differs; the selection is kept within the new text.
    void setText(const QString& t);
    bool locked() const { return locked_; }
    void setLocked(bool on);
    // 0: no limit. Limits typing only; code may write longer texts.
    int maxLength() const { return maxLength_; }
    void setMaxLength(int n);
    int selStart() const { return selStart_; }
    int selLength() const { return selLength_; }
    void setSelStart(int s);
    void setSelLength(int n);
    QString selText() const { return text_.mid(selStart_, selLength_); }
    // Replaces the selection (fires Change when that alters the text).
    void setSelText(const QString& t);

    // A key typed by the user: KeyPress handlers may change keyAscii or set it to 0 to swallow
    // it; what is left is typed at the selection (8 is backspace; 13 and other control codes
    // type nothing). Locked or disabled boxes take no typing but still see KeyPress.
    void keyPress(int& keyAscii);
    void type(const QString& keys); // keyPress for each character
    // A user's edit other than a key (paste, delete): sets the text, fires Change.
    void userEdit(const QString& t, int cursor = -1);

    Event<> onChange;
    Event<int&> onKeyPress;

  private:
    QString text_;
    bool locked_ = false;
    int maxLength_ = 0;
    int selStart_ = 0;
    int selLength_ = 0;
};

// Value 0 unchecked, 1 checked, 2 grayed. Click fires on every change of value.
class CheckBox : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "CheckBox"; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    int value() const { return value_; }
    void setValue(int v); // throws InvalidPropertyValue outside 0..2
    // A user's click: unchecked becomes checked, anything else unchecked.
    void click();
    Event<> onClick;

  private:
    QString caption_;
    int value_ = 0;
};

// Setting one option true clears the others of the same owner and container; Click fires on
// the one set true.
class OptionButton : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "OptionButton"; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    bool value() const { return value_; }
    void setValue(bool on);
    void click();
    Event<> onClick;

  private:
    QString caption_;
    bool value_ = false;
};

// A menu entry; the caption marks its accelerator with '&'. Children form the menu tree.
class MenuItem : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "MenuItem"; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    // The caption without accelerator marks ("&&" stays as one '&').
    QString plainCaption() const;
    bool checked() const { return checked_; }
    void setChecked(bool on);
    void addChild(MenuItem& child);
    const std::vector<MenuItem*>& children() const { return children_; }
    MenuItem* parentMenu() const { return parent_; }
    // A user's choice: nothing happens when the item or a parent is disabled or hidden.
    void click();
    void fireClick() { onClick(); }
    Event<> onClick;

  private:
    QString caption_;
    bool checked_ = false;
    MenuItem* parent_ = nullptr;
    std::vector<MenuItem*> children_;
};

// Two arrows, up and down, with no value of their own.
class SpinButton : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "SpinButton"; }
    // A user's press of an arrow: nothing happens when disabled or hidden.
    void spinUp() {
        if (enabled() && visible()) onSpinUp();
    }
    void spinDown() {
        if (enabled() && visible()) onSpinDown();
    }
    Event<> onSpinUp;
    Event<> onSpinDown;
};

// Tabs with captions; the selected tab counts from 1 (0: none). Click fires when the selection
// changes.
class TabStrip : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "TabStrip"; }
    const QStringList& tabs() const { return tabs_; }
    void setTabs(const QStringList& captions) {
        tabs_ = captions;
        changed(Prop::Items);
    }
    int selectedIndex() const { return selected_; }
    void setSelectedIndex(int i) {
        if (i == selected_) return;
        selected_ = i;
        changed(Prop::ListIndex);
        onClick();
    }
    void userSelect(int i) {
        if (enabled()) setSelectedIndex(i);
    }
    Event<> onClick;

  private:
    QStringList tabs_;
    int selected_ = 0;
};

class StatusBar : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "StatusBar"; }
    int panelCount() const { return int(panels_.size()); }
    void setPanelCount(int n);
    // Panels count from 1; writing past the last panel adds panels.
    QString panelText(int panel) const;
    void setPanelText(int panel, const QString& t);
    const QStringList& panels() const { return panels_; }

  private:
    QStringList panels_;
};

class ProgressBar : public Control {
  public:
    using Control::Control;
    const char* kind() const override { return "ProgressBar"; }
    int min() const { return min_; }
    int max() const { return max_; }
    int value() const { return value_; }
    void setMin(int v);
    void setMax(int v);
    void setValue(int v); // throws InvalidPropertyValue outside min..max

  private:
    int min_ = 0;
    int max_ = 100;
    int value_ = 0;
};

// Ticks on the host clock: whoever runs the event loop calls poll(now) (Forms::pollTimers does
// it for every open window). The first tick comes one interval after the timer was enabled or
// its interval set; ticks missed between polls are not replayed. Enabled is the timer's switch.
class Timer : public Control {
  public:
    explicit Timer(QString name, int index = -1);
    const char* kind() const override { return "Timer"; }
    bool visual() const override { return false; }
    int interval() const { return interval_; }
    void setInterval(int ms);
    // Uses this clock to know when it was armed; without one, the first poll arms it.
    void setHost(const Host* h);
    void poll(qint64 now);
    Event<> onTick;

  private:
    void rearm();
    const Host* host_ = nullptr;
    int interval_ = 0;
    bool armed_ = false;
    qint64 armedAt_ = 0;
};

// A control with timers of its own inside it; its window gives them the clock and the ticks.
class TimerOwner {
  public:
    virtual ~TimerOwner() = default;
    virtual std::vector<Timer*> timers() = 0;
};

} // namespace velmorak
