#include "session/ui/FrmStartView.h"

#include "forms/Form.h"
#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"
#include "forms/ui/SpinArrows.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

namespace velmorak {

namespace {

QLineEdit* readOnlyText(const char* name, const QString& tip, int minWidth) {
    auto* t = named(new QLineEdit, name);
    t->setReadOnly(true);
    t->setToolTip(tip);
    t->setAccessibleName(tip);
    t->setMinimumWidth(minWidth);
    t->setPlaceholderText(tip);
    return t;
}

} // namespace

QWidget* buildFrmStartView(Form& form) {
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QVBoxLayout(central);

    auto* title = new QLabel(QStringLiteral("Velmorak"));
    QFont tf = title->font();
    tf.setPointSizeF(tf.pointSizeF() * 1.6);
    tf.setBold(true);
    title->setFont(tf);
    outer->addWidget(title);

    // Port row.
    auto* portRow = new QHBoxLayout;
    auto* lblCom = named(new QLabel, "lblCaptionCom");
    auto* txtCom = named(new QLineEdit, "txtCom");
    txtCom->setMaximumWidth(60);
    lblCom->setBuddy(txtCom);
    portRow->addWidget(lblCom);
    portRow->addWidget(txtCom);
    auto* spin = named(new SpinArrows, "SpinButton1");
    spin->setAccessibleName(QObject::tr("COM port up or down"));
    portRow->addWidget(spin);
    portRow->addSpacing(12);
    portRow->addWidget(named(new QPushButton, "cmdConnect"));
    portRow->addWidget(named(new QPushButton, "cmdDisconnect"));
    portRow->addWidget(named(new QPushButton, "cmdPorts"));
    portRow->addStretch();
    outer->addLayout(portRow);

    auto* hint = named(new QLabel, "lblMassage");
    hint->setStyleSheet(QStringLiteral("color: #a05000;"));
    outer->addWidget(hint);

    // What the card is.
    auto* card = new QGroupBox(QObject::tr("Card"));
    auto* cardRow = new QHBoxLayout(card);
    auto* kind = readOnlyText("txtNameCard", QObject::tr("Card kind"), 120);
    QFont bold = kind->font();
    bold.setBold(true);
    kind->setFont(bold);
    cardRow->addWidget(kind);
    cardRow->addSpacing(16);
    auto* lblFwv = named(new QLabel, "lblFwv");
    auto* txtFwv = readOnlyText("txtFwv", QObject::tr("Firmware version"), 70);
    txtFwv->setFont(bold);
    lblFwv->setBuddy(txtFwv);
    cardRow->addWidget(lblFwv);
    cardRow->addWidget(txtFwv);
    cardRow->addStretch();
    outer->addWidget(card);

    // What the card sees.
    auto* sync = new QGroupBox(QObject::tr("Sync"));
    auto* syncRow = new QHBoxLayout(sync);
    syncRow->addWidget(named(new QPushButton, "cmdSync"));
    auto* mark = named(new QLabel, "shp1");
    mark->setFixedSize(14, 14);
    mark->setFrameShape(QFrame::Box);
    syncRow->addWidget(mark);
    syncRow->addWidget(readOnlyText("txtPar1", QObject::tr("Vertical frequency (Hz)"), 90));
    syncRow->addWidget(readOnlyText("txtH", QObject::tr("Horizontal reading"), 110));
    syncRow->addWidget(readOnlyText("txtPar2", QObject::tr("Raw sync counts"), 120));
    syncRow->addStretch();
    outer->addWidget(sync);

    auto* msg = readOnlyText("txtMsg", QObject::tr("Progress"), 200);
    msg->setFrame(false);
    outer->addWidget(msg);
    outer->addStretch();

    auto* bottom = new QHBoxLayout;
    // Why the card could not be reached, in plain words.
    auto* reason = named(new QLabel, "lblReason");
    reason->setWordWrap(true);
    reason->setTextInteractionFlags(Qt::TextSelectableByMouse);
    reason->setAccessibleName(QObject::tr("Why the card could not be reached"));
    bottom->addWidget(reason, 1);
    bottom->addStretch();
    bottom->addWidget(named(new QPushButton, "cmdExit"));
    outer->addLayout(bottom);

    // The classification lists are never shown.
    auto* hidden = new QWidget(central);
    hidden->hide();
    named(new QComboBox(hidden), "cboPresets")->setAccessibleName(QObject::tr("Presets"));
    const std::pair<const char*, QString> lists[] = {
        {"lstVGroup", QObject::tr("Vertical groups")},
        {"lstVBorders", QObject::tr("Vertical borders")},
        {"lstHBorders", QObject::tr("Horizontal borders")},
        {"lstHGroup", QObject::tr("Horizontal groups")}};
    for (const auto& [n, human] : lists)
        named(new QListWidget(hidden), n)->setAccessibleName(human);

    w->setCentralWidget(central);
    named(w->statusBar(), "StatusBar1");
    w->resize(560, 330);
    return w;
}

} // namespace velmorak
