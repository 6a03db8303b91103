#include "resdb/ui/FrmSettingsView.h"

#include "forms/Form.h"
#include "forms/ui/Binding.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmorak {

namespace {

enum class Glyph { Refresh, Print, Exit };

// The toolbar's pictures, drawn here: a turning arrow, a printer, a door with an arrow.
QIcon drawIcon(Glyph g) {
    QPixmap pm(32, 32);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    const QColor ink(0x20, 0x40, 0x80);
    p.setPen(QPen(ink, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    switch (g) {
    case Glyph::Refresh: {
        p.drawArc(QRectF(6, 6, 20, 20), 60 * 16, 280 * 16);
        QPainterPath head;
        head.moveTo(24, 2);
        head.lineTo(27, 11);
        head.lineTo(18, 10);
        head.closeSubpath();
        p.fillPath(head, ink);
        break;
    }
    case Glyph::Print:
        p.drawRect(QRectF(9, 4, 14, 9));
        p.setBrush(QColor(0xD0, 0xD8, 0xE8));
        p.drawRoundedRect(QRectF(3, 12, 26, 11), 2, 2);
        p.setBrush(Qt::white);
        p.drawRect(QRectF(9, 19, 14, 9));
        break;
    case Glyph::Exit:
        p.drawRect(QRectF(5, 4, 13, 24));
        p.drawLine(QPointF(14, 16), QPointF(28, 16));
        p.drawLine(QPointF(23, 11), QPointF(28, 16));
        p.drawLine(QPointF(23, 21), QPointF(28, 16));
        break;
    }
    return QIcon(pm);
}

QToolButton* toolButton(const char* name, Glyph g, const QString& text) {
    auto* b = named(new QToolButton, name);
    b->setIcon(drawIcon(g));
    b->setIconSize(QSize(24, 24));
    b->setToolButtonStyle(Qt::ToolButtonIconOnly);
    b->setAccessibleName(text);
    return b;
}

} // namespace

QWidget* buildFrmSettingsView(Form& form) {
    (void)form;
    auto* w = new QMainWindow;
    // The window's three menu items stand in the bar itself.
    for (const char* m : {"mnuPrint", "mnuRefresh", "mnuExit"})
        w->menuBar()->addAction(QString())->setObjectName(QString::fromLatin1(m));

    auto* bar = new QToolBar(QObject::tr("Table"));
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setMovable(false);
    bar->addWidget(toolButton("Toolbar1_refresh", Glyph::Refresh, QObject::tr("Refresh Table")));
    bar->addWidget(toolButton("Toolbar1_print_tbl", Glyph::Print, QObject::tr("Print Table")));
    bar->addWidget(toolButton("Toolbar1_exit_tbl", Glyph::Exit, QObject::tr("Exit")));
    w->addToolBar(bar);

    auto* central = new QWidget;
    auto* l = new QVBoxLayout(central);
    auto* pickRow = new QHBoxLayout;
    auto* label = named(new QLabel, "lblCPresets");
    auto* presets = named(new QComboBox, "cboPresets");
    presets->setEditable(true);
    presets->setInsertPolicy(QComboBox::NoInsert);
    presets->setMinimumWidth(180);
    label->setBuddy(presets);
    pickRow->addWidget(label);
    pickRow->addWidget(presets);
    pickRow->addStretch();
    auto* msg = named(new QLineEdit, "txtMsg");
    msg->setReadOnly(true);
    msg->setMaximumWidth(120);
    msg->setAccessibleName(QObject::tr("Load result"));
    QFont bold = msg->font();
    bold.setBold(true);
    msg->setFont(bold);
    pickRow->addWidget(msg);
    l->addLayout(pickRow);

    auto* grid = named(new QTableWidget, "DBGrid1");
    grid->setAccessibleName(QObject::tr("Resolutions"));
    grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    l->addWidget(grid, 1);

    auto* buttons = new QHBoxLayout;
    for (const char* b : {"cmdLoad", "cmdRemove", "cmdAdjust"})
        buttons->addWidget(named(new QPushButton, b));
    buttons->addStretch();
    buttons->addWidget(named(new QPushButton, "cmdClose"));
    l->addLayout(buttons);

    w->setCentralWidget(central);
    w->resize(760, 460);
    return w;
}

} // namespace velmorak
