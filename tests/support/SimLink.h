#pragma once

#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "platform/Host.h"
#include "support/RecordingReactions.h"

#include <QStringList>

#include <memory>

namespace velmorak::sim {
class VirtualCard;
}

namespace velmorak::test {

// Bytes as the trace shows them: "57 52 45 45".
inline QString hexOf(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

// The link over the in-process virtual card on the virtual clock, with scripted dialogs and
// recorded window reactions: the standard bench of the window-logic tests.
class SimLink {
  public:
    struct Card {
        bool receiver = false;
        bool rgb = true;
        int fibres = 2;
        int major = 2;
        int minor = 3;
        QString source = "1024x768x75";
    };
    SimLink();
    explicit SimLink(const Card& card);
    ~SimLink();

    VirtualHost host;
    CardState state;
    ScriptedDialogs dialogs;
    RecordingReactions reactions;
    ModFunctions& fn();
    Transport& port();

    // Faults of the card.
    void silent(bool on);
    void shortReplies(int n); // 0: off
    void unplugNow();         // the USB device vanishes
    void holdPort(bool on);   // another program holds the port
    void replyDelay(int ms);

    // Frames on the wire, "ms > HEX ..." / "ms < HEX ...".
    QStringList trace() const;
    QStringList sent() const;    // hex of the frames to the card
    QByteArray lastSent() const; // raw bytes of the last frame to the card
    void clearTrace();

    // The card's memories.
    int reg(int chip, int reg) const;
    void setReg(int chip, int reg, int value);
    QByteArray dataMemory(int addr, int len) const;
    sim::VirtualCard& card();

  private:
    struct Impl;
    std::unique_ptr<Impl> d;
};

} // namespace velmorak::test
