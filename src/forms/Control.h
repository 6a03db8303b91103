#pragma once

#include "forms/Event.h"

#include <QString>

#include <stdexcept>

namespace velmorak {

class Form;

// A numbered run-time error of the window kit, catchable by window logic.
class RunTimeError : public std::runtime_error {
  public:
    RunTimeError(int number, const QString& message)
        : std::runtime_error(message.toStdString()), number_(number) {}
    int number() const { return number_; }

  private:
    int number_;
};

// Error 380: a property was given a value it cannot take.
class InvalidPropertyValue : public RunTimeError {
  public:
    explicit InvalidPropertyValue(const QString& what, int number = 380)
        : RunTimeError(number, QStringLiteral("Invalid property value: ") + what) {}
};

// Which property a model changed, for views that mirror it.
enum class Prop {
    Enabled,
    Visible,
    ToolTip,
    Caption,
    Text,
    Value,
    Range,
    Items,
    ListIndex,
    Locked,
    MaxLength,
    Selection,
    Checked,
    Default,
    Style,
    Cells,
    Cell,
    RowCol,
    ColWidth,
    RowHeight,
    Picture,
    Panels,
    Interval,
    Geometry,
    WindowState,
    KeyPreview,
};

// What every control model shares. Index is the place in a control array, -1 outside one.
class Control {
  public:
    explicit Control(QString name, int index = -1) : name_(std::move(name)), index_(index) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    // A short kind name, e.g. "Button", for reports.
    virtual const char* kind() const = 0;
    // False for controls that never have a widget (timers).
    virtual bool visual() const { return true; }

    const QString& name() const { return name_; }
    int index() const { return index_; }
    // "name" or "name(index)": the object name of the widget it binds to.
    QString fullName() const;

    bool enabled() const { return enabled_; }
    void setEnabled(bool on);
    bool visible() const { return visible_; }
    void setVisible(bool on);
    const QString& toolTipText() const { return toolTip_; }
    void setToolTipText(const QString& t);
    QString tag;
    // Name of the frame that holds the control (empty: the window); groups option buttons.
    QString container;

    Form* owner() const { return owner_; }
    void setOwner(Form* f) { owner_ = f; }

    // Fired after any property changed, before the control's own event.
    Event<Prop> onPropertyChanged;

  protected:
    void changed(Prop p) { onPropertyChanged(p); }

  private:
    QString name_;
    int index_;
    bool enabled_ = true;
    bool visible_ = true;
    QString toolTip_;
    Form* owner_ = nullptr;
};

} // namespace velmorak
