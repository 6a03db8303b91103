#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include "forms/Event.h"

namespace velmorak {

class Form;
class FrmTestBars;
class Image;

// The sharpness pattern of frmTest: one-pixel columns, white in the even ones.
QImage stripeBitmap();

// The picture of a bar window: the bar file stretched to the widget, which is as tall as the
// window. Binds Image controls; a release on it is the picture's mouse release.
class BarsPictureView : public QWidget {
    Q_OBJECT
  public:
    explicit BarsPictureView(FrmTestBars& form, QWidget* parent = nullptr);
    void attach(Image* model);

  protected:
    void paintEvent(QPaintEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

  private:
    FrmTestBars* form_;
    Image* model_ = nullptr;
    ScopedConnection link_;
    QImage picture_;
};

// frmTest: the stripes at their own size; releases, double clicks and keys go to the form.
QWidget* buildFrmTestView(Form& form);
// frmTestC and frmTestG: impicT down the left of the window.
QWidget* buildFrmTestBarsView(Form& form);

} // namespace velmorak
