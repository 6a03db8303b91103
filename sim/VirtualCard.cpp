#include "sim/VirtualCard.h"

#include <algorithm>

namespace velmorak::sim {

namespace {

constexpr int kChipAd9888 = 32;
constexpr int kChipLaser = 64;
constexpr int kChipSerial = 88;
constexpr int kChipTx = 96;
constexpr int kChipMonitor = 128;
constexpr int kDataDevice = 166;
constexpr int kFullClass = 255;
constexpr int kShortClass = 254;

// The transmitter registers of the 11-byte block write, in order.
constexpr int kTxBlock[] = {0x08, 0x09, 0x0A, 0x32, 0x33, 0x34, 0x35, 0x36, 0x37, 0x38, 0x39};

constexpr quint8 kAdDefaults[VirtualCard::kAd9888Regs] = {
    0x02, 0x53, 0xF0, 0x48, 0x80, 0x80, 0x20, 0x20, 0x80, 0x80, 0x80, 0x80, 0x80,
    0x80, 0x40, 0x50, 0x00, 0x40, 0x20, 0x08, 0x00, 0x04, 0x32, 0x00, 0x00, 0x00};

// The OLD laser's registers 1 to 8 at power-on; the NEW laser's default stream.
constexpr quint8 kOldLaserImage[] = {9, 13, 24, 15, 16, 255, 15, 159};
constexpr quint8 kNewLaserImage[] = {165, 61, 101, 69, 64, 86, 4, 100, 69, 64, 86, 4, 0};
// NEW stream bits the driver sets itself: the latched faults and the reserved pairs, clear.
constexpr quint8 kNewLaserFixed[] = {0, 0, 0, 0, 0x3C, 0, 0xC0, 0x03, 0, 0x3C, 0, 0xC0, 0xFC};

int at(const QByteArray& b, int i) {
    return i < b.size() ? static_cast<quint8>(b[i]) : 0;
}

QByteArray padded(QByteArray b, int n) {
    if (b.size() < n) b.append(QByteArray(n - b.size(), '\0'));
    return b;
}

QByteArray text(const char* s, int width) {
    QByteArray b(s);
    if (b.size() < width) b.append(QByteArray(width - b.size(), ' '));
    return b;
}

} // namespace

VirtualCard::VirtualCard(const CardConfig& config) : cfg_(config) {
    std::copy(std::begin(kAdDefaults), std::end(kAdDefaults), ad_.begin());
    const int pll = lineTiming(cfg_.source.value_or(VideoMode{1024, 768, 75})).hTotal - 1;
    ad_[0x01] = static_cast<quint8>(pll >> 4);
    ad_[0x02] = static_cast<quint8>((pll & 0x0F) << 4);
    const quint8 txIds[] = {0x47, 0x1D, 0x21, 0x0A, 0x02};
    std::copy(std::begin(txIds), std::end(txIds), tx_.begin());
    tx_[0x08] = 0xBE;
    tx_[0x0A] = 0x80;
    if (laserKind() == LaserKind::Old)
        std::copy(std::begin(kOldLaserImage), std::end(kOldLaserImage), laser_.begin());
    else
        std::copy(std::begin(kNewLaserImage), std::end(kNewLaserImage), laser_.begin());
    applyLaserChip();
    const char* sn = "L4821";
    std::copy(sn, sn + kLaserSerial, serial_.begin());
    monitor_ = defaultEdid(!cfg_.rgb);
    display_ = monitor_;
    fibre_ = monitor_;
    initData();
    applySource();
}

LaserKind VirtualCard::laserKind() const {
    if (cfg_.laser != LaserKind::Auto) return cfg_.laser;
    return cfg_.firmwareMajor < 10 ? LaserKind::Old : LaserKind::New;
}

// What the driver itself does to the image it was given.
void VirtualCard::applyLaserChip() {
    if (laserKind() == LaserKind::Old) {
        // "Clear Registers" (register 4, bit 4): the driver returns to its power-on registers.
        if (laser_[3] & 0x10)
            std::copy(std::begin(kOldLaserImage), std::end(kOldLaserImage), laser_.begin());
        laser_[4] |= 0x80; // "Test" reads 1
        laser_[7] |= 0x80; // the laser is enabled
        return;
    }
    for (size_t i = 0; i < std::size(kNewLaserFixed); ++i)
        laser_[i] &= quint8(~kNewLaserFixed[i]);
}

void VirtualCard::initData() {
    data_ = QByteArray(kDataSize, char(0xFF));
    // Counter block: 412 days, highest temperature code 122 (48 C), 3 days over the limit.
    QByteArray counters(32, '\0');
    counters[1] = char(0x9C);
    counters[2] = char(0x01);
    counters[4] = char(122);
    counters[5] = char(3);
    setDataMemory(0x0000, counters);
    setDataMemory(0x0040, text(cfg_.receiver ? "VK-4410-RX" : "VK-4410-TX", 30));
    setDataMemory(0x0060, text(cfg_.receiver ? "VK24R-001874" : "VK24T-001873", 30));
    setDataMemory(0x0200, text("03/14/2009", 30));
    setDataMemory(0x0220, text("SO-58213", 30));
    setDataMemory(0x0240, text("JT/FINAL", 30));
    setDataMemory(kVersionAddress, QByteArray("UVersion 2.06 01/23/2009"));
}

void VirtualCard::setSource(std::optional<VideoMode> source) {
    cfg_.source = source;
    applySource();
}

void VirtualCard::setRefusedRegister(int chip, int reg) {
    cfg_.refuseChip = chip;
    cfg_.refuseRegister = reg;
}

// The chips' own view of the source: AD9888 sync status, transmitter resolution.
void VirtualCard::applySource() {
    quint8 status = 0;
    if (cfg_.source && cfg_.rgb) {
        const LineTiming lt = lineTiming(*cfg_.source);
        const bool sog = !cfg_.shv;
        status = 0x80 | 0x10;
        if (sog) status |= 0x40 | 0x08 | 0x02;
        if (lt.hPositive) status |= 0x20;
        if (!lt.vPositive) status |= 0x04;
        if (lt.vPositive) status |= 0x01;
    }
    ad_[0x14] = status;
    const int w = cfg_.source ? cfg_.source->width : 0;
    const int h = cfg_.source ? cfg_.source->height : 0;
    if (!cfg_.rgb) {
        tx_[0x36] = static_cast<quint8>(w & 0xFF);
        tx_[0x37] = static_cast<quint8>(w >> 8);
        tx_[0x38] = static_cast<quint8>(h & 0xFF);
        tx_[0x39] = static_cast<quint8>(h >> 8);
    }
    tx_[0x3A] = static_cast<quint8>(w & 0xFF);
    tx_[0x3B] = static_cast<quint8>((w >> 8) & 0x07);
    tx_[0x3C] = static_cast<quint8>(h & 0xFF);
    tx_[0x3D] = static_cast<quint8>((h >> 8) & 0x07);
}

bool VirtualCard::ad9888ReadOnly(int reg) {
    return reg == 0x00 || reg == 0x14 || reg == 0x18 || reg == 0x19;
}

bool VirtualCard::transmitterReadOnly(int reg) {
    return reg <= 0x07 || (reg >= 0x0B && reg <= 0x0E) || reg == 0x35 || reg >= 0x3A;
}

SyncCounts VirtualCard::syncCounts() const {
    if (measured_) return *measured_;
    // In DVI mode there is no analogue sync to count.
    if (!cfg_.source || !cfg_.rgb) return {};
    return measure(*cfg_.source, cfg_.firmwareMajor);
}

QByteArray VirtualCard::paramBlock() const {
    QByteArray p(kMinPayload, '\0');
    auto put = [&p](int pos, int v) { p[pos - 1] = static_cast<char>(v & 0xFF); };
    put(1, 76);  // 35.36 C
    put(3, 198); // 3.30 V
    put(4, 200); // 5.00 V
    put(5, 198); // 3.30 V
    const int sw = cfg_.switches;
    int s9 = 0;
    for (int k : {2, 3, 4, 6, 7})
        if (sw & (1 << k)) s9 |= 1 << (7 - k);
    if (cfg_.rgb) s9 |= 0x80;
    if (cfg_.shv) s9 |= 0x40;
    if (cfg_.fibres == 1) s9 |= 0x04;
    put(9, s9);
    int s10 =
        ((cfg_.ledDiagnostics & 3) << 4) | ((cfg_.ledTxError & 3) << 2) | (cfg_.ledRxError & 3);
    if (sw & (1 << 8)) s10 |= 0x80;
    if (sw & (1 << 9)) s10 |= 0x40;
    put(10, s10);
    // Mode LEDs, active low: DVI, RGB, SHV, SOG.
    int s11 = 0xF0;
    if (!cfg_.rgb) s11 &= ~0x80;
    if (cfg_.rgb) s11 &= ~0x40;
    if (cfg_.rgb && cfg_.shv) s11 &= ~0x20;
    if (cfg_.rgb && !cfg_.shv) s11 &= ~0x10;
    put(11, s11);
    const SyncCounts c = syncCounts();
    put(15, c.syncV >> 8);
    put(16, c.syncV);
    put(17, c.syncH >> 8);
    put(18, c.syncH);
    put(21, 0);
    put(22, cfg_.receiver ? 1 : 0);
    put(23, cfg_.firmwareMajor);
    put(24, cfg_.firmwareMinor);
    for (const auto& [pos, value] : paramHeld_)
        put(pos, value);
    return p;
}

void VirtualCard::setParamByte(int pos, std::optional<int> value) {
    if (pos < 1 || pos > kMinPayload) return;
    if (value)
        paramHeld_[pos] = *value;
    else
        paramHeld_.erase(pos);
}

QByteArray VirtualCard::laserImage() const {
    return QByteArray(reinterpret_cast<const char*>(laser_.data()), kLaserImage);
}

QByteArray VirtualCard::laserSerial() const {
    return QByteArray(reinterpret_cast<const char*>(serial_.data()), kLaserSerial);
}

QByteArray VirtualCard::monitorMemory() const {
    return monitor_;
}

QByteArray VirtualCard::dataMemory(int address, int count) const {
    QByteArray out;
    out.reserve(count);
    for (int i = 0; i < count; ++i)
        out += data_[(address + i) & (kDataSize - 1)];
    return out;
}

void VirtualCard::setMonitorMemory(int offset, const QByteArray& bytes) {
    for (int i = 0; i < bytes.size() && offset + i < kMonitorSize; ++i)
        monitor_[offset + i] = bytes[i];
}

void VirtualCard::setDisplayEdid(const QByteArray& edid) {
    display_ = edid.left(kMonitorSize);
    display_.append(QByteArray(kMonitorSize - display_.size(), char(0xFF)));
}

// A Receiver reads its display afresh, a Transmitter takes what came over the fibre; with no
// monitor behind the link there is nothing to take.
QByteArray VirtualCard::refreshMonitor() {
    if (!cfg_.monitorAttached) return "NO";
    monitor_ = cfg_.receiver ? display_ : fibre_;
    return "OK";
}

// A Receiver sends its monitor data on to the Transmitter.
QByteArray VirtualCard::transmitMonitor() {
    if (cfg_.receiver) fibre_ = monitor_;
    return "OK";
}

void VirtualCard::setDataMemory(int address, const QByteArray& bytes) {
    for (int i = 0; i < bytes.size(); ++i)
        data_[(address + i) & (kDataSize - 1)] = bytes[i];
}

QByteArray VirtualCard::readRegisters(int chip, int reg, int count) const {
    QByteArray out;
    for (int r = reg; r < reg + count; ++r) {
        int v = 0;
        switch (chip) {
        case kChipAd9888:
            v = r < kAd9888Regs ? ad_[r] : 0;
            break;
        case kChipTx:
            v = r < kTxRegs ? tx_[r] : 0;
            break;
        case kChipLaser:
            v = r < kLaserImage ? laser_[r] : 0;
            break;
        case kChipSerial:
            v = r < kLaserSerial ? serial_[r] : 0;
            break;
        default:
            break;
        }
        out += static_cast<char>(v);
    }
    return out;
}

QByteArray VirtualCard::readEE(int chip, int sel) const {
    if (chip == kChipMonitor) {
        QByteArray out = monitor_.mid(sel, kMinPayload);
        return padded(out, kMinPayload);
    }
    const bool full = sel == kFullClass;
    const bool shortRead = sel == kShortClass;
    if (!full && !shortRead) return readRegisters(chip, sel, 3);
    switch (chip) {
    case kChipAd9888:
        return padded(full ? readRegisters(chip, 0, kAd9888Regs) : readRegisters(chip, 0x18, 2),
                      kMinPayload);
    case kChipTx:
        return padded(full ? readRegisters(chip, 0, 0x0F) : readRegisters(chip, 0x32, 12),
                      kMinPayload);
    case kChipLaser:
        return padded(laserImage(), kMinPayload);
    case kChipSerial:
        return padded(laserSerial(), kMinPayload);
    default:
        return {};
    }
}

int VirtualCard::registerValue(int chip, int reg) const {
    return reg < 0 ? 0 : static_cast<quint8>(readRegisters(chip, reg, 1).at(0));
}

void VirtualCard::setRegister(int chip, int reg, int value) {
    const auto v = static_cast<quint8>(value);
    if (reg < 0) return;
    if (chip == kChipAd9888 && reg < kAd9888Regs) ad_[reg] = v;
    if (chip == kChipTx && reg < kTxRegs) tx_[reg] = v;
    if (chip == kChipLaser && reg < kLaserImage) laser_[reg] = v;
    if (chip == kChipSerial && reg < kLaserSerial) serial_[reg] = v;
}

void VirtualCard::writeRegister(int chip, int reg, int value) {
    if (chip == cfg_.refuseChip && reg == cfg_.refuseRegister) return;
    const auto v = static_cast<quint8>(value);
    switch (chip) {
    case kChipAd9888:
        if (reg < kAd9888Regs && !ad9888ReadOnly(reg)) ad_[reg] = v;
        break;
    case kChipTx:
        if (reg < kTxRegs && !transmitterReadOnly(reg)) tx_[reg] = v;
        break;
    case kChipLaser:
        if (reg < kLaserImage) laser_[reg] = v;
        break;
    case kChipSerial:
        if (reg < kLaserSerial) serial_[reg] = v;
        break;
    default:
        break;
    }
}

void VirtualCard::writeEE(int chip, int sel, const QByteArray& data) {
    if (sel != kFullClass) {
        if (!data.isEmpty()) writeRegister(chip, sel, at(data, 0));
        if (chip == kChipLaser) applyLaserChip();
        return;
    }
    switch (chip) {
    case kChipAd9888:
        for (int i = 0; i < data.size() && 1 + i <= 0x17; ++i)
            writeRegister(chip, 1 + i, at(data, i));
        break;
    case kChipTx:
        for (int i = 0; i < data.size() && i < int(std::size(kTxBlock)); ++i)
            writeRegister(chip, kTxBlock[i], at(data, i));
        break;
    case kChipLaser:
    case kChipSerial:
        for (int i = 0; i < data.size(); ++i)
            writeRegister(chip, i, at(data, i));
        if (chip == kChipLaser) applyLaserChip();
        break;
    default:
        break;
    }
}

QByteArray VirtualCard::answer(const QByteArray& frame) {
    const QByteArray key = frame.left(4);
    const QByteArray head = key + static_cast<char>(at(frame, 4)) + static_cast<char>(at(frame, 5));
    if (frame == "5USB")
        return QByteArray("5DVI") + static_cast<char>(cfg_.firmwareMajor) +
               static_cast<char>(cfg_.firmwareMinor);
    if (frame.startsWith("CMDRRMON")) return head + refreshMonitor();
    if (frame.startsWith("CMDRTMIN")) return head + transmitMonitor();
    if (key == "PARR" && frame.size() >= 6) return head + paramBlock();
    if (key == "RDEE" && frame.size() >= 6) {
        const QByteArray data = readEE(at(frame, 4), at(frame, 5));
        return data.isEmpty() ? QByteArray() : head + data;
    }
    if (key == "WREE" && frame.size() >= 6) {
        writeEE(at(frame, 4), at(frame, 5), frame.mid(6));
        return {};
    }
    if (key == "RDDB" && frame.size() >= 8 && at(frame, 4) == kDataDevice) {
        const int count = std::max(at(frame, 5), kMinPayload);
        return head + dataMemory(at(frame, 6) * 256 + at(frame, 7), count);
    }
    if (key == "WRDB" && frame.size() >= 8 && at(frame, 4) == kDataDevice) {
        setDataMemory(at(frame, 6) * 256 + at(frame, 7), frame.mid(8));
        return {};
    }
    if (key == "WRM2" && frame.size() >= 6 && at(frame, 5) == 'M') {
        setMonitorMemory(at(frame, 4), frame.mid(6));
        return {};
    }
    return {};
}

QByteArray VirtualCard::receive(const QByteArray& frame) {
    if (unplugged_) return {};
    ++frames_;
    if ((faults_.unplugAfter > 0 && frames_ >= faults_.unplugAfter) ||
        (!faults_.unplugOn.isEmpty() && frame.startsWith(faults_.unplugOn) &&
         --faults_.unplugOnNth <= 0)) {
        unplugged_ = true;
        return {};
    }
    const bool cutWrite = faults_.dataWriteBytes >= 0 && frame.startsWith("WRDB");
    QByteArray reply = answer(cutWrite ? frame.left(8 + faults_.dataWriteBytes) : frame);
    if (faults_.silent) return {};
    if (faults_.shortReply >= 0) reply.truncate(faults_.shortReply);
    if (faults_.garble)
        for (char& c : reply)
            c = char(~c);
    return reply;
}

// One EDID block for a 17" 1280x1024 monitor of our own make, then erased memory.
QByteArray VirtualCard::defaultEdid(bool digital) {
    static const quint8 block[128] = {
        // header, maker "KRV", product 0x1780, serial 4711, week 12 of 2008, EDID 1.3
        0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x2E, 0x56, 0x80, 0x17, 0x67, 0x12, 0x00,
        0x00, 0x0C, 0x12, 0x01, 0x03,
        // input (set below), 34 x 27 cm, gamma 2.2, features
        0x0F, 0x22, 0x1B, 0x78, 0xE8,
        // chromaticity
        0xEE, 0x95, 0xA3, 0x54, 0x4C, 0x99, 0x26, 0x0F, 0x50, 0x54,
        // established: 640x480@60, 800x600@60/75, 1024x768@60/75, 1280x1024@75
        0x21, 0x4A, 0x80,
        // standard: 1280x1024@60, 1024x768@75, 1280x1024@75, unused
        0x81, 0x80, 0x61, 0x4F, 0x81, 0x8F, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01, 0x01,
        0x01,
        // preferred: 1280x1024 at 60 Hz, 108 MHz, 338 x 270 mm
        0x30, 0x2A, 0x00, 0x98, 0x51, 0x00, 0x2A, 0x40, 0x30, 0x70, 0x13, 0x00, 0x52, 0x0E, 0x11,
        0x00, 0x00, 0x1E,
        // range: 56-76 Hz, 30-81 kHz, 140 MHz
        0x00, 0x00, 0x00, 0xFD, 0x00, 0x38, 0x4C, 0x1E, 0x51, 0x0E, 0x00, 0x0A, 0x20, 0x20, 0x20,
        0x20, 0x20, 0x20,
        // name
        0x00, 0x00, 0x00, 0xFC, 0x00, 'K', 'R', 'V', ' ', 'L', 'u', 'm', 'a', '1', '7', 0x0A, 0x20,
        0x20,
        // serial text
        0x00, 0x00, 0x00, 0xFF, 0x00, 'K', 'R', 'V', '0', '8', '0', '4', '7', '1', '1', 0x0A, 0x20,
        0x20,
        // extensions, checksum (set below)
        0x00, 0x00};
    QByteArray e(reinterpret_cast<const char*>(block), 128);
    e[20] = static_cast<char>(digital ? 0x80 : 0x0F);
    int sum = 0;
    for (int i = 0; i < 127; ++i)
        sum += static_cast<quint8>(e[i]);
    e[127] = static_cast<char>((256 - sum % 256) % 256);
    return e + QByteArray(128, char(0xFF));
}

} // namespace velmorak::sim
