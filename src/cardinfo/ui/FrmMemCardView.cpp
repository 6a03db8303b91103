#include "cardinfo/FrmMemCard.h"
#include "cardinfo/ui/CardInfoViews.h"
#include "forms/ui/Binding.h"

#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

namespace {
// A press in a record field tells the window it was clicked.
class FieldClicks : public QObject {
  public:
    FieldClicks(FrmMemCard* form, QObject* parent) : QObject(parent), form_(form) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (e->type() == QEvent::MouseButtonPress && form_)
            atBoundary([this] { form_->fieldClick(); });
        return QObject::eventFilter(watched, e);
    }

  private:
    FrmMemCard* form_;
};

QLineEdit* field(QFormLayout* rows, const char* label, const char* box) {
    auto* l = named(new QLabel, label);
    auto* t = named(new QLineEdit, box);
    t->setMinimumWidth(240);
    l->setBuddy(t);
    rows->addRow(l, t);
    return t;
}
} // namespace

QWidget* buildFrmMemCardView(Form& form) {
    auto* w = new QMainWindow;
    // Close is a menu of its own with no items under it.
    w->menuBar()->addAction(QStringLiteral("&Close"))->setObjectName(QStringLiteral("mnuClose"));
    auto* central = new QWidget;
    auto* outer = new QVBoxLayout(central);
    auto* heading = named(new QLabel, "lblCapture");
    QFont big = heading->font();
    big.setPointSize(big.pointSize() + 4);
    big.setBold(true);
    heading->setFont(big);
    outer->addWidget(heading);

    auto* rows = new QFormLayout;
    QList<QLineEdit*> record;
    record << field(rows, "lblPartN", "txtPartN") << field(rows, "lblSerNumber", "txtSerN")
           << field(rows, "lblDate", "txtDate") << field(rows, "lblSalesOrder", "txtSalesOrder")
           << field(rows, "lblTechCode", "txtTechCode");
    outer->addLayout(rows);
    if (auto* mem = dynamic_cast<FrmMemCard*>(&form)) {
        auto* clicks = new FieldClicks(mem, w);
        for (QLineEdit* e : record)
            e->installEventFilter(clicks);
    }

    auto* counters = named(new QGroupBox, "fraVariables");
    counters->setAccessibleName(QObject::tr("Counters"));
    auto* counterRows = new QFormLayout(counters);
    for (auto [label, box] : {std::pair{"lblDays", "txtDays"}, std::pair{"lblTemp", "txtTemp"},
                              std::pair{"Label1", "txtDuration"}}) {
        auto* l = named(new QLabel, label);
        auto* t = named(new QLineEdit, box);
        t->setReadOnly(true);
        t->setMaximumWidth(90);
        l->setBuddy(t);
        counterRows->addRow(l, t);
    }
    outer->addWidget(counters);

    auto* repairsLabel = named(new QLabel, "lblRepiar");
    auto* repairs = named(new QTableWidget, "grRepair");
    repairsLabel->setBuddy(repairs);
    repairs->setMinimumHeight(90);
    outer->addWidget(repairsLabel);
    outer->addWidget(repairs, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const char* b : {"cmdAddR", "cmdApplyMem", "cmdClear"})
        buttons->addWidget(named(new QPushButton, b));
    outer->addLayout(buttons);

    w->setCentralWidget(central);
    w->resize(620, 400);
    return w;
}

} // namespace velmorak
