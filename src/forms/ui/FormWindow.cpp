#include "forms/ui/FormWindow.h"

#include "forms/Boundary.h"
#include "platform/Freeze.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <memory>

namespace velmorak {

namespace {
// What the window manager's frame adds to the client area (nothing known before it is shown).
QSize frameExtra(const QWidget* w) {
    return w->frameGeometry().size() - w->size();
}
} // namespace

// The form's geometry is the window's frame: its position is where the title bar begins.
FormWindow::FormWindow(Form& form, QWidget* window) : form_(&form), window_(window) {
    binding_ = bindForm(form, window);
    window->setWindowTitle(form.caption());
    window->setEnabled(form.enabled());
    form.move(form.left(), form.top(), window->width(), window->height());
    formLink_ = form.onPropertyChanged.connect([this](Prop p) { syncFromForm(p); });
    window->installEventFilter(this);
    qApp->installEventFilter(this);
}

FormWindow::~FormWindow() {
    dispose();
    delete window_.data();
}

void FormWindow::syncFromForm(Prop p) {
    if (!window_ || applying_) return;
    if (p == Prop::Caption) window_->setWindowTitle(form_->caption());
    if (p == Prop::Enabled) window_->setEnabled(form_->enabled());
    if (p == Prop::Geometry) {
        applying_ = true;
        placeFrame();
        const QSize extra = frameExtra(window_);
        window_->resize(qMax(0, form_->width() - extra.width()),
                        qMax(0, form_->height() - extra.height()));
        applying_ = false;
    }
    if (p == Prop::WindowState) {
        static const Qt::WindowState states[] = {Qt::WindowNoState, Qt::WindowMinimized,
                                                 Qt::WindowMaximized};
        window_->setWindowState(states[int(form_->windowState())]);
        // The window manager answers later; the form takes the maximised size at once, so the
        // code that maximised it can read the usable size of the screen.
        QScreen* screen = window_->screen();
        if (form_->windowState() == WindowState::Maximized && screen) {
            const QRect area = screen->availableGeometry();
            applying_ = true;
            form_->move(area.x(), area.y(), area.width(), area.height());
            applying_ = false;
        }
    }
}

void FormWindow::placeFrame() {
    window_->move(form_->left(), form_->top());
    // Before the window manager has framed it, Qt may take the position for the client area.
    placing_ = !window_->isVisible();
}

// Once the frame is known, a first show that put the client where the frame belongs is moved
// by the frame's size. False while the frame is still unknown.
bool FormWindow::settlePlace() {
    QWindow* h = window_->windowHandle();
    if (!h || h->frameMargins().isNull()) return false;
    placing_ = false;
    const QPoint want(form_->left(), form_->top());
    if (window_->frameGeometry().topLeft() != want) {
        applying_ = true;
        window_->move(want);
        applying_ = false;
    }
    return true;
}

// The frame arrives after the window is mapped and may bring no event of its own: look for it
// a few times.
void FormWindow::watchFrame(int tries) {
    QTimer::singleShot(20, this, guarded([this, tries] {
                           if (!placing_ || !window_ || !form_) return;
                           if (!settlePlace() && tries > 1) watchFrame(tries - 1);
                       }));
}

void FormWindow::show(bool modal) {
    if (!window_) return;
    if (modal) window_->setWindowModality(Qt::ApplicationModal);
    if (!window_->isVisible()) placeFrame();
    window_->show();
    if (placing_) watchFrame(50);
    window_->raise();
    window_->activateWindow();
    if (!modal) return;
    // The window and this view may be gone when the loop ends (unloaded while it ran).
    QPointer<FormWindow> self(this);
    QEventLoop loop;
    modalLoop_ = &loop;
    loop.exec(QEventLoop::DialogExec);
    if (self && window_) window_->setWindowModality(Qt::NonModal);
}

void FormWindow::hide() {
    if (window_) window_->hide();
    if (modalLoop_) modalLoop_->quit();
}

void FormWindow::refresh() {
    if (window_ && window_->isVisible()) window_->repaint();
}

void FormWindow::dispose() {
    if (!form_) return;
    form_ = nullptr;
    formLink_ = ScopedConnection();
    if (binding_) binding_->unbind();
    qApp->removeEventFilter(this);
    if (window_) {
        window_->removeEventFilter(this);
        window_->hide();
    }
    if (modalLoop_) modalLoop_->quit();
    pending().append(this);
    if (HandlerScope::depth() == 0)
        releasePending(); // unloaded by the program itself (its end): nothing of ours runs
    else
        releaseLater(0);
}

QList<QPointer<FormWindow>>& FormWindow::pending() {
    static QList<QPointer<FormWindow>> views;
    return views;
}

void FormWindow::releasePending() {
    const QList<QPointer<FormWindow>> views = std::exchange(pending(), {});
    for (const QPointer<FormWindow>& v : views)
        delete v.data(); // and its window
}

// A widget of an unloaded window may be emitting the very signal whose handler unloaded it (a
// menu pick that opened a modal window, in whose loop the card went): the waiting views are
// deleted only once no handler is on the stack, and at once then, since a deferred delete
// posted as the program quits would never run.
void FormWindow::releaseLater(int ms) {
    QTimer::singleShot(ms, qApp, [] {
        if (HandlerScope::depth() > 0)
            releaseLater(50);
        else
            releasePending();
    });
}

std::optional<QRect> FormWindow::controlRect(const QString& name) const {
    auto* w = qobject_cast<QWidget*>(binding_ ? binding_->boundTo(name) : nullptr);
    if (!w || !window_) return std::nullopt;
    return QRect(w->mapTo(window_, QPoint(0, 0)), w->size());
}

bool FormWindow::handleKey(QWidget* receiver, QKeyEvent* e) {
    // An ignored key climbs to the parents: handle it at its first receiver only.
    bool climbing = e == lastKey_ && lastReceiver_ && receiver->isAncestorOf(lastReceiver_);
    lastKey_ = e;
    lastReceiver_ = receiver;
    if (!form_ || climbing) return false;
    if (form_->previewKey(e->key(), e->modifiers())) return true;
    if (e->modifiers() & ~Qt::KeypadModifier) return false;
    bool enter = e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter;
    bool escape = e->key() == Qt::Key_Escape;
    if (!enter && !escape) return false;
    // A focused button takes its own Enter; a multi-line box its new line.
    QWidget* focus = QApplication::focusWidget();
    if (enter && focus && (focus->inherits("QAbstractButton") || focus->inherits("QPlainTextEdit")))
        return false;
    for (Control* c : form_->controls()) {
        auto* b = dynamic_cast<Button*>(c);
        if (b && (enter ? b->isDefault() : b->isCancel()) && b->enabled() && b->visible()) {
            b->click();
            return true;
        }
    }
    return false;
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    if (!form_ || !window_) return false;
    if (Freeze::active()) return holdDuringPause(watched, event);
    bool handled = false;
    atBoundary([&] { handled = filter(watched, event); });
    return handled;
}

// During a card pause the window paints but its form hears nothing: a key or a close waits
// and comes again after the pause; a move or resize is taken by Qt now and told to the form then.
bool FormWindow::holdDuringPause(QObject* watched, QEvent* event) {
    auto* w = qobject_cast<QWidget*>(watched);
    const bool mine = w && (w == window_ || window_->isAncestorOf(w));
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::Close:
        if (!mine || (event->type() == QEvent::Close && watched != window_)) return false;
        Freeze::repost(watched, event->clone());
        event->ignore();
        return true;
    case QEvent::Move:
    case QEvent::Resize:
        if (watched == window_) {
            std::shared_ptr<QEvent> copy(event->clone());
            Freeze::run([this, copy] { atBoundary([&] { filter(window_, copy.get()); }); }, this);
        }
        return false;
    default:
        return false;
    }
}

bool FormWindow::filter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto* w = qobject_cast<QWidget*>(watched);
        if (w && (w == window_ || window_->isAncestorOf(w)))
            return handleKey(w, static_cast<QKeyEvent*>(event));
        return false;
    }
    if (watched != window_) return false;
    switch (event->type()) {
    case QEvent::Close: {
        Form* f = form_;
        if (!f->unload()) {
            event->ignore();
            return true;
        }
        return false;
    }
    case QEvent::Move:
    case QEvent::Resize:
        if (applying_) return false;
        if (placing_ && !settlePlace()) return false;
        applying_ = true;
        {
            const QRect frame = window_->frameGeometry();
            form_->move(frame.x(), frame.y(), frame.width(), frame.height());
        }
        applying_ = false;
        return false;
    case QEvent::Hide:
        if (modalLoop_ && !window_->isVisible()) modalLoop_->quit();
        return false;
    default:
        return false;
    }
}

ViewFactory ViewRegistry::factory() const {
    auto builders = builders_;
    return [builders](Form& f) -> FormView* {
        auto it = builders.find(f.name());
        if (it == builders.end()) return nullptr;
        QWidget* w = it->second(f);
        return w ? new FormWindow(f, w) : nullptr;
    };
}

} // namespace velmorak
