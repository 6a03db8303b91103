#include "monitor/MonitorWrite.h"

#include "forms/Forms.h"
#include "link/AppContext.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "monitor/Edid.h"
#include "platform/Host.h"

#include <algorithm>

namespace velmorak {

namespace {

const QString kWait = QStringLiteral("frmWait");

ProgressBar* waitBar(Forms& forms) {
    Form* w = forms.get(kWait);
    return w ? dynamic_cast<ProgressBar*>(w->find(QStringLiteral("ProgBar"))) : nullptr;
}

} // namespace

void showWait(Forms& forms) {
    if (forms.isRegistered(kWait)) forms.show(kWait);
}

void waitProgress(Forms& forms, int value, int max) {
    ProgressBar* bar = waitBar(forms);
    if (!bar) return;
    if (max >= 0) bar->setMax(max);
    bar->setValue(std::clamp(value, bar->min(), bar->max()));
}

void closeWait(Forms& forms) {
    forms.unload(kWait);
}

bool writeMonitorSlices(AppContext& c, const QByteArray& image, int count,
                        const std::function<void(int)>& before,
                        const std::function<bool(int)>& after) {
    for (int k = 1; k <= count; ++k) {
        const MonitorSlice& s = kMonitorSlices[k - 1];
        before(k);
        c.st.ChipBase = qint16(s.start);
        c.fn.WriteM2(c.st.ChipBase, image.mid(s.start, s.length));
        c.host.pump();
        c.host.sleep(s.pauseMs);
        if (!after(k)) return false;
    }
    return true;
}

} // namespace velmorak
