#include "cardinfo/ui/CardInfoViews.h"

#include "cardinfo/ui/CardWidgets.h"
#include "forms/ui/Binding.h"
#include "forms/ui/MenuBar.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

namespace {
// The value column of the gauges is centred.
class CentredDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->displayAlignment = Qt::AlignCenter;
    }
};

// The gauges: the first column as wide as its labels in the font at hand.
class GaugeTable : public QTableWidget {
  protected:
    void showEvent(QShowEvent* e) override {
        QTableWidget::showEvent(e);
        resizeColumnToContents(0);
        setFixedWidth(columnWidth(0) + columnWidth(1) + 2 * frameWidth());
    }
};

const char* const kLedNames[] = {"Power", "Diagnostics", "Tx Error", "Rx Error", "DVI",
                                 "RGB",   "SHV",         "SOG",      "USB"};
} // namespace

QWidget* buildFrmStatusView(Form& form) {
    registerCardWidgetBinders();
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* central = new QWidget;
    auto* outer = new QVBoxLayout(central);

    // The card: kind, mode, fibres, firmware and picture.
    auto* card = named(new QGroupBox, "SSFrame1");
    card->setAccessibleName(QObject::tr("Card"));
    auto* cardRow = new QHBoxLayout(card);
    auto* facts = new QVBoxLayout;
    auto* name = named(new QLabel, "lblName");
    QFont big = name->font();
    big.setPointSize(big.pointSize() + 5);
    big.setBold(true);
    name->setFont(big);
    facts->addWidget(name);
    facts->addWidget(named(new QLabel, "lblDescr"));
    facts->addWidget(named(new QLabel, "lblOpticType"));
    auto* fw = new QHBoxLayout;
    auto* fwCaption = named(new QLabel, "lblCaptionvver");
    auto* fwText = named(new QLabel, "lblFWVersion");
    fwCaption->setBuddy(fwText);
    fw->addWidget(fwCaption);
    fw->addWidget(fwText);
    fw->addStretch();
    facts->addLayout(fw);
    facts->addStretch();
    cardRow->addLayout(facts);
    auto* picture = named(new PictureView, "imCard");
    picture->setMinimumSize(300, 173);
    picture->setAccessibleName(QObject::tr("Card picture"));
    picture->setCursor(Qt::PointingHandCursor);
    cardRow->addWidget(picture, 1);
    outer->addWidget(card);

    auto* middle = new QHBoxLayout;
    auto* status = named(new QGroupBox, "fraStatus");
    status->setAccessibleName(QObject::tr("Temperature and supplies"));
    auto* statusBox = new QVBoxLayout(status);
    auto* gauges = named(new GaugeTable, "grPar");
    gauges->setSelectionMode(QAbstractItemView::NoSelection);
    gauges->setFocusPolicy(Qt::NoFocus);
    gauges->setAccessibleName(QObject::tr("Temperature and supplies"));
    gauges->setItemDelegateForColumn(1, new CentredDelegate(gauges));
    gauges->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    gauges->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    gauges->setFixedHeight(4 * 20 + 4);
    statusBox->addWidget(gauges);
    statusBox->addStretch();
    middle->addWidget(status);

    auto* leds = named(new QGroupBox, "frLEDs");
    auto* ledGrid = new QGridLayout(leds);
    for (int i = 0; i < 9; ++i) {
        auto* led = named(new LedView, QStringLiteral("shpLed(%1)").arg(i));
        led->setAccessibleName(QObject::tr("%1 LED").arg(QString::fromLatin1(kLedNames[i])));
        auto* label = named(new QLabel, QStringLiteral("lblL1(%1)").arg(i));
        ledGrid->addWidget(led, i % 5, (i / 5) * 2);
        ledGrid->addWidget(label, i % 5, (i / 5) * 2 + 1);
    }
    middle->addWidget(leds, 1);
    outer->addLayout(middle);

    auto* bottom = new QHBoxLayout;
    auto* sw = named(new SwitchView, "ucSwitchDig2");
    sw->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    bottom->addWidget(sw);
    bottom->addStretch();
    bottom->addWidget(named(new QPushButton, "cmdRefresh"));
    outer->addLayout(bottom);

    // The switch tip lies over the window when shown.
    auto* tip = named(new PictureView(central), "picTipSw2");
    tip->setAccessibleName(QObject::tr("Switch settings"));
    tip->setGeometry(10, 10, 520, 300);
    tip->setAutoFillBackground(true);

    w->setCentralWidget(central);
    w->resize(form.width(), form.height());
    return w;
}

QWidget* buildImCardPinoutView(Form& form) {
    registerCardWidgetBinders();
    auto* w = new QMainWindow;
    buildMenuBar(w, form);
    auto* picture = named(new PictureView, "picPinout");
    picture->setAccessibleName(QObject::tr("Card pinout"));
    picture->setAutoFillBackground(true);
    QPalette pal = picture->palette();
    pal.setColor(QPalette::Window, Qt::white);
    picture->setPalette(pal);
    w->setCentralWidget(picture);
    w->resize(720, 480);
    return w;
}

} // namespace velmorak
