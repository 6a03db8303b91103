// The contrast and brightness masters over the three gain and the three offset registers, and
// the channel sliders under them. The order of the steps, nested change events included, is the
// order of the writes to the chip.
#include "registers/FrmAD9888.h"

#include "link/CardState.h"
#include "link/ModFunctions.h"

#include <algorithm>

namespace velmorak {

namespace {

// One set of three channels: the gains (members 9 to 11) or the offsets (12 to 14).
struct Set {
    int first;  // first member
    int top;    // a step up needs every register below this
    int limit;  // largest step the change handler takes
    bool halve; // the texts show the register divided by 2
};
constexpr Set kGains{9, 255, 1, false};
constexpr Set kOffsets{12, 254, 2, true};

} // namespace

void FrmAD9888::connectColour() {
    HScrlContrast.onChange.connect([this] { contrastChange(false); });
    HScrlContrast.onScroll.connect([this] { contrastChange(true); });
    HScrlBritnes.onChange.connect([this] { brightnessChange(false); });
    HScrlBritnes.onScroll.connect([this] { brightnessChange(true); });
    ScrollBar* gains[] = {&HScrlCR, &HScrlCG, &HScrlCB};
    ScrollBar* offsets[] = {&HScrlBrR, &HScrlBrG, &HScrlBrB};
    for (int k = 0; k < 3; ++k) {
        gains[k]->onChange.connect([this, k] { gainChange(k, false); });
        gains[k]->onScroll.connect([this, k] { gainChange(k, true); });
        offsets[k]->onChange.connect([this, k] { offsetChange(k, false); });
        offsets[k]->onScroll.connect([this, k] { offsetChange(k, true); });
    }
}

static void lowestHighest(FrmAD9888& f, int first, qint16& lo, qint16& hi) {
    const qint16 r = f.byteOf(first), g = f.byteOf(first + 1), b = f.byteOf(first + 2);
    lo = r < g ? std::min(r, b) : std::min(g, b);
    hi = r > g ? std::max(r, b) : std::max(g, b);
}

void FrmAD9888::CheckContr() {
    lowestHighest(*this, kGains.first, ContrMin, ContrMax);
}

void FrmAD9888::CheckBri() {
    lowestHighest(*this, kOffsets.first, BriMin, BriMax);
}

namespace {

// The fields of one set in a form, so that both masters share one body.
struct Master {
    const Set& set;
    ScrollBar& bar;
    qint16& old;
    qint16& max;
    qint16& min;
    bool& resync;
    bool& ready;
    qint16& lastStep;
    qint16* fields[3];
    ScrollBar* channels[3];
    TextBox* texts[3];
};

} // namespace

// Moves all three registers of a set by step when the set is off its bound (upward: every
// register below the top; else every one above 0); false when it is at the bound.
static bool moveSet(FrmAD9888& f, const Master& m, int step, bool upward) {
    for (int k = 0; k < 3; ++k) {
        const qint16 r = f.byteOf(m.set.first + k);
        if (upward ? r >= m.set.top : r <= 0) return false;
    }
    for (int k = 0; k < 3; ++k) {
        const int n = f.byteOf(m.set.first + k) + step;
        if (n >= 0 && n < 256) {
            f.ucBitsField1(m.set.first + k).WriteByte(qint16(n));
            *m.fields[k] = qint16(n);
        }
    }
    return true;
}

// The last step of a master: texts and channel sliders follow the registers.
static void showSet(FrmAD9888& f, const Master& m) {
    for (int k = 0; k < 3; ++k) {
        const qint16 r = f.byteOf(m.set.first + k);
        m.texts[k]->setText(QString::number(m.set.halve ? r / 2 : r));
        m.channels[k]->setValue(r);
    }
}

void FrmAD9888::contrastChange(bool scroll) {
    const Master m{kGains,
                   HScrlContrast,
                   ContrOld,
                   ContrMax,
                   ContrMin,
                   ContrResync,
                   ContrReady,
                   ContrLastStep,
                   {&GainRed, &GainGreen, &GainBlue},
                   {&HScrlCR, &HScrlCG, &HScrlCB},
                   {&txtRedC, &txtGreenC, &txtBlueC}};
    const int step = HScrlContrast.value() - ContrOld;
    if (!ContrReady) {
        if (step > 0) HScrlContrast.setValue(ContrMax);
        if (step < 0) HScrlContrast.setValue(ContrMin);
        ContrOld = qint16(HScrlContrast.value());
        ContrReady = true;
        return;
    }
    if (!scroll) {
        if (LoadOnChange) {
            if (tmrWait.enabled()) return; // dropped: the next change sees the sum
            tmrWait.setEnabled(true);
        }
        if (step > 1 || step < -1) {
            HScrlContrast.setValue(step < 1 ? ContrMin : ContrMax);
            ContrOld = qint16(HScrlContrast.value());
            return;
        }
    }
    if (step != ContrLastStep && step != 0) {
        CheckContr();
        if (!scroll && ContrMin != ContrMax && ContrMax != 0) ContrResync = true;
        ContrLastStep = qint16(step);
    }
    if (step > 0 || (scroll && step >= -1)) {
        if (!scroll && ContrResync) {
            HScrlContrast.setValue(ContrMax);
            ContrResync = false;
        }
        // At the top the slider stays where it was put.
        if (moveSet(*this, m, step, true)) ContrOld = qint16(HScrlContrast.value());
    } else if (step < 0) {
        if (!scroll && ContrResync) {
            HScrlContrast.setValue(ContrMin);
            ContrResync = false;
        }
        if (moveSet(*this, m, step, false))
            ContrOld = qint16(HScrlContrast.value());
        else
            HScrlContrast.setValue(ContrOld);
    }
    showSet(*this, m);
}

void FrmAD9888::brightnessChange(bool scroll) {
    const Master m{kOffsets,
                   HScrlBritnes,
                   BriOld,
                   BriMax,
                   BriMin,
                   BriResync,
                   BriReady,
                   BriLastStep,
                   {&OffsetRed, &OffsetGreen, &OffsetBlue},
                   {&HScrlBrR, &HScrlBrG, &HScrlBrB},
                   {&txtRed, &txtGreen, &txtBlue}};
    const int step = HScrlBritnes.value() - BriOld;
    if (!BriReady) {
        if (step > 0) HScrlBritnes.setValue(BriMax);
        if (step < 0) HScrlBritnes.setValue(BriMin);
        BriOld = qint16(HScrlBritnes.value());
        BriReady = true;
        return;
    }
    if (!scroll && (step > 2 || step < -2)) {
        HScrlBritnes.setValue(step < 1 ? BriMin : BriMax);
        BriOld = qint16(HScrlBritnes.value());
        return;
    }
    if (step != BriLastStep && step != 0) {
        CheckBri();
        if (!scroll && BriMin != BriMax && BriMax != 0) BriResync = true;
        BriLastStep = qint16(step);
    }
    if (step != 0) {
        if (!scroll && BriResync) {
            HScrlBritnes.setValue(step > 0 ? BriMax : BriMin);
            BriResync = false;
        }
        if (moveSet(*this, m, step, step > 0))
            BriOld = qint16(HScrlBritnes.value());
        else
            HScrlBritnes.setValue(BriOld);
    }
    showSet(*this, m);
}

// A gain channel. The change of green and blue and the scroll of red re-anchor the master; the
// other forms are plain. Only the change forms honour ContrResync.
void FrmAD9888::gainChange(int k, bool scroll) {
    ScrollBar* bars[] = {&HScrlCR, &HScrlCG, &HScrlCB};
    qint16* fields[] = {&GainRed, &GainGreen, &GainBlue};
    TextBox* texts[] = {&txtRedC, &txtGreenC, &txtBlueC};
    const int member = kGains.first + k;
    const bool full = (k == 0) == scroll;
    if (!scroll && ContrResync) {
        ContrResync = false;
    } else {
        const int step = bars[k]->value() - *fields[k];
        const qint16 r = byteOf(member);
        if (step != 0) {
            if (step > 0 ? r < 255 : r > 0) {
                const int n = r + step;
                if (n >= 0 && n < 256) ucBitsField1(member).WriteByte(qint16(n));
                *fields[k] = qint16(bars[k]->value());
                if (full) {
                    CheckContr();
                    ContrReady = false;
                    HScrlContrast.setValue(step > 0 ? ContrMax : ContrMin);
                    ContrOld = step > 0 ? ContrMax : ContrMin;
                }
            } else {
                bars[k]->setValue(*fields[k]);
            }
        }
    }
    texts[k]->setText(QString::number(byteOf(member)));
    writeMember(member);
}

// An offset channel: the change re-anchors the master on its highest or lowest channel and moves
// it by the step; the scroll only moves it.
void FrmAD9888::offsetChange(int k, bool scroll) {
    ScrollBar* bars[] = {&HScrlBrR, &HScrlBrG, &HScrlBrB};
    qint16* fields[] = {&OffsetRed, &OffsetGreen, &OffsetBlue};
    TextBox* texts[] = {&txtRed, &txtGreen, &txtBlue};
    const int member = kOffsets.first + k;
    if (!scroll && BriResync) {
        BriResync = false;
    } else {
        const int step = bars[k]->value() - *fields[k];
        const qint16 r = byteOf(member);
        if (step != 0) {
            if (step > 0 ? r < 254 : r > 0) {
                const int n = r + step;
                if (n >= 0 && n < 256) ucBitsField1(member).WriteByte(qint16(n));
                *fields[k] = qint16(bars[k]->value());
                if (!scroll) {
                    CheckBri();
                    BriReady = false;
                    HScrlBritnes.setValue(step > 0 ? BriMax : BriMin);
                    BriOld = step > 0 ? BriMax : BriMin;
                }
                const int moved = BriOld + step;
                BriOld = qint16(step > 0 ? (moved < 255 ? moved : 254) : (moved > 0 ? moved : 0));
                HScrlBritnes.setValue(BriOld);
            } else {
                bars[k]->setValue(*fields[k]);
            }
        }
    }
    texts[k]->setText(QString::number(byteOf(member) / 2));
    writeMember(member);
}

} // namespace velmorak
