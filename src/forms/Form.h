#pragma once

#include "forms/ControlArray.h"
#include "forms/Controls.h"
#include "forms/ListControls.h"
#include "forms/ScrollBar.h"

#include <QHash>
#include <QRect>
#include <Qt>

#include <initializer_list>
#include <memory>
#include <optional>
#include <vector>

namespace velmorak {

class Form;
class Forms;
class Host;

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

// The drawing of a window, made by a view factory when the form is first shown.
class FormView {
  public:
    virtual ~FormView() = default;
    // A modal show returns when the form is hidden or unloaded.
    virtual void show(bool modal) = 0;
    virtual void hide() = 0;
    // Paints the window now, without taking any input.
    virtual void refresh() {}
    // The form is unloading: the view lets go of the models at once and frees itself (now or
    // later, so a view may dispose while handling its own close event).
    virtual void dispose() { delete this; }
    // Where a control stands in the window, in pixels from the window's corner; nothing when
    // the view does not know it.
    virtual std::optional<QRect> controlRect(const QString& name) const {
        (void)name;
        return std::nullopt;
    }
};

// Makes the view of a form, or returns nullptr for a form without one.
using ViewFactory = std::function<FormView*(Form&)>;

// The logic of one window: its controls by name, its geometry and its load, unload and
// activate hooks. Controls are added in the constructor of a subclass:
//   Button& cmdLoad = add<Button>("cmdLoad");
//   ControlArray<TextBox>& txtBit = addArray<TextBox>("txtBit", {0, 1, 2});
class Form {
  public:
    explicit Form(QString name);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& name() const { return name_; }
    const QString& caption() const { return caption_; }
    void setCaption(const QString& c);
    // Geometry in pixels. Width or height changes run formResize.
    int left() const { return left_; }
    int top() const { return top_; }
    int width() const { return width_; }
    int height() const { return height_; }
    void setLeft(int v) { move(v, top_, width_, height_); }
    void setTop(int v) { move(left_, v, width_, height_); }
    void setWidth(int v) { move(left_, top_, v, height_); }
    void setHeight(int v) { move(left_, top_, width_, v); }
    void move(int left, int top);
    void move(int left, int top, int width, int height);
    bool visible() const { return visible_; }
    bool enabled() const { return enabled_; }
    void setEnabled(bool on);
    WindowState windowState() const { return state_; }
    void setWindowState(WindowState s);
    // With KeyPreview on, the view hands every key to keyDown before the control gets it.
    bool keyPreview() const { return keyPreview_; }
    void setKeyPreview(bool on);

    // --- controls
    template <class T> T& add(const QString& name) {
        auto owned = std::make_unique<T>(name);
        T& c = *owned;
        claim(name);
        singles_.push_back(std::move(owned));
        byName_.insert(name, &c);
        attach(c);
        return c;
    }
    template <class T>
    ControlArray<T>& addArray(const QString& name, std::initializer_list<int> indexes = {}) {
        auto owned = std::make_unique<ControlArray<T>>(name);
        ControlArray<T>& a = *owned;
        claim(name);
        a.added = [this](Control& c) { attach(c); };
        a.removing = [this](Control& c) { onControlRemoved(c); };
        arrays_.push_back(std::move(owned));
        arraysByName_.insert(name, &a);
        for (int i : indexes)
            a.load(i);
        return a;
    }
    // "cmdLoad" or "ucBitsField1(3)"; nullptr when there is no such control.
    Control* find(const QString& name) const;
    // Throws RunTimeError 730 when missing or of another kind.
    template <class T> T& control(const QString& name) const {
        auto* c = dynamic_cast<T*>(find(name));
        if (!c) throw missing(name);
        return *c;
    }
    ControlArrayBase* findArray(const QString& name) const { return arraysByName_.value(name); }
    template <class T> ControlArray<T>& array(const QString& name) const {
        auto* a = dynamic_cast<ControlArray<T>*>(findArray(name));
        if (!a) throw missing(name);
        return *a;
    }
    // Every control: single ones in order of adding, then each array in index order.
    std::vector<Control*> controls() const;

    // --- life
    bool isLoaded() const { return loaded_; }
    // Runs formLoad the first time.
    void load();
    // Runs formLoad again on a loaded form (its load called by name); loads one that is not.
    void reload();
    // Loads if needed, makes the form visible, creates its view if a factory is set, runs
    // formActivate and shows the view (a modal view blocks here).
    void show(bool modal = false);
    void hide();
    // Repaints the window at once (Refresh), for progress shown while the thread is busy.
    void refresh() {
        if (view_ && visible_) view_->refresh();
    }
    // Runs formUnload; false when it cancelled. Through Forms when the form belongs to one.
    bool unload();
    // Runs formActivate (the view calls it when the window becomes active).
    void activate() {
        const HandlerScope running;
        formActivate();
    }
    // Unloaded through its Forms and waiting to be freed: it loads and shows no more, while a
    // handler of it that is still running may go on touching its controls.
    bool released() const { return released_; }
    // A key from the view; returns true when the form swallowed it (keyDown set it to 0).
    bool previewKey(int key, Qt::KeyboardModifiers mods);

    Host* host() const { return host_; }
    void setHost(Host* h);
    Forms* forms() const { return forms_; }
    FormView* view() const { return view_; }
    void setViewFactory(ViewFactory f) { viewFactory_ = std::move(f); }
    // Delivers ticks to every enabled Timer of the form.
    void pollTimers(qint64 now);

    Event<Prop> onPropertyChanged;
    Event<Control&> onControlAdded;
    Event<Control&> onControlRemoved;

  protected:
    virtual void formLoad() {}
    virtual void formUnload(bool& cancel) { (void)cancel; }
    virtual void formActivate() {}
    virtual void formResize() {}
    virtual void keyDown(int& keyCode, Qt::KeyboardModifiers mods) {
        (void)keyCode;
        (void)mods;
    }

  private:
    friend class Forms;
    void claim(const QString& name);
    void attach(Control& c);
    RunTimeError missing(const QString& name) const;
    bool unloadHere();
    void detachView();

    QString name_;
    QString caption_;
    int left_ = 0, top_ = 0, width_ = 640, height_ = 480;
    bool visible_ = false;
    bool enabled_ = true;
    bool keyPreview_ = false;
    bool loaded_ = false;
    bool released_ = false;
    WindowState state_ = WindowState::Normal;
    std::vector<std::unique_ptr<Control>> singles_;
    std::vector<std::unique_ptr<ControlArrayBase>> arrays_;
    QHash<QString, Control*> byName_;
    QHash<QString, ControlArrayBase*> arraysByName_;
    Host* host_ = nullptr;
    Forms* forms_ = nullptr;
    FormView* view_ = nullptr;
    ViewFactory viewFactory_;
};

} // namespace velmorak
