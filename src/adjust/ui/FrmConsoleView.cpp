#include "adjust/ui/AdjustViews.h"

#include "adjust/FrmConsole.h"
#include "adjust/ui/StepperView.h"
#include "cardinfo/ui/CardWidgets.h"
#include "forms/Boundary.h"
#include "forms/Form.h"
#include "forms/ui/Binding.h"

#include <QDialog>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmorak {

namespace {
// Brings a strip's tool tip up to date before Qt shows it.
class StripTips : public QObject {
  public:
    StripTips(FrmConsole* form, TestPicture which, QObject* parent)
        : QObject(parent), form_(form), which_(which) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if ((e->type() == QEvent::Enter || e->type() == QEvent::ToolTip) && form_ &&
            form_->isLoaded())
            atBoundary([this] { form_->stripHover(which_); });
        return QObject::eventFilter(watched, e);
    }

  private:
    FrmConsole* form_;
    TestPicture which_;
};

StepperView* stepper(const char* name, const QString& human) {
    auto* s = named(new StepperView, name);
    s->setAccessibleName(human);
    return s;
}

// A group with one stepper in it.
QGroupBox* single(const char* frame, const char* name, const QString& human) {
    auto* g = named(new QGroupBox, frame);
    auto* l = new QVBoxLayout(g);
    l->addWidget(stepper(name, human));
    return g;
}

// A test picture strip in its frame.
QGroupBox* strip(Form& form, TestPicture which, const char* frame, const char* name,
                 const QString& human) {
    auto* g = named(new QGroupBox, frame);
    auto* l = new QVBoxLayout(g);
    l->setContentsMargins(4, 4, 4, 4);
    auto* pic = named(new PictureView, name);
    pic->setAccessibleName(human);
    pic->setMinimumSize(96, 28);
    pic->setCursor(Qt::PointingHandCursor);
    pic->setAutoFillBackground(true);
    if (which == TestPicture::Sharp) {
        // Fine vertical stripes, as the sharpness window shows them.
        QPalette pal = pic->palette();
        pal.setColor(QPalette::Window, Qt::white);
        pal.setBrush(QPalette::Window, QBrush(Qt::black, Qt::VerPattern));
        pic->setPalette(pal);
    }
    if (auto* console = dynamic_cast<FrmConsole*>(&form))
        pic->installEventFilter(new StripTips(console, which, pic));
    l->addWidget(pic);
    return g;
}
} // namespace

QWidget* buildFrmConsoleView(Form& form) {
    registerAdjustWidgetBinders();
    registerCardWidgetBinders();
    auto* w = new QDialog;
    auto* outer = new QVBoxLayout(w);

    auto* top = new QHBoxLayout;
    auto* rez = named(new QLabel, "lblRez");
    QFont big = rez->font();
    big.setPointSize(big.pointSize() + 3);
    big.setBold(true);
    rez->setFont(big);
    rez->setAccessibleName(QObject::tr("Resolution"));
    top->addWidget(rez);
    top->addStretch();
    for (auto [label, text] : {std::pair{"lblSerial", "txtSerial"}, {"lblCardSN", "txtCardSN"}}) {
        auto* l = named(new QLabel, label);
        auto* t = named(new QLineEdit, text);
        t->setMaximumWidth(90);
        l->setBuddy(t);
        top->addWidget(l);
        top->addWidget(t);
    }
    outer->addLayout(top);

    auto* phase = named(new QGroupBox, "frPhase");
    auto* phaseGrid = new QGridLayout(phase);
    auto* fine = named(new QLabel, "lblFine");
    auto* fineStep = stepper("ucScrlPhase", QObject::tr("Phase, fine"));
    fine->setBuddy(fineStep);
    auto* coarse = named(new QLabel, "lblCoarse");
    auto* coarseStep = stepper("ucScrlCoarse", QObject::tr("Phase, coarse"));
    coarse->setBuddy(coarseStep);
    phaseGrid->addWidget(fine, 0, 0);
    phaseGrid->addWidget(fineStep, 0, 1);
    phaseGrid->addWidget(coarse, 1, 0);
    phaseGrid->addWidget(coarseStep, 1, 1);
    outer->addWidget(phase);

    auto* color = named(new QGroupBox, "frColor");
    auto* colorBox = new QVBoxLayout(color);
    colorBox->addWidget(stepper("ucScrlR", QObject::tr("Red")));
    colorBox->addWidget(stepper("ucScrlG", QObject::tr("Green")));
    colorBox->addWidget(stepper("ucScrlB", QObject::tr("Blue")));
    outer->addWidget(color);

    auto* levels = new QHBoxLayout;
    levels->addWidget(single("frBrite", "ucScrlBrite", QObject::tr("Brightness")));
    levels->addWidget(single("frContrast", "ucScrlContrast", QObject::tr("Contrast")));
    outer->addLayout(levels);
    auto* position = new QHBoxLayout;
    position->addWidget(single("frHPoz", "ucScrlHPoz", QObject::tr("Horizontal position")));
    position->addWidget(single("frVPoz", "ucScrlVPoz", QObject::tr("Vertical position")));
    outer->addLayout(position);

    auto* strips = new QHBoxLayout;
    strips->addWidget(
        strip(form, TestPicture::Sharp, "frSharp", "picSharp", QObject::tr("Sharpness test bars")));
    strips->addWidget(strip(form, TestPicture::Color, "frTestColor", "impicColor",
                            QObject::tr("Colour test bars")));
    strips->addWidget(
        strip(form, TestPicture::Gray, "frTestGray", "impicGray", QObject::tr("Grey test bars")));
    outer->addLayout(strips);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (const char* n : {"cmdDefault", "cmdSave", "cmdClose"})
        buttons->addWidget(named(new QPushButton, n));
    outer->addLayout(buttons);
    w->resize(form.width(), form.height());
    return w;
}

} // namespace velmorak
