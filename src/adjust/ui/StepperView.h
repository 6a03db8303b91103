#pragma once

#include "forms/Event.h"

#include <QWidget>

namespace velmorak {

class UcScrollChange;

// The stepper as drawn: left arrow, track with its filled part, value label, right arrow.
// A held arrow repeats through the control's timer; Left and Right keys step as a click does.
class StepperView : public QWidget {
    Q_OBJECT
  public:
    explicit StepperView(QWidget* parent = nullptr);
    void attach(UcScrollChange* model);
    QSize sizeHint() const override { return {300, 22}; }
    QSize minimumSizeHint() const override { return {140, 18}; }
    QRect leftArrowRect() const;
    QRect rightArrowRect() const;

  protected:
    void paintEvent(QPaintEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void focusOutEvent(QFocusEvent* e) override;

  private:
    void release();
    UcScrollChange* model_ = nullptr;
    ScopedConnection link_;
    // The arrow held by the mouse: 0 none, 1 left, 2 right.
    int held_ = 0;
};

void registerAdjustWidgetBinders();

} // namespace velmorak
