#include "session/AutoPresets.h"

#include "forms/Dialogs.h"
#include "forms/FrmWait.h"
#include "link/ValueHelpers.h"
#include "platform/Host.h"
#include "resdb/Database.h"
#include "session/FrmStart.h"
#include "session/Session.h"

#include <cmath>

namespace velmorak {

const char* const AutoPresets::kVersionRecord = "UVersion 2.06 01/23/2009";

namespace {

const char* const kWait = "frmWait";
const char* const kViewer = "frmReadEEPresets";

// The next slot: 32 bytes on, carried into the high byte.
void advance(int& nHigh, int& nLow) {
    nLow += AutoPresets::kSlotSize;
    if (nLow >= 256) {
        nHigh += nLow / 256;
        nLow %= 256;
    }
}

// An item of a list box; past the end it reads as empty text.
QString listItem(const ListBox& l, int k) {
    return k < l.listCount() ? l.list(k) : QString();
}

} // namespace

void AutoPresets::message(const char* text) {
    s_.dialogs.messageBox(QString::fromLatin1(text), MsgButtons::OK, s_.st.AppTitle);
}

void AutoPresets::enableAgain() {
    f_.mnuAutoPresets.setEnabled(true);
    f_.cmdDisconnect.setEnabled(true);
}

void AutoPresets::progress(int value) {
    if (FrmWait* w = FrmWait::find(s_.forms)) w->progress(value);
}

void AutoPresets::load() {
    f_.mnuAutoPresets.setEnabled(false);
    f_.cmdDisconnect.setEnabled(false);
    const MsgResult answer = s_.dialogs.messageBox(
        QStringLiteral("You are about to load Database of Presets to Memory of RGB Card."),
        MsgButtons::OKCancel, QStringLiteral("Database of Ptesets"));
    if (answer != MsgResult::OK) {
        enableAgain();
        return;
    }
    FrmWait& wait = FrmWait::showOver(s_.forms, f_);
    wait.ProgBar.setMax(255);
    f_.txtMsg.setText(QStringLiteral("Loading. Wait a minute..."));
    f_.txtMsg.setVisible(true);

    Outcome outcome = Outcome::Gone;
    try {
        outcome = writeTable();
    } catch (...) {
        // A store error: the window is given back before the error is reported.
        f_.txtMsg.setVisible(false);
        s_.forms.unload(QString::fromLatin1(kWait));
        enableAgain();
        throw;
    }
    switch (outcome) {
    case Outcome::Gone: // the card vanished and the tool is ending
        return;
    case Outcome::Incompatible:
        s_.forms.unload(QString::fromLatin1(kWait));
        message("Wrong Loading. Database is not compatible.");
        s_.host.sleep(2000);
        f_.txtMsg.setVisible(false);
        enableAgain();
        return;
    case Outcome::NotWritten:
        message("Wrong Loading. Data is not written.");
        f_.txtMsg.setVisible(false);
        s_.forms.unload(QString::fromLatin1(kWait));
        enableAgain();
        return;
    case Outcome::Loaded:
        break;
    }
    f_.txtMsg.setText(QStringLiteral("Loading OK."));
    s_.host.pump();
    s_.host.sleep(2000);
    f_.txtMsg.setVisible(false);
    s_.forms.unload(QString::fromLatin1(kWait));
    message("Loading is OK.");
    enableAgain();
}

AutoPresets::Outcome AutoPresets::writeTable() {
    for (int i = 0; i < f_.lstVGroup.listCount(); ++i)
        if (const Outcome o = writeGroup(i); o != Outcome::Loaded) return o;
    const QByteArray version(kVersionRecord);
    s_.fn.WriteDB(kVersionHigh, kVersionLow, version);
    return readBack(kVersionHigh, kVersionLow, version, 14);
}

// One group: its rows in the query's order, each in the first free slot of its height.
AutoPresets::Outcome AutoPresets::writeGroup(int i) {
    int nHigh = kFirstHigh + 2 * i;
    int nLow = 0;
    int k = 0;
    const int nV = ToInt32(Val(f_.lstVGroup.list(i)));
    Recordset rs = s_.DbRez->OpenRecordset(
        QStringLiteral("SELECT * from tblDefPresetsQ WHERE tblDefPresetsQ.Vertical = ") +
        QString::number(nV));
    if (rs.Eof() && rs.Bof()) return Outcome::Loaded;
    rs.MoveLast();
    const int count = rs.RecordCount();
    rs.MoveFirst();
    for (int r = 1; r <= count; ++r) {
        QByteArray s;
        progress(i * 16 + r);
        int nRezH = 0;
        for (int f = 2; f < rs.FieldCount(); ++f) {
            const int v = int(rs.Fields(f).Value().toInt());
            s.append(char(v & 0xFF));
            if (f == 30) nRezH = v;
            if (f == 31) nRezH += 256 * v;
        }
        for (int tries = 0; tries < 16; ++tries) {
            if (Val(listItem(f_.lstHGroup, k)) == nRezH) break;
            advance(nHigh, nLow);
            ++k;
            if (k == kMaxSlotIndex) return Outcome::Incompatible;
        }
        ++k;
        s_.host.sleep(1);
        s_.fn.WriteDB(qint16(nHigh), qint16(nLow), s);
        s_.host.sleep(1);
        if (const Outcome o = readBack(nHigh, nLow, s, 16); o != Outcome::Loaded) return o;
        advance(nHigh, nLow);
        rs.MoveNext();
    }
    return Outcome::Loaded;
}

// Reads the address back and compares the first characters with what was written.
AutoPresets::Outcome AutoPresets::readBack(int nHigh, int nLow, const QByteArray& s, int compared) {
    const QByteArray back = s_.fn.ReadDB(kDevice, kCount, nHigh, nLow);
    if (!f_.isLoaded()) return Outcome::Gone;
    return s.left(compared) == back.left(compared) ? Outcome::Loaded : Outcome::NotWritten;
}

void AutoPresets::showVersion() {
    if (!s_.st.Connected) {
        message("No connection with card");
        return;
    }
    const QByteArray reply = s_.fn.ReadDB(kDevice, kCount, kVersionHigh, kVersionLow);
    if (!f_.isLoaded()) return;
    s_.dialogs.messageBox(QStringLiteral("Autopresets DB Version is ") +
                              QString::fromLatin1(reply.mid(8, 6)),
                          MsgButtons::OK, s_.st.AppTitle);
}

void AutoPresets::readMemory() {
    f_.setEnabled(false);
    const std::optional<QString> answer = s_.dialogs.inputBox(
        QStringLiteral("Enter EE Address you want to read from (&H00 - &H3E) :"),
        QStringLiteral("Read EE Memory"), QStringLiteral("&H20"));
    s_.st.EEStartAddr = answer.value_or(QString());
    if (!s_.st.EEStartAddr.isEmpty()) {
        // The page is the high byte of the address.
        const double page = Val(s_.st.EEStartAddr);
        if (page < 0 || page > 255 || page != std::floor(page)) {
            s_.dialogs.messageBox(QStringLiteral("Enter a page from &H00 to &HFF."), MsgButtons::OK,
                                  QStringLiteral("Read EE Memory"));
        } else {
            FrmWait::showOver(s_.forms, f_);
            Form& viewer = s_.forms.load(QString::fromLatin1(kViewer));
            s_.forms.unload(QString::fromLatin1(kWait));
            // A card lost during the reads has closed the viewer already.
            if (viewer.isLoaded()) viewer.show();
        }
    }
    if (f_.isLoaded()) f_.setEnabled(true);
}

} // namespace velmorak
