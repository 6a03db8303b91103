#include "link/ModFunctions.h"

#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/LinkReactions.h"
#include "link/Transport.h"
#include "platform/Host.h"

namespace velmorak {

const char* const ModFunctions::kNoUsbTerminated = "No USB connection. The program is terminated.";
const char* const ModFunctions::kNoUsb = "No USB connection. ";

namespace {

QByteArray keyword(const char* k) {
    return QByteArray(k, 4);
}

char byteOf(int v) {
    return static_cast<char>(v & 0xFF);
}

// A reply shorter than the head gives one NUL character.
QByteArray nulText() {
    return QByteArray(1, '\0');
}

// The read that runs past the end of its reply.
struct ReplyIndexError : std::runtime_error {
    ReplyIndexError() : std::runtime_error("reply index out of range") {}
};

} // namespace

ModFunctions::ModFunctions(CardState& state, Host& host, Transport& port, Dialogs& dialogs,
                           LinkReactions& reactions)
    : st_(state), host_(host), port_(port), dialogs_(dialogs), react_(reactions) {}

QByteArray ModFunctions::frameReadEE(qint16 nAddr, qint16 nLen) {
    QByteArray f = keyword("RDEE");
    f += byteOf(nAddr);
    if (nAddr == 128)
        f += byteOf(nLen);
    else
        f += byteOf(nLen == 8 ? 254 : 255);
    return f;
}

void ModFunctions::pumpEvents() {
    host_.pump();
    if (st_.Timer2.due(host_.now())) st_.replyTimerTick();
}

// Opens the port; a port found open is emptied, closed and opened again.
void ModFunctions::openPort() {
    for (int attempt = 0;; ++attempt) {
        try {
            port_.open();
            return;
        } catch (const PortError& e) {
            if (e.fault != PortFault::AlreadyOpen) throw;
            if (attempt >= kMaxOpenRetries)
                throw PortError(PortFault::Other, QString::fromStdString(e.what()));
            try {
                port_.readAll();
            } catch (const PortError&) {
            }
            port_.close();
            st_.PortRecovered = 1;
        }
    }
}

// The wait of a read: pumps events until the reply has begun or Timer2 has fired.
void ModFunctions::waitReply(int threshold, bool strictlyAbove) {
    for (;;) {
        if (!st_.Timer2.Enabled && st_.ReplyTimedOut == 0) st_.Timer2.setEnabled(true, host_.now());
        pumpEvents();
        const int n = port_.bytesAvailable();
        const bool arrived = strictlyAbove ? n > threshold : n >= threshold;
        if (arrived || st_.ReplyTimedOut > 0) break;
    }
}

QByteArray ModFunctions::readExchange(Fn fn, const QByteArray& frame, const ReadTiming& t) {
    const InExchange busy(depth_);
    QByteArray result = nulText();
    try {
        st_.LinkIdleCount = 0;
        openPort();
        port_.write(frame);
        if (t.firstPause > 0) host_.sleep(t.firstPause);
        st_.ReplyTimedOut = 0;
        st_.Timer2.Interval = t.timeout;
        host_.sleep(t.secondPause);
        st_.Timer2.setEnabled(true, host_.now());
        waitReply(t.threshold, false);
        st_.Timer2.Enabled = false;
        host_.sleep(t.drainPause);
        const QByteArray in = port_.readAll();
        const qsizetype n = in.size();

        qsizetype made = 0; // characters of the text-making loop
        switch (fn) {
        case Fn::ReadEEByte:
            port_.close();
            if (n > 3 && n < 9) throw ReplyIndexError();
            result = n <= 3 ? nulText() : in.mid(6, 3);
            break;
        case Fn::SendRead:
            result = n <= 2 ? nulText() : in.mid(6);
            made = n <= 2 ? 0 : result.size();
            port_.close();
            break;
        default:
            port_.close();
            result = n <= 6 ? nulText() : in.mid(6);
            made = n <= 6 ? 0 : result.size();
            break;
        }
        if (fn == Fn::ReadParams || fn == Fn::SendRead) {
            // The text is made byte by byte with events pumped after each.
            for (qsizetype i = 0; i < made; ++i)
                pumpEvents();
            pumpEvents();
        }
        st_.ReplyTimedOut = 0;
    } catch (const PortError& e) {
        failed(fn, &e, e.fault == PortFault::DeviceGone);
        return nulText();
    } catch (const ReplyIndexError& e) {
        failed(fn, &e, false);
        return nulText();
    }
    return result;
}

void ModFunctions::writeExchange(Fn fn, const QByteArray& frame, int settle) {
    const InExchange busy(depth_);
    try {
        st_.LinkIdleCount = 0;
        if (fn != Fn::WriteM2 || !port_.isOpen()) openPort();
        host_.sleep(10);
        port_.write(frame);
        host_.sleep(settle);
        if (fn != Fn::WriteM2 || port_.isOpen()) port_.close();
    } catch (const PortError& e) {
        failed(fn, &e, e.fault == PortFault::DeviceGone);
    }
}

void ModFunctions::noteFailure(LinkCause cause, const QString& detail) {
    lastFailure_ = {cause, port_.deviceName(), detail};
}

void ModFunctions::notePortError(const PortError& e) {
    const QString text = QString::fromStdString(e.what());
    noteFailure(openFailureCause(probeDevice(port_.deviceName()), e.fault, text), text);
}

// The error handler shared by the link functions.
void ModFunctions::failed(Fn fn, const std::exception* error, bool deviceGone) {
    if (auto* e = dynamic_cast<const PortError*>(error))
        notePortError(*e);
    else
        noteFailure(LinkCause::UnexpectedAnswer, QStringLiteral("a reply of the wrong length"));
    if (port_.isOpen()) port_.close();
    if (deviceGone) {
        switch (fn) {
        case Fn::ReadParams:
        case Fn::SendRead:
            dialogs_.messageBox(kNoUsb, MsgButtons::OK);
            host_.sleep(1000);
            react_.unloadOthers();
            break; // and on to the lost-card state
        case Fn::ReadEE:
        case Fn::ReadDB:
            host_.sleep(1000);
            react_.unloadAll();
            return;
        default:
            dialogs_.messageBox(kNoUsbTerminated, MsgButtons::OK);
            host_.sleep(1000);
            react_.unloadAll();
            return;
        }
    }
    react_.unloadOthers();
    st_.Connected = 0;
    const bool editorsToo = fn == Fn::ReadParams || fn == Fn::ReadDB || fn == Fn::SendRead;
    react_.lostCard(editorsToo);
}

QByteArray ModFunctions::CheckLink(qint16 nMode, qint16& nStatus) {
    const InExchange busy(depth_);
    Q_UNUSED(nMode); // only mode 0, the probe, is ever selected
    try {
        port_.clearInput();
        st_.ReplyTimedOut = 0;
        port_.write(keyword("5USB"));
        host_.sleep(1);
        st_.Timer2.setEnabled(true, host_.now());
        waitReply(4, true);
        st_.Timer2.Enabled = false;
        host_.sleep(11);
        if (port_.bytesAvailable() > 4 || st_.ReplyTimedOut != 1) {
            host_.sleep(11);
            const QByteArray in = port_.readAll();
            if (in.size() < 5) return QByteArray("Connection is NOT established.");
            return in;
        }
        port_.readAll();
        st_.ReplyTimedOut = 0;
        return QByteArray();
    } catch (const PortError& e) {
        if (e.fault == PortFault::DeviceGone) host_.sleep(1000);
        nStatus = 5;
        return QByteArray("Connection is not reliable.");
    }
}

bool ModFunctions::CardPresent() {
    const InExchange busy(depth_);
    bool present = false;
    try {
        host_.sleep(200);
        port_.open();
        st_.LinkMode = 0;
        qint16 status = 0;
        const QByteArray reply = CheckLink(st_.LinkMode, status);
        present = reply.left(4) == "5DVI";
        if (present)
            lastFailure_ = {};
        else if (status == 5)
            noteFailure(LinkCause::DeviceGone);
        else if (reply.isEmpty())
            noteFailure(LinkCause::CardSilent);
        else if (reply.startsWith("Connection is NOT"))
            noteFailure(LinkCause::UnexpectedAnswer, QStringLiteral("a short answer"));
        else
            noteFailure(LinkCause::UnexpectedAnswer,
                        QString::fromLatin1(reply.left(16)).simplified());
        port_.close();
        host_.sleep(1);
    } catch (const PortError& e) {
        notePortError(e);
        if (port_.isOpen()) port_.close();
        if (e.fault == PortFault::DeviceGone) {
            dialogs_.messageBox(kNoUsbTerminated, MsgButtons::OK);
            host_.sleep(1000);
            react_.unloadAll();
        }
        return false;
    }
    return present;
}

QByteArray ModFunctions::ReadParams(qint16 nCount) {
    QByteArray f = keyword("PARR");
    f += '\0';
    f += byteOf(nCount == 8 ? 1 : 0);
    return readExchange(Fn::ReadParams, f, {0, 1000, 20, 32, 20});
}

QByteArray ModFunctions::ReadEE(qint16 nAddr, qint16 nLen) {
    return readExchange(Fn::ReadEE, frameReadEE(nAddr, nLen), {20, 1200, 20, 32, 50});
}

QByteArray ModFunctions::ReadEEByte(qint16 nAddr, qint16 nLen) {
    QByteArray f = keyword("RDEE");
    f += byteOf(nAddr);
    f += byteOf(nLen);
    return readExchange(Fn::ReadEEByte, f, {100, 1200, 10, 7, 20});
}

QByteArray ModFunctions::ReadDB(qint16 nDevice, qint16 nCount, int vHigh, int vLow) {
    QByteArray f = keyword("RDDB");
    f += byteOf(nDevice);
    f += byteOf(nCount);
    f += byteOf(vHigh);
    f += byteOf(vLow);
    return readExchange(Fn::ReadDB, f, {20, 1200, 20, 32, 50});
}

QByteArray ModFunctions::SendRead(QByteArray& sCommand) {
    return readExchange(Fn::SendRead, sCommand, {0, 1000, 20, 4, 2000});
}

void ModFunctions::WriteEE(qint16 nAddr, qint16 nReg, const QByteArray& sData) {
    QByteArray f = keyword("WREE");
    f += byteOf(nAddr);
    f += byteOf(nReg);
    f += sData;
    writeExchange(Fn::WriteEE, f, 40);
}

void ModFunctions::WriteEEBlock(qint16 nAddr, const QByteArray& sData) {
    QByteArray f = keyword("WREE");
    f += byteOf(nAddr);
    f += byteOf(255);
    f += sData;
    writeExchange(Fn::WriteEEBlock, f, 800);
}

void ModFunctions::WriteDB(qint16 nHigh, qint16 nLow, const QByteArray& sData) {
    QByteArray f = keyword("WRDB");
    f += byteOf(166);
    f += byteOf(66);
    f += byteOf(nHigh);
    f += byteOf(nLow);
    f += sData;
    writeExchange(Fn::WriteDB, f, 1000);
}

void ModFunctions::WriteM2(qint16 nAddr, const QByteArray& sData) {
    QByteArray f = keyword("WRM2");
    f += byteOf(nAddr);
    f += 'M';
    f += sData;
    writeExchange(Fn::WriteM2, f, 1000);
}

} // namespace velmorak
