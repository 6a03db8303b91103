#pragma once

#include "forms/Event.h"

#include <QPointer>
#include <QWidget>

class QSvgRenderer;

namespace velmorak {

class PictureBox;
class Shape;
class UcSwitchD10;

// A picture from a file (SVG drawn to any size, or a bitmap), fitted into the widget with its
// proportions kept; a press is the control's click. Binds PictureBox and Image controls.
class PictureView : public QWidget {
    Q_OBJECT
  public:
    explicit PictureView(QWidget* parent = nullptr);
    ~PictureView() override;
    void attach(PictureBox* model);
    void setFile(const QString& path);
    const QString& file() const { return file_; }
    QSize sizeHint() const override;
    // Where the picture is drawn inside the widget.
    QRectF pictureRect() const;

  protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    // A picture shown over the others (the switch tip) comes to the front.
    void showEvent(QShowEvent* e) override;

  private:
    PictureBox* model_ = nullptr;
    ScopedConnection link_;
    QString file_;
    QSvgRenderer* svg_ = nullptr;
    QPixmap* bitmap_ = nullptr;
};

// A round LED in the colour of its Shape.
class LedView : public QWidget {
    Q_OBJECT
  public:
    explicit LedView(QWidget* parent = nullptr);
    void attach(Shape* model);
    QSize sizeHint() const override { return {18, 18}; }

  protected:
    void paintEvent(QPaintEvent* e) override;

  private:
    Shape* model_ = nullptr;
    ScopedConnection link_;
};

// The framed ten-position switch: the body, its ten windows, the sliders and the direction
// mark. Presses go to the slider row or to the frame as the control tells them apart.
class SwitchView : public QWidget {
    Q_OBJECT
  public:
    explicit SwitchView(QWidget* parent = nullptr);
    void attach(UcSwitchD10* model);
    QSize sizeHint() const override;
    // Where slider i stands, in widget pixels.
    QRect sliderRect(int i) const;
    QRect bodyRect() const;
    QRect directionRect() const;

  protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;

  private:
    UcSwitchD10* model_ = nullptr;
    ScopedConnection link_;
};

void registerCardWidgetBinders();

} // namespace velmorak
