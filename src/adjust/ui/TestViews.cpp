#include "adjust/ui/TestViews.h"

#include "adjust/TestWindows.h"
#include "forms/Boundary.h"
#include "forms/ui/Binding.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cstring>

namespace velmorak {

QImage stripeBitmap() {
    QImage img(FrmTest::kStripeWidth, FrmTest::kStripeHeight, QImage::Format_Mono);
    img.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    // Most significant bit first: 0101... puts white (index 0) in the even columns.
    for (int y = 0; y < img.height(); ++y)
        std::memset(img.scanLine(y), 0x55, size_t(img.bytesPerLine()));
    return img;
}

namespace {

class TestPatternWindow : public QWidget {
  public:
    explicit TestPatternWindow(FrmTest& form) : form_(&form), stripes_(stripeBitmap()) {
        setAccessibleName(tr("Sharpness test pattern"));
        setFocusPolicy(Qt::StrongFocus);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

  protected:
    void paintEvent(QPaintEvent* e) override {
        QPainter p(this);
        p.fillRect(e->rect(), Qt::white);
        p.drawImage(0, 0, stripes_);
    }
    void mouseReleaseEvent(QMouseEvent*) override {
        if (isVisible()) atBoundary([this] { form_->mouseUp(); });
    }
    void mouseDoubleClickEvent(QMouseEvent*) override {
        if (isVisible()) atBoundary([this] { form_->dblClick(); });
    }
    void keyPressEvent(QKeyEvent* e) override { e->accept(); }
    void keyReleaseEvent(QKeyEvent* e) override {
        e->accept();
        if (e->isAutoRepeat() || !isVisible()) return;
        const int key = e->key();
        atBoundary([this, key] { form_->keyUp(key); });
    }

  private:
    FrmTest* form_;
    QImage stripes_;
};

class BarsWindow : public QWidget {
  public:
    explicit BarsWindow(FrmTestBars& form) : form_(&form) {}

  protected:
    void mouseReleaseEvent(QMouseEvent*) override {
        if (isVisible()) atBoundary([this] { form_->mouseUp(); });
    }

  private:
    FrmTestBars* form_;
};

bool registerBarsBinder() {
    registerWidgetBinder(BarsPictureView::staticMetaObject,
                         [](Control& c, QWidget* w) -> std::optional<Connection> {
                             auto* model = dynamic_cast<Image*>(&c);
                             auto* view = qobject_cast<BarsPictureView*>(w);
                             if (!model || !view) return std::nullopt;
                             view->attach(model);
                             QPointer<BarsPictureView> guard(view);
                             return Connection([guard] {
                                 if (guard) guard->attach(nullptr);
                             });
                         });
    return true;
}

} // namespace

BarsPictureView::BarsPictureView(FrmTestBars& form, QWidget* parent)
    : QWidget(parent), form_(&form) {
    static const bool once = registerBarsBinder();
    (void)once;
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void BarsPictureView::attach(Image* model) {
    link_ = ScopedConnection();
    model_ = model;
    picture_ = QImage();
    if (model_) {
        auto load = [this] {
            picture_ = model_->picture().isEmpty() ? QImage() : QImage(model_->picture());
            setToolTip(model_->toolTipText());
            update();
        };
        link_ = model_->onPropertyChanged.connect([load](Prop p) {
            if (p == Prop::Picture || p == Prop::ToolTip) load();
        });
        load();
    }
    update();
}

void BarsPictureView::paintEvent(QPaintEvent* e) {
    QPainter p(this);
    p.fillRect(e->rect(), palette().window());
    if (!picture_.isNull()) p.drawImage(rect(), picture_);
}

void BarsPictureView::mouseReleaseEvent(QMouseEvent*) {
    if (isVisible() && model_) atBoundary([this] { form_->pictureMouseUp(); });
}

QWidget* buildFrmTestView(Form& form) {
    auto* w = new TestPatternWindow(dynamic_cast<FrmTest&>(form));
    w->resize(form.width(), form.height());
    return w;
}

QWidget* buildFrmTestBarsView(Form& form) {
    auto& bars = dynamic_cast<FrmTestBars&>(form);
    auto* w = new BarsWindow(bars);
    auto* layout = new QHBoxLayout(w);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* picture = named(new BarsPictureView(bars), "impicT");
    picture->setAccessibleName(form.caption());
    picture->setFixedWidth(FrmTestBars::kPictureWidth);
    layout->addWidget(picture);
    layout->addStretch(1);
    w->resize(form.width(), form.height());
    return w;
}

} // namespace velmorak
