#include "registers/UcBitsField.h"

#include "link/ParamBlock.h"
#include "link/ValueHelpers.h"

#include <cmath>
#include <limits>

namespace velmorak {

UcBitsField::Cell& UcBitsField::cell(int i) {
    return const_cast<Cell&>(std::as_const(*this).cell(i));
}

const UcBitsField::Cell& UcBitsField::cell(int i) const {
    if (i < 0 || i > 7)
        throw RunTimeError(
            340, QStringLiteral("Control array element 'txtBit(%1)' doesn't exist").arg(i));
    return cells_[size_t(i)];
}

bool& UcBitsField::flag(int i) {
    if (i < 0 || i > 8) throw RunTimeError(9, QStringLiteral("Subscript out of range"));
    return flags_[size_t(i)];
}

bool UcBitsField::flag(int i) const {
    return const_cast<UcBitsField*>(this)->flag(i);
}

qint16 UcBitsField::ReadByte() {
    double sum = 0;
    for (int i = 7; i >= 0; --i)
        sum += Val(cells_[size_t(i)].text) * double(1 << i);
    last_ = ToInt16(sum);
    return last_;
}

bool UcBitsField::BitVisible() const {
    return flag(bitIndex_);
}

void UcBitsField::setBitVisible(bool on) {
    Cell& c = cell(bitIndex_);
    if (!on) {
        c.back = CellBack::Hidden;
        c.enabled = false;
        c.text.clear();
    } else {
        c.back = CellBack::ButtonFace;
    }
    flag(bitIndex_) = on;
    changed(Prop::Cells);
}

bool UcBitsField::BitEnable() const {
    return cell(bitIndex_).enabled;
}

void UcBitsField::setBitEnable(bool on) {
    if (!flag(bitIndex_)) return;
    Cell& c = cell(bitIndex_);
    c.enabled = on;
    c.back = on ? CellBack::Window : CellBack::ButtonFace;
    changed(Prop::Cells);
}

void UcBitsField::setFSum_Visible(bool on) {
    if (fsumVisible_ == on) return;
    fsumVisible_ = on;
    changed(Prop::Caption);
}

void UcBitsField::WriteByte(qint16 value) {
    int rest = value;
    for (int i = 7; i >= 0; --i) {
        bitIndex_ = qint16(i);
        const int left = rest - (1 << i);
        const bool one = left >= 0;
        if (flags_[size_t(i)])
            cells_[size_t(i)].text = one ? QStringLiteral("1") : QStringLiteral("0");
        if (one) rest = left;
    }
    changed(Prop::Cells);
    refreshLabels();
}

void UcBitsField::setBitRead(bool on) {
    if (!flag(bitIndex_)) return;
    Cell& c = cell(bitIndex_);
    if (on)
        c.back = CellBack::ReadBack;
    else
        c.back = c.enabled ? CellBack::Window : CellBack::ButtonFace;
    changed(Prop::Cells);
}

void UcBitsField::setTxtBit(int i, const QString& text) {
    Cell& c = cell(i);
    if (c.text == text) return;
    c.text = text;
    changed(Prop::Cells);
}

void UcBitsField::click(int i) {
    Cell& c = cell(i);
    if (!enabled() || !visible() || !c.enabled) return;
    c.text = c.text == QLatin1String("1") ? QStringLiteral("0") : QStringLiteral("1");
    bitIndex_ = qint16(i);
    changed(Prop::Cells);
    refreshLabels();
    onClickBit();
}

void UcBitsField::show() {
    refreshLabels();
}

void UcBitsField::refreshLabels() {
    const qint16 v = ReadByte();
    fsum_ = QString::number(v);
    hex_ = QString::number(quint16(v), 16).toUpper() + QLatin1Char('h');
    changed(Prop::Caption);
}

} // namespace velmorak
