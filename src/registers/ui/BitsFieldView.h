#pragma once

#include "forms/Event.h"

#include <QPointer>
#include <QWidget>

#include <array>

class QLabel;
class QPushButton;

namespace velmorak {

class UcBitsField;

// The drawing of a ucBitsField: eight cells, bit 7 leftmost, a gap between the nibbles, then
// the byte in decimal and in hexadecimal. A click on a cell (or Space on a focused cell) goes to
// the model's click. Named
// "ucBitsField1(3)" it binds to that member through FormBinding; attach() binds it directly.
class BitsFieldView : public QWidget {
    Q_OBJECT
  public:
    explicit BitsFieldView(QWidget* parent = nullptr);
    ~BitsFieldView() override;

    void attach(UcBitsField* model);
    void detach();
    UcBitsField* model() const { return model_; }
    // The human name of the row for assistive technology: the row, and each cell
    // "<name>, bit 3".
    void setRowName(const QString& name);

    QPushButton* cell(int bit) const { return cells_[size_t(bit)]; }
    QLabel* fsumLabel() const { return fsum_; }
    QLabel* hexLabel() const { return hex_; }

  protected:
    void showEvent(QShowEvent* e) override;
    void changeEvent(QEvent* e) override;

  private:
    void sync();
    std::array<QPushButton*, 8> cells_{};
    QLabel* fsum_ = nullptr;
    QLabel* hex_ = nullptr;
    UcBitsField* model_ = nullptr;
    ScopedConnection link_;
};

// Lets FormBinding bind BitsFieldView widgets to ucBitsField models by name. Runs once on its
// own when the first view is made.
void registerBitsFieldBinder();

} // namespace velmorak
