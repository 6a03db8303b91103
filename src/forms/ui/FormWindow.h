#pragma once

#include "forms/Forms.h"
#include "forms/ui/Binding.h"

#include <QEventLoop>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <map>
#include <memory>

namespace velmorak {

// The view of a form: owns its top-level widget, binds the controls, and keeps caption,
// geometry, visibility and enabled state in step with the form. On creation the window takes
// the form's position and caption and gives the form its own size. Closing the window unloads
// the form (a cancelling formUnload keeps it open). With KeyPreview on, keys reach the form's
// keyDown before the focused control; Enter and Escape press the default and cancel buttons.
class FormWindow : public QObject, public FormView {
  public:
    FormWindow(Form& form, QWidget* window);
    ~FormWindow() override;

    void show(bool modal) override;
    void hide() override;
    void dispose() override;
    std::optional<QRect> controlRect(const QString& name) const override;

    QWidget* window() const { return window_; }
    // Deletes now the views unloaded under a handler that are still waiting (call with no
    // handler on the stack).
    static void releasePending();
    FormBinding& binding() { return *binding_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void syncFromForm(Prop p);
    void placeFrame();
    bool settlePlace();
    void watchFrame(int tries);
    static void releaseLater(int ms);
    static QList<QPointer<FormWindow>>& pending();
    bool filter(QObject* watched, QEvent* event);
    bool holdDuringPause(QObject* watched, QEvent* event);
    bool handleKey(QWidget* receiver, QKeyEvent* e);
    Form* form_;
    QPointer<QWidget> window_;
    std::unique_ptr<FormBinding> binding_;
    ScopedConnection formLink_;
    QPointer<QEventLoop> modalLoop_;
    bool applying_ = false;
    bool placing_ = false;
    const QEvent* lastKey_ = nullptr;
    QPointer<QWidget> lastReceiver_;
};

// Builds the widget of each window by name and hands Forms a view factory.
class ViewRegistry {
  public:
    using Builder = std::function<QWidget*(Form&)>;
    void add(const QString& formName, Builder build) { builders_[formName] = std::move(build); }
    // Windows without a builder get no view.
    ViewFactory factory() const;
    void install(Forms& forms) const { forms.setViewFactory(factory()); }

  private:
    std::map<QString, Builder> builders_;
};

} // namespace velmorak
