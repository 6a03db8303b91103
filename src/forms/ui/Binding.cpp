#include "forms/ui/Binding.h"

#include "forms/ui/MenuItemAccessible.h"
#include "forms/ui/SpinArrows.h"

#include "forms/Boundary.h"
#include "platform/Freeze.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>

namespace velmorak {

namespace {

std::vector<std::pair<const QMetaObject*, WidgetBinder>>& widgetBinders() {
    static std::vector<std::pair<const QMetaObject*, WidgetBinder>> binders;
    return binders;
}

const WidgetBinder* widgetBinderFor(const QObject* o) {
    for (const auto& [cls, binder] : widgetBinders())
        if (o->metaObject()->inherits(cls)) return &binder;
    return nullptr;
}

bool bindableKind(QObject* o) {
    return widgetBinderFor(o) || qobject_cast<QAbstractButton*>(o) || qobject_cast<QLineEdit*>(o) ||
           qobject_cast<QPlainTextEdit*>(o) || qobject_cast<QLabel*>(o) ||
           qobject_cast<QAbstractSlider*>(o) || qobject_cast<QSpinBox*>(o) ||
           qobject_cast<QComboBox*>(o) || qobject_cast<QListWidget*>(o) ||
           qobject_cast<QTableWidget*>(o) || qobject_cast<QGroupBox*>(o) ||
           qobject_cast<QStatusBar*>(o) || qobject_cast<QProgressBar*>(o) ||
           qobject_cast<QTabWidget*>(o) || qobject_cast<QMenu*>(o) || qobject_cast<QAction*>(o) ||
           qobject_cast<SpinArrows*>(o);
}

// The text of the label whose buddy is w, if any.
QString buddyText(QWidget* root, QWidget* w) {
    for (auto* l : root->findChildren<QLabel*>())
        if (l->buddy() == w) return withoutMnemonic(l->text());
    return QString();
}

// A check box model holds 0 (unticked), 1 (ticked) or 2 (greyed).
void showCheck(QAbstractButton* box, int value) {
    if (auto* q = qobject_cast<QCheckBox*>(box)) {
        q->setTristate(value == 2);
        q->setCheckState(value == 1   ? Qt::Checked
                         : value == 2 ? Qt::PartiallyChecked
                                      : Qt::Unchecked);
    } else {
        box->setChecked(value == 1);
    }
}

template <class W> void setListItems(W* w, const QStringList& items) {
    w->clear();
    w->addItems(items);
}

} // namespace

void registerWidgetBinder(const QMetaObject& widgetClass, WidgetBinder binder) {
    auto& binders = widgetBinders();
    for (auto& entry : binders)
        if (entry.first == &widgetClass) {
            entry.second = std::move(binder);
            return;
        }
    binders.emplace_back(&widgetClass, std::move(binder));
}

FormBinding::FormBinding(Form& form, QWidget* root) : root_(root) {
    installMenuItemAccessible();
    QHash<QString, QObject*> targets;
    auto consider = [&](QObject* o, const QString& name) {
        if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || !bindableKind(o)) return;
        if (!targets.contains(name)) targets.insert(name, o);
    };
    for (auto* w : root->findChildren<QWidget*>()) {
        // The scroll arrows of a tab bar are Qt's own.
        if (qobject_cast<QTabBar*>(w->parentWidget())) continue;
        if (auto* m = qobject_cast<QMenu*>(w))
            consider(m->menuAction(), m->objectName());
        else
            consider(w, w->objectName());
    }
    for (auto* a : root->findChildren<QAction*>())
        consider(a, a->objectName());

    QSet<QString> used;
    for (Control* c : form.controls()) {
        const QString name = c->fullName();
        QObject* t = targets.value(name);
        if (!t) {
            if (c->visual()) unboundControls_ << QStringLiteral("%1 (%2)").arg(name, c->kind());
            continue;
        }
        used.insert(name);
        if (!bindOne(*c, t))
            mismatches_ << QStringLiteral("%1: %2 does not fit %3")
                               .arg(name, t->metaObject()->className(), c->kind());
        else
            bound_.insert(name, t);
    }
    for (auto it = targets.cbegin(); it != targets.cend(); ++it)
        if (!used.contains(it.key()))
            unboundWidgets_ << QStringLiteral("%1 (%2)").arg(it.key(),
                                                             it.value()->metaObject()->className());
    unboundWidgets_.sort();
}

FormBinding::~FormBinding() {
    unbind();
}

void FormBinding::unbind() {
    modelLinks_.clear();
    for (auto it = bound_.cbegin(); it != bound_.cend(); ++it) {
        QObject* o = it.value();
        if (!o) continue;
        o->disconnect(this);
        o->removeEventFilter(this);
        if (auto* qc = qobject_cast<QComboBox*>(o); qc && qc->lineEdit())
            qc->lineEdit()->disconnect(this);
    }
    bound_.clear();
    typing_.clear();
}

QStringList FormBinding::report() const {
    QStringList out;
    for (const auto& s : unboundControls_)
        out << QStringLiteral("no widget for control ") + s;
    for (const auto& s : unboundWidgets_)
        out << QStringLiteral("no control for widget ") + s;
    for (const auto& s : mismatches_)
        out << QStringLiteral("wrong widget for ") + s;
    return out;
}

void FormBinding::watch(Control& c, std::function<void(Prop)> sync) {
    for (Prop p :
         {Prop::Enabled,   Prop::Visible,   Prop::ToolTip,   Prop::Caption,   Prop::Text,
          Prop::Value,     Prop::Range,     Prop::Items,     Prop::ListIndex, Prop::Locked,
          Prop::MaxLength, Prop::Selection, Prop::Checked,   Prop::Default,   Prop::Style,
          Prop::Cells,     Prop::ColWidth,  Prop::RowHeight, Prop::RowCol,    Prop::Picture,
          Prop::Panels})
        if (p != Prop::Cell && p != Prop::Visible) sync(p);
    if (!c.visible()) sync(Prop::Visible);
    modelLinks_.emplace_back(c.onPropertyChanged.connect(std::move(sync)));
}

void FormBinding::common(Control& c, QWidget* w) {
    w->setAccessibleDescription(c.fullName());
    if (w->accessibleName().isEmpty()) {
        QString buddy = root_ ? buddyText(root_, w) : QString();
        if (!buddy.isEmpty()) w->setAccessibleName(buddy);
    }
}

bool FormBinding::bindOne(Control& c, QObject* target) {
    QPointer<QObject> guard(target);
    auto* w = qobject_cast<QWidget*>(target);
    // Enabled, visible and tool tip, for any widget.
    auto base = [&c, w](Prop p) {
        if (p == Prop::Enabled) w->setEnabled(c.enabled());
        if (p == Prop::Visible) w->setVisible(c.visible());
        if (p == Prop::ToolTip) w->setToolTip(c.toolTipText());
    };

    if (const WidgetBinder* custom = widgetBinderFor(target)) {
        std::optional<Connection> link = w ? (*custom)(c, w) : std::nullopt;
        if (!link) return false;
        modelLinks_.emplace_back(std::move(*link));
        common(c, w);
        return true;
    }

    if (auto* m = dynamic_cast<MenuItem*>(&c)) {
        auto* a = qobject_cast<QAction*>(target);
        if (!a) return false;
        watch(c, [m, a, guard](Prop p) {
            if (!guard) return;
            QSignalBlocker b(a);
            if (p == Prop::Enabled) a->setEnabled(m->enabled());
            if (p == Prop::Visible) a->setVisible(m->visible());
            if (p == Prop::ToolTip) a->setToolTip(m->toolTipText());
            if (p == Prop::Caption) {
                a->setText(m->caption());
                // A menu is named by its title, as its item in the bar is.
                if (auto* menu = a->menu()) menu->setAccessibleName(withoutMnemonic(m->caption()));
            }
            if (p == Prop::Checked) {
                a->setCheckable(m->checked() || a->isCheckable());
                a->setChecked(m->checked());
            }
        });
        if (auto* menu = a->menu()) menu->setAccessibleDescription(c.fullName());
        connect(a, &QAction::triggered, this, guarded([m, a] {
                    m->click();
                    QSignalBlocker b(a);
                    a->setChecked(m->checked());
                }));
        return true;
    }
    if (!w) return false;

    if (auto* t = dynamic_cast<TextBox*>(&c)) {
        if (auto* le = qobject_cast<QLineEdit*>(w)) {
            watch(c, [t, le, base, guard](Prop p) {
                if (!guard) return;
                QSignalBlocker b(le);
                base(p);
                if (p == Prop::Text && le->text() != t->text()) le->setText(t->text());
                if (p == Prop::Locked) le->setReadOnly(t->locked());
                if (p == Prop::MaxLength)
                    le->setMaxLength(t->maxLength() > 0 ? t->maxLength() : 32767);
                if (p == Prop::Selection) {
                    if (t->selLength() > 0)
                        le->setSelection(t->selStart(), t->selLength());
                    else
                        le->setCursorPosition(t->selStart());
                }
            });
            // Every change the model did not make (model writes block the signals): edits,
            // pastes, and text set through assistive technology.
            connect(le, &QLineEdit::textChanged, this,
                    guarded([t, le](const QString& s) { t->userEdit(s, le->cursorPosition()); }));
        } else if (auto* pe = qobject_cast<QPlainTextEdit*>(w)) {
            watch(c, [t, pe, base, guard](Prop p) {
                if (!guard) return;
                QSignalBlocker b(pe);
                base(p);
                if (p == Prop::Text && pe->toPlainText() != t->text()) pe->setPlainText(t->text());
                if (p == Prop::Locked) pe->setReadOnly(t->locked());
            });
            connect(pe, &QPlainTextEdit::textChanged, this, guarded([t, pe] {
                        t->userEdit(pe->toPlainText(), pe->textCursor().position());
                    }));
        } else {
            return false;
        }
        typing_.insert(w, t);
        w->installEventFilter(this);
        common(c, w);
        return true;
    }

    if (auto* s = dynamic_cast<ScrollBar*>(&c)) {
        if (auto* sl = qobject_cast<QAbstractSlider*>(w)) {
            watch(c, [s, sl, base, guard](Prop p) {
                if (!guard) return;
                QSignalBlocker b(sl);
                base(p);
                if (p == Prop::Range) {
                    sl->setRange(s->lowest(), s->highest());
                    sl->setInvertedAppearance(s->min() > s->max());
                    sl->setInvertedControls(s->min() > s->max());
                    sl->setSingleStep(s->smallChange());
                    sl->setPageStep(s->largeChange());
                }
                if (p == Prop::Range || p == Prop::Value) sl->setValue(s->value());
            });
            // Reachable by Tab, moved by the arrow keys.
            if (sl->focusPolicy() == Qt::NoFocus) sl->setFocusPolicy(Qt::StrongFocus);
            connect(sl, &QAbstractSlider::sliderPressed, this, guarded([s] { s->beginDrag(); }));
            connect(sl, &QAbstractSlider::sliderMoved, this, guarded([s](int v) { s->dragTo(v); }));
            connect(sl, &QAbstractSlider::sliderReleased, this, guarded([s] { s->endDrag(); }));
            connect(sl, &QAbstractSlider::valueChanged, this, guarded([s, sl](int v) {
                        if (!sl->isSliderDown()) s->userSetValue(v);
                    }));
        } else if (auto* sp = qobject_cast<QSpinBox*>(w)) {
            watch(c, [s, sp, base, guard](Prop p) {
                if (!guard) return;
                QSignalBlocker b(sp);
                base(p);
                if (p == Prop::Range) {
                    sp->setRange(s->lowest(), s->highest());
                    sp->setSingleStep(s->smallChange());
                }
                if (p == Prop::Range || p == Prop::Value) sp->setValue(s->value());
            });
            connect(sp, &QSpinBox::valueChanged, this, guarded([s](int v) { s->userSetValue(v); }));
        } else {
            return false;
        }
        common(c, w);
        return true;
    }

    if (auto* cb = dynamic_cast<CheckBox*>(&c)) {
        auto* box = qobject_cast<QAbstractButton*>(w);
        if (!box) return false;
        box->setCheckable(true);
        watch(c, [cb, box, base, guard](Prop p) {
            if (!guard) return;
            QSignalBlocker b(box);
            base(p);
            if (p == Prop::Caption) box->setText(cb->caption());
            if (p == Prop::Value) showCheck(box, cb->value());
        });
        // A change of state, not a click: accessibility toggles without clicking. Model
        // writes are blocked, so each user change reaches the model once.
        auto flip = guarded([cb, box] {
            cb->click();
            QSignalBlocker b(box);
            showCheck(box, cb->value());
        });
        if (auto* q = qobject_cast<QCheckBox*>(box))
            connect(q, &QCheckBox::stateChanged, this, flip);
        else
            connect(box, &QAbstractButton::toggled, this, flip);
        common(c, w);
        return true;
    }

    if (auto* o = dynamic_cast<OptionButton*>(&c)) {
        auto* rb = qobject_cast<QAbstractButton*>(w);
        if (!rb) return false;
        rb->setCheckable(true);
        rb->setAutoExclusive(false); // the models keep their groups
        watch(c, [o, rb, base, guard](Prop p) {
            if (!guard) return;
            QSignalBlocker b(rb);
            base(p);
            if (p == Prop::Caption) rb->setText(o->caption());
            if (p == Prop::Value) rb->setChecked(o->value());
        });
        connect(rb, &QAbstractButton::toggled, this, guarded([o, rb] {
                    o->click();
                    QSignalBlocker b(rb);
                    rb->setChecked(o->value());
                }));
        common(c, w);
        return true;
    }

    if (auto* btn = dynamic_cast<Button*>(&c)) {
        auto* pb = qobject_cast<QAbstractButton*>(w);
        if (!pb) return false;
        watch(c, [btn, pb, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (p == Prop::Caption) pb->setText(btn->caption());
            if (p == Prop::Default)
                if (auto* push = qobject_cast<QPushButton*>(pb)) push->setDefault(btn->isDefault());
        });
        connect(pb, &QAbstractButton::clicked, this, guarded([btn] { btn->click(); }));
        common(c, w);
        return true;
    }

    if (auto* l = dynamic_cast<Label*>(&c)) {
        auto* ql = qobject_cast<QLabel*>(w);
        if (!ql) return false;
        ql->setTextFormat(Qt::PlainText);
        watch(c, [l, ql, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (p == Prop::Caption) ql->setText(l->caption());
        });
        common(c, w);
        return true;
    }

    if (auto* pic = dynamic_cast<PictureBox*>(&c)) {
        auto* ql = qobject_cast<QLabel*>(w);
        if (!ql) return false;
        watch(c, [pic, ql, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (p == Prop::Picture) {
                if (pic->picture().isEmpty())
                    ql->clear();
                else
                    ql->setPixmap(QPixmap(pic->picture()));
            }
        });
        common(c, w);
        return true;
    }

    if (auto* cbo = dynamic_cast<ComboBox*>(&c)) {
        auto* qc = qobject_cast<QComboBox*>(w);
        if (!qc) return false;
        auto connectEdit = [this, cbo, qc] {
            if (auto* le = qc->lineEdit()) {
                // Once per line edit, however often the style is set.
                disconnect(le, &QLineEdit::textEdited, this, nullptr);
                connect(le, &QLineEdit::textEdited, this,
                        guarded([cbo](const QString& s) { cbo->userEdit(s); }));
            }
        };
        watch(c, [cbo, qc, base, guard, connectEdit](Prop p) {
            if (!guard) return;
            QSignalBlocker b(qc);
            base(p);
            if (p == Prop::Style) {
                qc->setEditable(cbo->style() == ComboBox::Style::Dropdown);
                connectEdit();
            }
            if (p == Prop::Items) setListItems(qc, cbo->items());
            if (p == Prop::Items || p == Prop::ListIndex || p == Prop::Style)
                qc->setCurrentIndex(cbo->listIndex());
            if (qc->isEditable() && qc->currentText() != cbo->text()) qc->setEditText(cbo->text());
        });
        connect(qc, &QComboBox::activated, this, guarded([cbo](int i) { cbo->userSelect(i); }));
        common(c, w);
        return true;
    }

    if (auto* lst = dynamic_cast<ListBox*>(&c)) {
        auto* lw = qobject_cast<QListWidget*>(w);
        if (!lw) return false;
        watch(c, [lst, lw, base, guard](Prop p) {
            if (!guard) return;
            QSignalBlocker b(lw);
            base(p);
            if (p == Prop::Items) setListItems(lw, lst->items());
            if (p == Prop::Items || p == Prop::ListIndex) lw->setCurrentRow(lst->listIndex());
        });
        connect(lw, &QListWidget::currentRowChanged, this,
                guarded([lst](int r) { lst->userSelect(r); }));
        common(c, w);
        return true;
    }

    if (auto* g = dynamic_cast<Grid*>(&c)) {
        auto* tw = qobject_cast<QTableWidget*>(w);
        if (!tw) return false;
        tw->setEditTriggers(QAbstractItemView::NoEditTriggers);
        tw->horizontalHeader()->hide();
        tw->verticalHeader()->hide();
        auto cell = [g, tw](int r, int col) {
            auto* it = tw->item(r, col);
            if (!it) {
                it = new QTableWidgetItem;
                tw->setItem(r, col, it);
            }
            it->setText(g->textMatrix(r, col));
            bool fixed = r < g->fixedRows() || col < g->fixedCols();
            it->setBackground(fixed ? tw->palette().button() : tw->palette().base());
            it->setFlags(fixed ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        };
        watch(c, [g, tw, base, guard, cell](Prop p) {
            if (!guard) return;
            QSignalBlocker b(tw);
            base(p);
            if (p == Prop::Cells) {
                tw->setRowCount(g->rows());
                tw->setColumnCount(g->cols());
                for (int r = 0; r < g->rows(); ++r)
                    for (int col = 0; col < g->cols(); ++col)
                        cell(r, col);
            }
            if (p == Prop::Cell) cell(g->changedRow(), g->changedCol());
            if (p == Prop::ColWidth || p == Prop::Cells)
                for (int col = 0; col < g->cols(); ++col)
                    if (g->colWidth(col) >= 0) tw->setColumnWidth(col, g->colWidth(col));
            if (p == Prop::RowHeight && g->rowHeight() > 0)
                tw->verticalHeader()->setDefaultSectionSize(g->rowHeight());
            if (p == Prop::RowCol || p == Prop::Cells) tw->setCurrentCell(g->row(), g->col());
        });
        connect(tw, &QTableWidget::cellClicked, this,
                guarded([g](int r, int col) { g->userClick(r, col); }));
        common(c, w);
        return true;
    }

    if (auto* f = dynamic_cast<Frame*>(&c)) {
        auto* gb = qobject_cast<QGroupBox*>(w);
        watch(c, [f, gb, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (gb && p == Prop::Caption) gb->setTitle(f->caption());
        });
        common(c, w);
        return true;
    }

    if (auto* sb = dynamic_cast<StatusBar*>(&c)) {
        auto* qs = qobject_cast<QStatusBar*>(w);
        if (!qs) return false;
        auto labels = std::make_shared<std::vector<QPointer<QLabel>>>();
        watch(c, [sb, qs, base, guard, labels](Prop p) {
            if (!guard) return;
            base(p);
            if (p != Prop::Panels) return;
            while (int(labels->size()) < sb->panelCount()) {
                auto* l = new QLabel(qs);
                l->setTextFormat(Qt::PlainText);
                qs->addPermanentWidget(l, 1);
                labels->push_back(l);
            }
            for (size_t i = 0; i < labels->size(); ++i) {
                if (!(*labels)[i]) continue;
                bool used = int(i) < sb->panelCount();
                (*labels)[i]->setVisible(used);
                (*labels)[i]->setText(used ? sb->panels()[qsizetype(i)] : QString());
            }
        });
        common(c, w);
        return true;
    }

    if (auto* pb = dynamic_cast<ProgressBar*>(&c)) {
        auto* qp = qobject_cast<QProgressBar*>(w);
        if (!qp) return false;
        watch(c, [pb, qp, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (p == Prop::Range) qp->setRange(pb->min(), pb->max());
            if (p == Prop::Range || p == Prop::Value) qp->setValue(pb->value());
        });
        common(c, w);
        return true;
    }

    if (auto* ts = dynamic_cast<TabStrip*>(&c)) {
        auto* tw = qobject_cast<QTabWidget*>(w);
        if (!tw) return false;
        watch(c, [ts, tw, base, guard](Prop p) {
            if (!guard) return;
            QSignalBlocker b(tw);
            base(p);
            if (p == Prop::Items)
                for (int i = 0; i < tw->count() && i < ts->tabs().size(); ++i)
                    tw->setTabText(i, ts->tabs()[i]);
            if (p == Prop::ListIndex && ts->selectedIndex() > 0)
                tw->setCurrentIndex(ts->selectedIndex() - 1);
        });
        connect(tw, &QTabWidget::currentChanged, this,
                guarded([ts](int i) { ts->userSelect(i + 1); }));
        common(c, w);
        return true;
    }

    if (auto* sp = dynamic_cast<SpinButton*>(&c)) {
        auto* arrows = qobject_cast<SpinArrows*>(w);
        if (!arrows) return false;
        watch(c, [base, guard](Prop p) {
            if (guard) base(p);
        });
        connect(arrows, &SpinArrows::spinUp, this, guarded([sp] { sp->spinUp(); }));
        connect(arrows, &SpinArrows::spinDown, this, guarded([sp] { sp->spinDown(); }));
        common(c, w);
        return true;
    }

    if (auto* sh = dynamic_cast<Shape*>(&c)) {
        watch(c, [sh, w, base, guard](Prop p) {
            if (!guard) return;
            base(p);
            if (p == Prop::Value) {
                QPalette pal = w->palette();
                pal.setColor(QPalette::Window, QColor::fromRgb(sh->fillColor()));
                w->setPalette(pal);
                w->setAutoFillBackground(true);
            }
        });
        common(c, w);
        return true;
    }
    return false;
}

bool FormBinding::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !typing_.contains(watched)) return false;
    if (Freeze::active()) {
        // Typed during a card pause: the key comes again after it.
        Freeze::repost(watched, event->clone());
        return true;
    }
    bool swallowed = false;
    atBoundary([&] { swallowed = typeKey(watched, static_cast<QKeyEvent*>(event)); });
    return swallowed;
}

bool FormBinding::typeKey(QObject* watched, QKeyEvent* ke) {
    TextBox* t = typing_.value(watched);
    if (!t) return false;
    if (ke->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    int key = 0;
    if (ke->key() == Qt::Key_Backspace)
        key = 8;
    else if (ke->key() == Qt::Key_Return || ke->key() == Qt::Key_Enter)
        key = 13;
    else if (ke->key() == Qt::Key_Escape)
        key = 27;
    else if (ke->text().size() == 1 && ke->text()[0].unicode() >= 32)
        key = ke->text()[0].unicode();
    else
        return false;

    // The model types at the widget's selection.
    if (auto* le = qobject_cast<QLineEdit*>(watched)) {
        int start = le->hasSelectedText() ? le->selectionStart() : le->cursorPosition();
        t->setSelStart(start);
        t->setSelLength(int(le->selectedText().size()));
    } else if (auto* pe = qobject_cast<QPlainTextEdit*>(watched)) {
        auto cur = pe->textCursor();
        t->setSelStart(cur.selectionStart());
        t->setSelLength(cur.selectionEnd() - cur.selectionStart());
        if (key == 13) {
            int k = 13;
            t->onKeyPress(k);
            if (k == 0) return true;
            t->setSelText(QStringLiteral("\n"));
            return true;
        }
    }
    t->keyPress(key);
    // Enter and Escape go on to the window (default and cancel buttons) unless swallowed.
    if (ke->key() == Qt::Key_Return || ke->key() == Qt::Key_Enter || ke->key() == Qt::Key_Escape)
        return key == 0;
    return true;
}

std::unique_ptr<FormBinding> bindForm(Form& form, QWidget* root) {
    return std::make_unique<FormBinding>(form, root);
}

} // namespace velmorak
