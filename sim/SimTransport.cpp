#include "sim/SimTransport.h"

#include "platform/Host.h"

#include <iterator>

namespace velmorak::sim {

SimTransport::SimTransport(VirtualCard& card, Host& host) : card_(card), host_(host) {}

qint64 SimTransport::latency(int replyBytes, int delayMs) {
    return 5 + (replyBytes + 10) / 11 + delayMs;
}

void SimTransport::open() {
    if (heldElsewhere_ || open_)
        throw PortError(PortFault::AlreadyOpen, QStringLiteral("Port already open"));
    // No port has number 0 or below.
    if (card_.unplugged() || commPort_ < 1)
        throw PortError(PortFault::Other, QStringLiteral("No such port"));
    open_ = true;
    dropArrived();
}

// The card went away under an open port: the port is lost with it.
void SimTransport::checkUsable() {
    if (open_ && card_.unplugged()) {
        open_ = false;
        throw PortError(PortFault::DeviceGone, QStringLiteral("Device gone"));
    }
    if (!open_) throw PortError(PortFault::Other, QStringLiteral("Port is closed"));
}

void SimTransport::dropArrived() {
    const qint64 now = host_.now();
    while (!pending_.empty() && pending_.front().at <= now)
        pending_.pop_front();
}

void SimTransport::write(const QByteArray& bytes) {
    checkUsable();
    const qint64 now = host_.now();
    trace_.toCard(now, bytes);
    const QByteArray reply = card_.receive(bytes);
    if (reply.isEmpty()) return;
    const qint64 at = now + latency(int(reply.size()), card_.faults().delayMs);
    trace_.fromCard(at, reply);
    // Replies stay in arrival order even when the delay changed between frames.
    auto pos = pending_.end();
    while (pos != pending_.begin() && std::prev(pos)->at > at)
        --pos;
    pending_.insert(pos, {at, reply});
}

int SimTransport::bytesAvailable() {
    checkUsable();
    const qint64 now = host_.now();
    int n = 0;
    for (const Pending& p : pending_)
        if (p.at <= now) n += int(p.bytes.size());
    return n;
}

QByteArray SimTransport::readAll() {
    checkUsable();
    const qint64 now = host_.now();
    QByteArray out;
    while (!pending_.empty() && pending_.front().at <= now) {
        out += pending_.front().bytes;
        pending_.pop_front();
    }
    return out;
}

void SimTransport::clearInput() {
    if (!open_) return;
    checkUsable();
    dropArrived();
}

} // namespace velmorak::sim
