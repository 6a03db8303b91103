#pragma once

#include "link/LinkFailure.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace velmorak {

class Dialogs;
class Host;
class LinkReactions;
class Transport;
struct CardState;

// Every frame of the card protocol. Each function opens the port, does one exchange and closes
// it again; byte texts (QByteArray) carry any byte, NUL included.
class ModFunctions {
  public:
    ModFunctions(CardState& state, Host& host, Transport& port, Dialogs& dialogs,
                 LinkReactions& reactions);

    // The probe: "5USB" and the raw reply. The port must be open.
    QByteArray CheckLink(qint16 nMode, qint16& nStatus);
    // True when a card answers the probe with "5DVI".
    bool CardPresent();

    QByteArray ReadParams(qint16 nCount);
    QByteArray ReadEE(qint16 nAddr, qint16 nLen);
    QByteArray ReadEEByte(qint16 nAddr, qint16 nLen);
    QByteArray ReadDB(qint16 nDevice, qint16 nCount, int vHigh, int vLow);
    QByteArray SendRead(QByteArray& sCommand);

    void WriteEE(qint16 nAddr, qint16 nReg, const QByteArray& sData);
    void WriteEEBlock(qint16 nAddr, const QByteArray& sData);
    void WriteDB(qint16 nHigh, qint16 nLow, const QByteArray& sData);
    void WriteM2(qint16 nAddr, const QByteArray& sData);

    // True while an exchange runs (its wait pumps events, and the poll must stay out).
    bool busy() const { return depth_ > 0; }
    // Why the last probe or exchange failed (None after a probe that found the card).
    const LinkFailure& lastFailure() const { return lastFailure_; }

    // The texts and frames, exposed for tests and the virtual card.
    static const char* const kNoUsbTerminated; // "No USB connection. The program is terminated."
    static const char* const kNoUsb;           // "No USB connection. "
    static QByteArray frameReadEE(qint16 nAddr, qint16 nLen);

    // Most retries of an open that finds the port already open before the failure counts as
    // another port error (a port held by another program never frees itself).
    static constexpr int kMaxOpenRetries = 3;

  private:
    enum class Fn {
        WriteM2,
        WriteDB,
        WriteEEBlock,
        WriteEE,
        ReadEE,
        ReadEEByte,
        ReadParams,
        ReadDB,
        SendRead
    };
    struct ReadTiming {
        int firstPause;
        int timeout;
        int secondPause;
        int threshold;
        int drainPause;
    };

    QByteArray readExchange(Fn fn, const QByteArray& frame, const ReadTiming& t);
    void writeExchange(Fn fn, const QByteArray& frame, int settle);
    void openPort();
    void pumpEvents();
    void waitReply(int threshold, bool strictlyAbove);
    void failed(Fn fn, const std::exception* e, bool deviceGone);

    struct InExchange {
        explicit InExchange(int& d) : depth(d) { ++depth; }
        ~InExchange() { --depth; }
        InExchange(const InExchange&) = delete;
        InExchange& operator=(const InExchange&) = delete;
        int& depth;
    };

    int depth_ = 0;
    LinkFailure lastFailure_;
    void noteFailure(LinkCause cause, const QString& detail = {});
    void notePortError(const PortError& e);
    CardState& st_;
    Host& host_;
    Transport& port_;
    Dialogs& dialogs_;
    LinkReactions& react_;
};

} // namespace velmorak
