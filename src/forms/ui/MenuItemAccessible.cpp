#include "forms/ui/MenuItemAccessible.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace velmorak {

QString withoutMnemonic(QString s) {
    s.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    s.remove(u'&');
    s.replace(QStringLiteral("\x01"), QStringLiteral("&"));
    return s;
}

namespace {

// The menu or menu bar that shows the action.
QWidget* shownIn(const QAction* a) {
    for (QObject* o : a->associatedObjects())
        if (qobject_cast<QMenu*>(o) || qobject_cast<QMenuBar*>(o)) return static_cast<QWidget*>(o);
    return nullptr;
}

class MenuItemAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
  public:
    explicit MenuItemAccessible(QAction* a) : a_(a) {}
    bool isValid() const override { return a_; }
    QObject* object() const override { return a_; }
    QWindow* window() const override {
        QWidget* w = a_ ? shownIn(a_) : nullptr;
        return w && w->window() ? w->window()->windowHandle() : nullptr;
    }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        QWidget* w = a_ ? shownIn(a_) : nullptr;
        return w ? QAccessible::queryAccessibleInterface(w) : nullptr;
    }
    QAccessibleInterface* child(int index) const override {
        return index == 0 && a_ && a_->menu() ? QAccessible::queryAccessibleInterface(a_->menu())
                                              : nullptr;
    }
    int childCount() const override { return a_ && a_->menu() ? 1 : 0; }
    int indexOfChild(const QAccessibleInterface* c) const override {
        return c && a_ && a_->menu() && c->object() == a_->menu() ? 0 : -1;
    }
    QString text(QAccessible::Text t) const override {
        if (!a_) return {};
        if (t == QAccessible::Name) return withoutMnemonic(a_->text());
        if (t == QAccessible::Description)
            return !a_->objectName().isEmpty() || !a_->menu() ? a_->objectName()
                                                              : a_->menu()->objectName();
        if (t == QAccessible::Accelerator) return a_->shortcut().toString(QKeySequence::NativeText);
        return {};
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override {
        QWidget* w = a_ ? shownIn(a_) : nullptr;
        QRect r;
        if (auto* m = qobject_cast<QMenu*>(w)) r = m->actionGeometry(a_);
        if (auto* b = qobject_cast<QMenuBar*>(w)) r = b->actionGeometry(a_);
        return w ? QRect(w->mapToGlobal(r.topLeft()), r.size()) : QRect();
    }
    QAccessible::Role role() const override {
        return a_ && a_->isSeparator() ? QAccessible::Separator : QAccessible::MenuItem;
    }
    QAccessible::State state() const override {
        QAccessible::State s;
        if (!a_) return s;
        s.disabled = !a_->isEnabled();
        s.invisible = !a_->isVisible();
        s.checkable = a_->isCheckable();
        s.checked = a_->isChecked();
        s.hasPopup = a_->menu() != nullptr;
        return s;
    }
    void* interface_cast(QAccessible::InterfaceType t) override {
        return t == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                 : nullptr;
    }
    QStringList actionNames() const override {
        return a_ && a_->isEnabled() ? QStringList{pressAction()} : QStringList();
    }
    void doAction(const QString& name) override {
        if (a_ && a_->isEnabled() && name == pressAction()) a_->trigger();
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

  private:
    QPointer<QAction> a_;
};

QAccessibleInterface* menuItemFactory(const QString& className, QObject* o) {
    auto* a = className == QLatin1String("QAction") ? qobject_cast<QAction*>(o) : nullptr;
    return a && shownIn(a) ? new MenuItemAccessible(a) : nullptr;
}

} // namespace

void installMenuItemAccessible() {
    static const bool installed = [] {
        QAccessible::installFactory(menuItemFactory);
        return true;
    }();
    (void)installed;
}

} // namespace velmorak
