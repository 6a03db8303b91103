#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

namespace velmorak {

class Host;

// Timer2 of the main window: the one-shot reply time-out of every read. Its tick sets
// ReplyTimedOut and stops the timer; the tick is delivered when the wait loop pumps.
struct ReplyTimer {
    int Interval = 1200;
    bool Enabled = false;
    qint64 startedAt = 0;

    void setEnabled(bool on, qint64 now) {
        if (on && !Enabled) startedAt = now;
        Enabled = on;
    }
    bool due(qint64 now) const { return Enabled && now - startedAt >= Interval; }
};

// The shared public state of the whole tool.
struct CardState {
    QString AppTitle = QStringLiteral("Velmorak");
    qint16 ComPort = 0;
    qint16 Connected = 0; // -1 while a card is linked
    qint16 ExitRequested = 0;
    qint16 SyncRequested = 0;
    qint16 ReplyTimedOut = 0;
    qint16 LinkIdleCount = 0;
    qint16 LinkMode = 0;
    qint16 PortRecovered = 0;
    qint16 ChipBase = 0;
    QByteArray CardParams;
    qint16 CardWord = 0;
    QString OSName;
    QString OSPatch;
    QString CurPreset;
    qint16 CurPresetIndex = 0;
    QString SelRezName;
    QString SelRezDescription;
    qint32 InputBoxX = 0;
    qint32 InputBoxY = 0;
    qint16 DemoMode = 0;
    QString EEStartAddr;
    bool StatusOpen = false;
    qint16 TestBarsOn = 0;
    qint16 SharpTestStep = 0;
    qint16 ColorTestStep = 0;
    qint16 GrayTestStep = 0;
    qint32 TestW = 0;
    qint32 TestH = 0;

    ReplyTimer Timer2;

    // Timer2's tick.
    void replyTimerTick() {
        ReplyTimedOut = 1;
        Timer2.Enabled = false;
    }
};

} // namespace velmorak
