#include "forms/ui/SpinArrows.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmorak {

namespace {
QToolButton* arrow(QWidget* parent, Qt::ArrowType type, const QString& name) {
    auto* b = new QToolButton(parent);
    b->setArrowType(type);
    b->setAutoRepeat(true);
    b->setFocusPolicy(Qt::NoFocus);
    b->setAccessibleName(name);
    b->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    return b;
}
} // namespace

SpinArrows::SpinArrows(QWidget* parent)
    : QWidget(parent), up_(arrow(this, Qt::UpArrow, tr("Up"))),
      down_(arrow(this, Qt::DownArrow, tr("Down"))) {
    auto* l = new QVBoxLayout(this);
    l->setContentsMargins(0, 0, 0, 0);
    l->setSpacing(0);
    l->addWidget(up_);
    l->addWidget(down_);
    setFocusPolicy(Qt::StrongFocus);
    connect(up_, &QToolButton::clicked, this, &SpinArrows::spinUp);
    connect(down_, &QToolButton::clicked, this, &SpinArrows::spinDown);
}

QSize SpinArrows::sizeHint() const {
    return {20, 28};
}

void SpinArrows::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Up)
        emit spinUp();
    else if (e->key() == Qt::Key_Down)
        emit spinDown();
    else
        QWidget::keyPressEvent(e);
}

} // namespace velmorak
