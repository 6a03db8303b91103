#include "monitor/FrmReadEEPresets.h"

#include "forms/Forms.h"
#include "forms/FrmWait.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ValueHelpers.h"

#include <algorithm>

namespace velmorak {

namespace {

constexpr int kDevice = 166;
constexpr int kCount = 66;
constexpr int kHalf = 16;
constexpr int kTwipsPerPixel = 15;
constexpr int kAddressTwips = 750;
constexpr int kCellTwips = 400;
constexpr int kFrameMargin = 40; // window frame, grid border and scroll bar

} // namespace

FrmReadEEPresets::FrmReadEEPresets(AppContext& ctx)
    : Form(QStringLiteral("frmReadEEPresets")), c_(ctx) {
    setCaption(QStringLiteral("Read Memory"));
    grTable.setCols(1 + kRowBytes);
    move(0, 0, 1100, 660);
}

// The designed widths, widened in step with the window so that three digits fit.
void FrmReadEEPresets::formResize() {
    const double designed = double(kAddressTwips + kRowBytes * kCellTwips) / kTwipsPerPixel;
    const double scale = std::max(1.0, (width() - kFrameMargin) / designed);
    grTable.setColWidth(0, qRound(kAddressTwips * scale / kTwipsPerPixel));
    for (int c = 1; c <= kRowBytes; ++c)
        grTable.setColWidth(c, qRound(kCellTwips * scale / kTwipsPerPixel));
}

void FrmReadEEPresets::menuEnabled(bool on) {
    if (Form* start = c_.forms.get(QStringLiteral("frmStart")))
        if (auto* m = dynamic_cast<MenuItem*>(start->find(QStringLiteral("mnuReadAutopresets"))))
            m->setEnabled(on);
}

void FrmReadEEPresets::formLoad() {
    menuEnabled(false);
    grTable.setRows(1);
    grTable.setTextMatrix(0, 0, QStringLiteral("Address"));
    for (int c = 1; c <= kRowBytes; ++c)
        grTable.setTextMatrix(0, c,
                              QStringLiteral("%1").arg(c - 1, 2, 16, QLatin1Char('0')).toUpper());
    formResize();
    if (!c_.st.Connected) return;
    const int start = ToInt32(Val(c_.st.EEStartAddr)) * 256;
    grTable.setRows(1 + kRows);
    FrmWait* wait = FrmWait::find(c_.forms);
    if (wait) wait->ProgBar.setMax(kRows);
    for (int r = 1; r <= kRows; ++r) {
        if ((wait = FrmWait::find(c_.forms))) wait->progress(r);
        const int address = (r - 1) * kRowBytes + start;
        grTable.setTextMatrix(r, 0, QString::number(address, 16).toUpper());
        for (int half = 0; half < 2; ++half) {
            const int a = address + half * kHalf;
            const QByteArray reply = c_.fn.ReadDB(kDevice, kCount, a / 256, a & 255);
            // A lost card closes this window.
            if (!isLoaded()) return;
            fillHalf(r, 1 + half * kHalf, reply);
        }
    }
}

// Sixteen cells from the first sixteen characters; a short reply leaves the rest empty.
void FrmReadEEPresets::fillHalf(int row, int firstCol, const QByteArray& reply) {
    for (int j = 0; j < kHalf; ++j)
        grTable.setTextMatrix(row, firstCol + j,
                              j < reply.size() ? QString::number(quint8(reply[j])) : QString());
}

void FrmReadEEPresets::formUnload(bool& cancel) {
    (void)cancel;
    menuEnabled(true);
}

} // namespace velmorak
