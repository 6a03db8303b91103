#pragma once

#include "forms/Control.h"

#include <QString>
#include <QtGlobal>

#include <array>

namespace velmorak {

// One byte of a chip register as eight cells, most significant shown first. The cells are the
// register image of the editor windows: what stands in them is what gets loaded and saved.
// Every per-bit property acts on the cell that BitIndex names.
class UcBitsField : public Control {
  public:
    // The background of a cell, the only sign of its state.
    enum class CellBack {
        Hidden,     // grey 0x808080, disabled, empty
        ButtonFace, // shown, not editable
        Window,     // shown and editable
        ReadBack,   // pale yellow 0xFFFFC0: driven by the chip
    };
    static constexpr quint32 kHiddenRgb = 0x808080;
    static constexpr quint32 kReadBackRgb = 0xFFFFC0;

    using Control::Control;
    const char* kind() const override { return "ucBitsField"; }

    // Sum of the cells' numeric values by weight (an empty cell is 0); stored as the last
    // assembled value. Throws OverflowError beyond 16 bits.
    qint16 ReadByte();
    qint16 lastByte() const { return last_; }

    // The visibility flag of bit BitIndex. Flags run 0 to 8; outside, RunTimeError 9.
    bool BitVisible() const;
    void setBitVisible(bool on);
    // The enabled state of cell BitIndex; setting it does nothing on a hidden bit.
    bool BitEnable() const;
    void setBitEnable(bool on);
    qint16 BitIndex() const { return bitIndex_; }
    void setBitIndex(qint16 i) { bitIndex_ = i; }
    bool FSum_Visible() const { return fsumVisible_; }
    void setFSum_Visible(bool on);
    // Spreads a value over the cells from bit 7 down, touching visible cells only; hidden bits
    // still take their weight. Leaves BitIndex at 0. Fires no ClickBit.
    void WriteByte(qint16 value);
    // Pale yellow on, or back to the colour of the enabled state; nothing on a hidden bit.
    void setBitRead(bool on);

    // Cells 0 to 7; outside, RunTimeError 340.
    const QString& txtBit(int i) const { return cell(i).text; }
    bool txtBitEnabled(int i) const { return cell(i).enabled; }
    CellBack txtBitBack(int i) const { return cell(i).back; }
    // Code writing a cell's text; labels stay as they are.
    void setTxtBit(int i, const QString& text);
    const QString& lblFSum() const { return fsum_; }
    const QString& lblHex() const { return hex_; }

    // A user's click on cell i: toggles it, points BitIndex at it, refreshes the labels and
    // fires ClickBit. A disabled cell or control takes no click.
    void click(int i);
    // The control is shown: the labels are filled from the cells.
    void show();

    Event<> onClickBit;

  private:
    struct Cell {
        QString text = QStringLiteral("0");
        bool enabled = true;
        CellBack back = CellBack::Window;
    };
    Cell& cell(int i);
    const Cell& cell(int i) const;
    bool& flag(int i);
    bool flag(int i) const;
    void refreshLabels();

    std::array<Cell, 8> cells_;
    std::array<bool, 9> flags_{};
    qint16 bitIndex_ = 0;
    qint16 last_ = 0;
    bool fsumVisible_ = true;
    QString fsum_;
    QString hex_;
};

} // namespace velmorak
