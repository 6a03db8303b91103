#pragma once

#include <QWidget>

class QToolButton;

namespace velmorak {

// The widget of a SpinButton: an up and a down arrow, repeating while held; Up and Down keys
// press them when it has the focus.
class SpinArrows : public QWidget {
    Q_OBJECT
  public:
    explicit SpinArrows(QWidget* parent = nullptr);
    QSize sizeHint() const override;

  signals:
    void spinUp();
    void spinDown();

  protected:
    void keyPressEvent(QKeyEvent* e) override;

  private:
    QToolButton* up_;
    QToolButton* down_;
};

} // namespace velmorak
