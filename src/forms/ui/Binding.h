#pragma once

#include "forms/Form.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;
class QWidget;

namespace velmorak {

// Binds a control kind the kit does not know to its own widget class. It returns the link that
// lets go of the model, or nothing when the control does not fit the widget.
using WidgetBinder = std::function<std::optional<Connection>(Control&, QWidget*)>;
// Widgets of this class (or derived from it) become bindable by name through the binder.
// Registering a class again replaces its binder.
void registerWidgetBinder(const QMetaObject& widgetClass, WidgetBinder binder);

// Gives a view's widget the object name that binds it to the control of that name.
template <class W> W* named(W* w, const QString& name) {
    w->setObjectName(name);
    return w;
}
template <class W> W* named(W* w, const char* name) {
    return named(w, QString::fromLatin1(name));
}

// Binds the control models of a form to the widgets under a root, both ways, by object name
// ("cmdLoad", or "ucBitsField1(3)" for an array element). Model writes update widgets without
// echo; user actions on widgets go through the models' user paths and fire their events once.
// Each bound widget's accessible description is set to its control's name.
class FormBinding : public QObject {
  public:
    FormBinding(Form& form, QWidget* root);
    ~FormBinding() override;

    // Lets go of the models now (before the form dies).
    void unbind();

    // Controls with a widget in view that got none.
    const QStringList& unboundControls() const { return unboundControls_; }
    // Named widgets of a bindable kind that have no control.
    const QStringList& unboundWidgets() const { return unboundWidgets_; }
    // Widgets whose kind does not fit their control.
    const QStringList& mismatches() const { return mismatches_; }
    // All of the above, one line each; empty for a complete window.
    QStringList report() const;
    // The widget or action bound to a control, by its full name.
    QObject* boundTo(const QString& fullName) const { return bound_.value(fullName).data(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool bindOne(Control& c, QObject* target);
    bool typeKey(QObject* watched, QKeyEvent* e);
    void watch(Control& c, std::function<void(Prop)> sync);
    void common(Control& c, QWidget* w);

    QPointer<QWidget> root_;
    std::vector<ScopedConnection> modelLinks_;
    QHash<QObject*, class TextBox*> typing_;
    QHash<QString, QPointer<QObject>> bound_;
    QStringList unboundControls_, unboundWidgets_, mismatches_;
};

std::unique_ptr<FormBinding> bindForm(Form& form, QWidget* root);

} // namespace velmorak
