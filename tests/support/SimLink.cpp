#include "support/SimLink.h"

#include "sim/SimTransport.h"
#include "sim/VirtualCard.h"

namespace velmorak::test {

namespace {

sim::CardConfig configOf(const SimLink::Card& c) {
    sim::CardConfig cfg;
    cfg.receiver = c.receiver;
    cfg.rgb = c.rgb;
    cfg.fibres = c.fibres;
    cfg.firmwareMajor = c.major;
    cfg.firmwareMinor = c.minor;
    if (c.source.isEmpty()) {
        cfg.source.reset();
    } else {
        cfg.source = parseVideoMode(c.source);
    }
    return cfg;
}

} // namespace

struct SimLink::Impl {
    Impl(SimLink& l, const Card& c)
        : card(configOf(c)), transport(card, l.host),
          fn(l.state, l.host, transport, l.dialogs, l.reactions) {}
    sim::VirtualCard card;
    sim::SimTransport transport;
    ModFunctions fn;
};

SimLink::SimLink() : SimLink(Card{}) {}

SimLink::SimLink(const Card& card) : d(std::make_unique<Impl>(*this, card)) {}

SimLink::~SimLink() = default;

ModFunctions& SimLink::fn() {
    return d->fn;
}

Transport& SimLink::port() {
    return d->transport;
}

sim::VirtualCard& SimLink::card() {
    return d->card;
}

void SimLink::silent(bool on) {
    sim::Faults f = d->card.faults();
    f.silent = on;
    d->card.setFaults(f);
}

void SimLink::shortReplies(int n) {
    sim::Faults f = d->card.faults();
    f.shortReply = n > 0 ? n : -1;
    d->card.setFaults(f);
}

void SimLink::unplugNow() {
    d->card.unplug();
}

void SimLink::holdPort(bool on) {
    d->transport.setHeldElsewhere(on);
}

void SimLink::replyDelay(int ms) {
    sim::Faults f = d->card.faults();
    f.delayMs = ms;
    d->card.setFaults(f);
}

QStringList SimLink::trace() const {
    return d->transport.traceLines();
}

QStringList SimLink::sent() const {
    QStringList out;
    for (const QString& line : d->transport.traceLines()) {
        const int at = line.indexOf(" > ");
        if (at >= 0) out << line.mid(at + 3);
    }
    return out;
}

QByteArray SimLink::lastSent() const {
    const QStringList frames = sent();
    if (frames.isEmpty()) return {};
    return QByteArray::fromHex(frames.last().toLatin1());
}

void SimLink::clearTrace() {
    d->transport.trace().clear();
}

int SimLink::reg(int chip, int reg) const {
    return d->card.registerValue(chip, reg);
}

void SimLink::setReg(int chip, int reg, int value) {
    d->card.setRegister(chip, reg, value);
}

QByteArray SimLink::dataMemory(int addr, int len) const {
    return d->card.dataMemory(addr, len);
}

} // namespace velmorak::test
