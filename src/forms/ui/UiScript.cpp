#include "forms/ui/UiScript.h"

#include "forms/Boundary.h"
#include "forms/Forms.h"
#include "forms/Snapshot.h"
#include "forms/ui/FormWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QDialog>
#include <QFile>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTabWidget>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

namespace velmorak {

namespace {

// The widget or action bound to "frmStart.cmdConnect" in its window's view.
QObject* boundObject(Forms& forms, const QString& path) {
    const int dot = int(path.indexOf(u'.'));
    Form* f = dot < 0 ? nullptr : forms.get(path.left(dot));
    auto* view = f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
    return view ? view->binding().boundTo(path.mid(dot + 1)) : nullptr;
}

// The key a character is typed with.
QKeyEvent keyFor(QEvent::Type type, QChar ch) {
    const int key = ch.isLetter() ? ch.toUpper().unicode() : ch.unicode();
    return QKeyEvent(type, key, ch.isUpper() ? Qt::ShiftModifier : Qt::NoModifier, QString(ch));
}

void press(QWidget* w, int key, Qt::KeyboardModifiers mods, const QString& text = QString()) {
    for (QEvent::Type t : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (!w) return;
        QKeyEvent e(t, key, mods, text);
        QApplication::sendEvent(w, &e);
    }
}

void typeInto(QWidget* w, const QString& text) {
    QPointer<QWidget> target(w);
    for (QChar ch : text)
        for (QEvent::Type t : {QEvent::KeyPress, QEvent::KeyRelease}) {
            if (!target) return;
            QKeyEvent e = keyFor(t, ch);
            QApplication::sendEvent(target, &e);
        }
}

// Where a user clicks a check box or option button: on its box.
std::optional<QPoint> boxOf(QWidget* w) {
    QStyle::SubElement part;
    if (qobject_cast<QCheckBox*>(w))
        part = QStyle::SE_CheckBoxIndicator;
    else if (qobject_cast<QRadioButton*>(w))
        part = QStyle::SE_RadioButtonIndicator;
    else
        return std::nullopt;
    QStyleOptionButton opt;
    opt.initFrom(w);
    return w->style()->subElementRect(part, &opt, w).center();
}

} // namespace

QObject* UiScript::usable(const QString& path) const {
    QObject* o = boundObject(forms_, path);
    if (auto* w = qobject_cast<QWidget*>(o)) return w->isVisible() && w->isEnabled() ? w : nullptr;
    if (auto* a = qobject_cast<QAction*>(o)) {
        const int dot = int(path.indexOf(u'.'));
        auto* view = dynamic_cast<FormWindow*>(forms_.get(path.left(dot))->view());
        QWidget* win = view ? view->window() : nullptr;
        return a->isVisible() && a->isEnabled() && win && win->isVisible() && win->isEnabled()
                   ? a
                   : nullptr;
    }
    return nullptr;
}

void UiScript::clickAt(QWidget* w, std::optional<QPoint> at) {
    QPointer<QWidget> target(w);
    const QPoint p = at.value_or(w->rect().center());
    QMetaObject::invokeMethod(
        this, guarded([target, p] {
            for (QEvent::Type t : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                if (!target) return;
                const QPointF local(p);
                QMouseEvent e(t, local, QPointF(target->mapTo(target->window(), p)),
                              QPointF(target->mapToGlobal(p)), Qt::LeftButton,
                              t == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                              Qt::NoModifier);
                QApplication::sendEvent(target, &e);
            }
        }),
        Qt::QueuedConnection);
}

UiScript::UiScript(Forms& forms, QStringList steps, std::function<bool()> busy)
    : forms_(forms), steps_(std::move(steps)), busy_(std::move(busy)) {
    addVerb(QStringLiteral("wait"), [this](const QStringList& a) {
        if (a.size() < 3) return false;
        const QString want = QStringList{a[0], a[1], a[2], a.mid(3).join(u' ')}.join(u'\t');
        return formsSnapshot(forms_).contains(want);
    });
    addVerb(QStringLiteral("click"), [this](const QStringList& a) {
        QObject* o = a.isEmpty() ? nullptr : usable(a[0]);
        if (auto* action = qobject_cast<QAction*>(o)) {
            // A pick from the menu; queued, as the menu closes first.
            QPointer<QAction> p(action);
            QMetaObject::invokeMethod(this, guarded([p] {
                                          if (p) p->trigger();
                                      }),
                                      Qt::QueuedConnection);
            return true;
        }
        auto* w = qobject_cast<QWidget*>(o);
        if (!w) return false;
        clickAt(w, boxOf(w));
        return true;
    });
    addVerb(QStringLiteral("type"), [this](const QStringList& a) {
        auto* w = qobject_cast<QWidget*>(a.isEmpty() ? nullptr : usable(a[0]));
        if (auto* cbo = qobject_cast<QComboBox*>(w)) w = cbo->lineEdit();
        if (!w) return false;
        QPointer<QWidget> target(w);
        const QString text = a.mid(1).join(u' ');
        QMetaObject::invokeMethod(this, guarded([target, text] {
                                      if (!target) return;
                                      target->setFocus(Qt::OtherFocusReason);
                                      typeInto(target, text);
                                  }),
                                  Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("slide"), [this](const QStringList& a) {
        auto* w = qobject_cast<QWidget*>(a.size() < 2 ? nullptr : usable(a[0]));
        QAccessibleInterface* i = w ? QAccessible::queryAccessibleInterface(w) : nullptr;
        if (!i || !i->valueInterface()) return false;
        QPointer<QWidget> target(w);
        const int value = a[1].toInt();
        QMetaObject::invokeMethod(this, guarded([target, value] {
                                      if (!target) return;
                                      if (auto* v = QAccessible::queryAccessibleInterface(target))
                                          if (auto* vi = v->valueInterface())
                                              vi->setCurrentValue(value);
                                  }),
                                  Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("key"), [this](const QStringList& a) {
        Form* f = a.size() < 2 ? nullptr : forms_.get(a[0]);
        auto* view = f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
        QWidget* win = view ? view->window() : nullptr;
        if (!win || !win->isVisible()) return false;
        const QKeyCombination k = QKeySequence(a[1])[0];
        // At the window's focused control, as a key typed into the window arrives.
        QPointer<QWidget> target(win->focusWidget() ? win->focusWidget() : win);
        QMetaObject::invokeMethod(this, guarded([target, k] {
                                      if (target)
                                          press(target, int(k.key()), k.keyboardModifiers());
                                  }),
                                  Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("dialog"), [this](const QStringList& a) {
        auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        auto* edit = d ? d->findChild<QLineEdit*>() : nullptr;
        if (!edit || !edit->isVisible() || !edit->isEnabled()) return false;
        QPointer<QLineEdit> target(edit);
        const QString text = a.join(u' ');
        QMetaObject::invokeMethod(this, guarded([target, text] {
                                      if (!target) return;
                                      target->setFocus(Qt::OtherFocusReason);
                                      target->selectAll();
                                      typeInto(target, text);
                                      if (target)
                                          press(target, Qt::Key_Return, Qt::NoModifier, "\r");
                                  }),
                                  Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("answer"), [](const QStringList& a) {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return false;
        for (QAbstractButton* b : box->buttons())
            if (b->text().remove(u'&') == a.join(u' ')) {
                QMetaObject::invokeMethod(b, &QAbstractButton::click, Qt::QueuedConnection);
                return true;
            }
        return false;
    });
    addVerb(QStringLiteral("close"), [this](const QStringList& a) {
        Form* f = a.isEmpty() ? nullptr : forms_.get(a[0]);
        auto* view = f ? dynamic_cast<FormWindow*>(f->view()) : nullptr;
        if (!view || !view->window() || !view->window()->isVisible()) return false;
        QMetaObject::invokeMethod(view->window(), &QWidget::close, Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("tab"), [this](const QStringList& a) {
        auto* tabs = qobject_cast<QTabWidget*>(a.size() < 2 ? nullptr : usable(a[0]));
        if (!tabs) return false;
        const QString caption = a.mid(1).join(u' ');
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabText(i).remove(u'&') == caption && tabs->isTabEnabled(i)) {
                clickAt(tabs->tabBar(), tabs->tabBar()->tabRect(i).center());
                return true;
            }
        return false;
    });
    addVerb(QStringLiteral("nodialog"), [](const QStringList&) {
        return !qobject_cast<QDialog*>(QApplication::activeModalWidget());
    });
    addVerb(QStringLiteral("quit"), [](const QStringList&) {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        return true;
    });
    connect(&timer_, &QTimer::timeout, this, guarded([this] { tick(); }));
}

QStringList UiScript::readFile(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
    return QString::fromUtf8(f.readAll()).split(u'\n');
}

void UiScript::start(int tickMs, int stepTimeoutMs) {
    timeoutMs_ = stepTimeoutMs;
    stepStarted_ = QDateTime::currentMSecsSinceEpoch();
    timer_.start(tickMs);
}

void UiScript::tick() {
    // While an exchange runs only the message box or input box it opened takes a step.
    if (running_) return;
    if (busy_ && busy_() && !qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        // Time spent in an exchange does not count against the step.
        stepStarted_ = QDateTime::currentMSecsSinceEpoch();
        return;
    }
    running_ = true;
    while (!finished()) {
        const QString line = steps_[next_].trimmed();
        if (line.isEmpty() || line.startsWith(u'#')) {
            ++next_;
            continue;
        }
        if (runStep(line)) {
            std::fprintf(stderr, "script: %s\n", qPrintable(line));
            ++next_;
            stepStarted_ = QDateTime::currentMSecsSinceEpoch();
            break; // one step a tick, so its effects can happen
        }
        if (QDateTime::currentMSecsSinceEpoch() - stepStarted_ > timeoutMs_) {
            std::fprintf(stderr, "script: step %lld timed out: %s\n", qint64(next_) + 1,
                         qPrintable(line));
            for (const QString& l : formsSnapshot(forms_))
                std::fprintf(stderr, "  %s\n", qPrintable(l));
            std::fflush(stderr);
            std::_Exit(3);
        }
        break;
    }
    running_ = false;
}

bool UiScript::runStep(const QString& line) {
    QStringList words = line.split(u' ', Qt::SkipEmptyParts);
    const QString verb = words.takeFirst();
    auto it = verbs_.find(verb);
    if (it == verbs_.end()) {
        std::fprintf(stderr, "script: unknown step: %s\n", qPrintable(line));
        std::_Exit(3);
    }
    return it->second(words);
}

} // namespace velmorak
