#include "forms/ui/UiScript.h"

#include "forms/Boundary.h"
#include "forms/Forms.h"
#include "forms/Snapshot.h"
#include "forms/ui/FormWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QFile>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QMessageBox>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

namespace velmorak {

namespace {

// "frmStart.cmdConnect" -> the form and the control.
Control* controlOf(Forms& forms, const QString& path) {
    const int dot = int(path.indexOf(u'.'));
    Form* f = forms.get(path.left(dot));
    return f ? f->find(path.mid(dot + 1)) : nullptr;
}

} // namespace

UiScript::UiScript(Forms& forms, QStringList steps, std::function<bool()> busy)
    : forms_(forms), steps_(std::move(steps)), busy_(std::move(busy)) {
    addVerb(QStringLiteral("wait"), [this](const QStringList& a) {
        if (a.size() < 3) return false;
        const QString want = QStringList{a[0], a[1], a[2], a.mid(3).join(u' ')}.join(u'\t');
        return formsSnapshot(forms_).contains(want);
    });
    addVerb(QStringLiteral("click"), [this](const QStringList& a) {
        Control* c = a.isEmpty() ? nullptr : controlOf(forms_, a[0]);
        if (!c || !c->enabled()) return false;
        // Queued, so a modal window it opens does not block the script.
        QMetaObject::invokeMethod(this, guarded([c] {
                                      if (auto* b = dynamic_cast<Button*>(c)) b->click();
                                      if (auto* m = dynamic_cast<MenuItem*>(c)) m->click();
                                      if (auto* x = dynamic_cast<CheckBox*>(c)) x->click();
                                  }),
                                  Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("key"), [this](const QStringList& a) {
        Form* f = a.size() < 2 ? nullptr : forms_.get(a[0]);
        if (!f) return false;
        const QKeyCombination k = QKeySequence(a[1])[0];
        QMetaObject::invokeMethod(
            this, guarded([f, k] { f->previewKey(int(k.key()), k.keyboardModifiers()); }),
            Qt::QueuedConnection);
        return true;
    });
    addVerb(QStringLiteral("dialog"), [](const QStringList& a) {
        auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        auto* edit = d ? d->findChild<QLineEdit*>() : nullptr;
        if (!edit) return false;
        edit->setText(a.join(u' '));
        QMetaObject::invokeMethod(d, &QDialog::accept, Qt::QueuedConnection);
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
    if (running_ ||
        (busy_ && busy_() && !qobject_cast<QDialog*>(QApplication::activeModalWidget())))
        return;
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
