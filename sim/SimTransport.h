#pragma once

#include "link/Transport.h"
#include "sim/VirtualCard.h"
#include "sim/WireTrace.h"

#include <deque>

namespace velmorak {
class Host;
}

namespace velmorak::sim {

// The serial port straight onto an in-process card, on the Host clock. Every write() is one
// frame; its reply arrives whole after the line's latency.
class SimTransport : public Transport {
  public:
    SimTransport(VirtualCard& card, Host& host);

    void setCommPort(int number) override { commPort_ = number; }
    int commPort() const override { return commPort_; }
    void open() override;
    void close() override { open_ = false; }
    bool isOpen() const override { return open_; }
    void write(const QByteArray& bytes) override;
    int bytesAvailable() override;
    QByteArray readAll() override;
    void clearInput() override;

    // Another program holds the port: every open() fails as already open.
    void setHeldElsewhere(bool held) { heldElsewhere_ = held; }
    VirtualCard& card() { return card_; }
    WireTrace& trace() { return trace_; }
    QStringList traceLines() const { return trace_.lines(); }

    // Time from the end of a frame to the whole reply: 5 ms idle, 1 ms per 11 bytes, delay.
    static qint64 latency(int replyBytes, int delayMs);

  private:
    void checkUsable();
    void dropArrived();
    struct Pending {
        qint64 at;
        QByteArray bytes;
    };
    VirtualCard& card_;
    Host& host_;
    WireTrace trace_;
    std::deque<Pending> pending_;
    int commPort_ = 1;
    bool open_ = false;
    bool heldElsewhere_ = false;
};

} // namespace velmorak::sim
