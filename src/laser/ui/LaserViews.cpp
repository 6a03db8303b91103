#include "laser/ui/LaserViews.h"

#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"
#include "laser/LaserMaps.h"
#include "registers/ui/RegisterGridView.h"
#include "registers/ui/RegisterTabsView.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace velmorak {

namespace {

// The scroll bar and value box of a row; only the current codes of the NEW laser are typed.
QList<QWidget*> rowControls(const RegisterRow& row) {
    QList<QWidget*> out;
    if (!row.control) return out;
    for (const QString& name : QString::fromLatin1(row.control).split(u',')) {
        if (name.startsWith(QLatin1String("HScrl"))) {
            auto* bar = named(new QScrollBar(Qt::Horizontal), name);
            bar->setMinimumWidth(140);
            out << bar;
            continue;
        }
        auto* text = named(new QLineEdit, name);
        text->setReadOnly(!name.startsWith(QLatin1String("txtIM")));
        text->setMaximumWidth(60);
        out << text;
    }
    return out;
}

// Buttons, the message box and the serial number, top to bottom.
QVBoxLayout* actions(std::initializer_list<const char*> buttons) {
    auto* l = new QVBoxLayout;
    for (const char* b : buttons)
        l->addWidget(named(new QPushButton, b));
    auto* msg = named(new QLineEdit, "txtMsg");
    msg->setReadOnly(true);
    msg->setAccessibleName(QObject::tr("Message"));
    QFont bold = msg->font();
    bold.setBold(true);
    msg->setFont(bold);
    l->addWidget(msg);
    l->addSpacing(12);
    auto* serialLabel = named(new QLabel, "lblCSerN");
    auto* serial = named(new QLineEdit, "txtSerial");
    serial->setMaximumWidth(90);
    serial->setAccessibleName(QObject::tr("Serial #"));
    serialLabel->setBuddy(serial);
    l->addWidget(serialLabel);
    l->addWidget(serial);
    l->addStretch();
    return l;
}

QMainWindow* window(Form& form, QWidget* table, QVBoxLayout* side, QSize size) {
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QHBoxLayout(central);
    outer->addWidget(table, 1);
    outer->addLayout(side);
    w->setCentralWidget(central);
    w->resize(size);
    return w;
}

} // namespace

QWidget* buildFrmLaserView(Form& form) {
    const RegisterGrid& g = kOldLaserMap.grids[0];
    auto* frame = named(new QGroupBox, g.frame);
    frame->setAccessibleName(QObject::tr("Registers"));
    auto* l = new QVBoxLayout(frame);
    l->setContentsMargins(0, 0, 0, 0);
    l->addWidget(new RegisterGridView(kOldLaserMap, g, rowControls, frame));
    return window(form, frame,
                  actions({"cmdLoad", "cmdRead", "cmdDefault", "cmdPrevios", "cmdRestore"}),
                  QSize(1000, 720));
}

QWidget* buildFrmLaserOmronView(Form& form) {
    QTabWidget* tabs = buildRegisterTabs(kNewLaserMap, rowControls);
    tabs->setObjectName(QStringLiteral("TabStrip1"));
    tabs->setAccessibleName(QObject::tr("Stream"));
    return window(form, tabs, actions({"cmdLoad", "cmdRead", "cmdDefault"}), QSize(1000, 640));
}

} // namespace velmorak
