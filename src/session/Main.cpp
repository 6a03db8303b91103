#include "session/Main.h"

#include "forms/Dialogs.h"
#include "link/ParamBlock.h"
#include "link/Transport.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "platform/Settings.h"
#include "resdb/Database.h"
#include "session/FrmStart.h"
#include "session/Session.h"

#include <QDir>

namespace velmorak {

namespace {

// Str of a value cut two places behind its point; the first two characters when it has none.
QString cutTwoPlaces(const QString& t) {
    return t.left(t.indexOf(u'.') + 1 + 2);
}

// A left cut of a negative length.
struct InvalidCall : std::runtime_error {
    InvalidCall() : std::runtime_error("Invalid procedure call or argument") {}
};

// Str of a value cut at its point; a text without a point is an invalid call.
QString cutAtPoint(const QString& t) {
    const int n = int(t.indexOf(u'.') + 1) - 1;
    if (n < 0) throw InvalidCall();
    return t.left(n);
}

int byteAt(const QByteArray& b, int pos) {
    return qMax(0, ParamBlock::at(b, pos));
}

} // namespace

bool Main::start() {
    CardState& st = s_.st;
    st.AppTitle = QStringLiteral("Velmorak");
    const OsVersion os = GetVersionInfo();
    st.OSName = os.name;
    st.OSPatch = os.patch;
    st.StatusOpen = false;
    st.ExitRequested = 0;
    st.Connected = 0;
    const QString port = s_.settings.get(QStringLiteral("StartUp"), QStringLiteral("PORT"));
    try {
        if (!port.isEmpty()) {
            try {
                st.ComPort = ToInt16(Val(port));
            } catch (const OverflowError&) {
                // Main's handler: quiet lost-card settings, then on with the port unchanged.
                s_.mainErrorHandler();
            }
            s_.port.setCommPort(st.ComPort);
            if (s_.fn.CardPresent())
                s_.frmStart().connectedState(true);
            else
                s_.frmStart().noCardState();
            s_.showLinkReason();
        } else {
            st.ComPort = 5;
            s_.port.setCommPort(5);
            s_.frmStart().noCardState();
        }
    } catch (const DbError& e) {
        const QString path = s_.platform.appPath + QStringLiteral("/") + kDbFileName;
        s_.dialogs.messageBox(
            QStringLiteral("The resolution database could not be opened.\n\n%1\n%2 (error %3)\n\n"
                           "The program cannot start without it.")
                .arg(QDir::toNativeSeparators(path), e.Description())
                .arg(e.Number()),
            MsgButtons::OK, st.AppTitle, MsgIcon::Critical);
        st.ExitRequested = -1;
        return false;
    }
    if (st.ExitRequested) return true; // the probe found the device gone and ended the run
    FrmStart& f = s_.frmStart();
    f.show();
    f.lblMassage.setVisible(true);
    f.txtCom.setText(Str(st.ComPort));
    s_.host.pump();
    return true;
}

bool Main::finished() const {
    return s_.st.ExitRequested == -1;
}

void Main::end() {
    s_.forms.unloadAll();
}

void Main::pollPass() {
    if (inPass_ || s_.fn.busy()) return;
    inPass_ = true;
    try {
        workPass();
    } catch (const std::exception&) {
        s_.mainErrorHandler();
    }
    inPass_ = false;
}

void Main::workPass() {
    CardState& st = s_.st;
    if (st.Connected == 0) return;
    if (st.ExitRequested == -1) return;
    if (st.SyncRequested == 0) {
        idleStep();
        return;
    }
    checkSync();
    s_.host.sleep(100);
    s_.host.pump();
    if (st.SyncRequested == 1) {
        st.SyncRequested = 0;
        if (s_.forms.isLoaded(QStringLiteral("frmStart"))) {
            s_.frmStart().shp1.setVisible(false);
            s_.frmStart().cmdSync.setEnabled(true);
        }
    }
}

void Main::idleStep() {
    CardState& st = s_.st;
    s_.host.pump();
    s_.host.sleep(1);
    if (st.LinkIdleCount > 300) {
        st.LinkIdleCount = 0;
        s_.host.pump();
        s_.host.pump();
        if (!s_.fn.CardPresent()) {
            if (st.PortRecovered) {
                st.PortRecovered = 0;
            } else if (!st.ExitRequested) {
                s_.unloadOthers();
                s_.lostCardSettings(true);
                s_.showLinkReason(true);
            }
        }
    }
    s_.host.pump();
    st.LinkIdleCount = static_cast<qint16>(st.LinkIdleCount + 1);
}

void Main::checkSync() {
    CardState& st = s_.st;
    FrmStart& f = s_.frmStart();
    st.LinkIdleCount = 0;
    f.shp1.setVisible(true);
    st.CardParams = s_.fn.ReadParams(24);
    if (st.CardParams.size() <= 18) {
        f.txtPar1.setText(QStringLiteral("No Data"));
        f.txtH.setText(QStringLiteral("No Data"));
    } else {
        const QByteArray& p = st.CardParams;
        const bool firmware1 = byteAt(p, 23) == 1;
        int hi = byteAt(p, 15), lo = byteAt(p, 16);
        if (hi == 0) {
            f.txtPar1.setText(QStringLiteral("0"));
        } else {
            if (PrevV == 0) PrevV = lo;
            const double c = hi * 256 + (lo + PrevV) / 2.0;
            const double v = firmware1 ? 1562500 / (c / 2) : 195312 / c;
            f.txtPar1.setText(cutTwoPlaces(StrDbl(v)));
        }
        PrevV = lo;
        s_.host.sleep(1);
        hi = byteAt(p, 17);
        lo = byteAt(p, 18);
        if (hi == 0) {
            f.txtH.setText(QStringLiteral("0"));
        } else {
            if (PrevH == 0) PrevH = lo;
            const double c = hi * 256 + (lo + PrevH) / 2.0;
            try {
                if (firmware1)
                    f.txtH.setText(cutAtPoint(StrDbl(50000000 / (c / 32))));
                else
                    f.txtH.setText(StrDbl(c / 2));
            } catch (const InvalidCall&) {
                s_.mainErrorHandler(); // and on with the next step
            }
        }
        PrevH = lo;
        s_.host.sleep(1);
        QString raw;
        for (int pos = 15; pos <= 18; ++pos)
            raw += Str(byteAt(p, pos));
        f.txtPar2.setText(raw);
    }
    if (f.txtH.text() == QLatin1String("0")) {
        // No horizontal sync: the source may be digital.
        st.CardParams = s_.fn.ReadEE(96, 8).left(12);
        const QByteArray& t = st.CardParams;
        if (t.size() > 8)
            f.txtH.setText(Str(byteAt(t, 6) * 256 + byteAt(t, 5)) + QStringLiteral("x") +
                           QString::number(byteAt(t, 8) * 256 + byteAt(t, 7)));
        else
            f.txtH.setText(QStringLiteral("No Data"));
    }
}

} // namespace velmorak
