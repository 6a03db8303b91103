#pragma once

#include "timing/VideoTiming.h"

#include <QByteArray>

#include <array>
#include <map>
#include <optional>

namespace velmorak::sim {

// The laser driver fitted: OLD (eight registers) or NEW (a 98-bit stream in 13 bytes); Auto
// goes by the firmware, OLD below major 10.
enum class LaserKind { Auto, Old, New };

// What card the model is, and what it is connected to.
struct CardConfig {
    bool receiver = false;
    bool rgb = true;
    int fibres = 2;
    bool shv = false; // sync on separate H and V lines; false: sync on green
    int firmwareMajor = 2;
    int firmwareMinor = 3;
    std::optional<VideoMode> source = VideoMode{1024, 768, 75};
    bool monitorAttached = true;
    // Switch k of the card's ten-position switch is bit k. Switches 0, 1 and 5 are the
    // RGB, SHV and fibre settings above and are taken from those.
    int switches = 0;
    // Two-bit LED codes: high bit good, low bit fault.
    int ledDiagnostics = 2;
    int ledTxError = 2;
    int ledRxError = 2;
    // A register of chip refuseChip that silently keeps its value on every write (-1: none).
    int refuseChip = 32;
    int refuseRegister = -1;
    LaserKind laser = LaserKind::Auto;
};

// Misbehaviour on command.
struct Faults {
    bool silent = false;      // no replies at all
    int shortReply = -1;      // every reply cut to its first N bytes (-1: whole replies)
    int unplugAfter = 0;      // the card vanishes after taking frame N, unanswered (0: never)
    QByteArray unplugOn = {}; // the card vanishes on taking a frame that begins so (empty: never),
    int unplugOnNth = 1;      // the n-th such frame from when it was set
    int delayMs = 0;          // extra time before each reply
    bool garble = false;      // every reply's bits inverted: a device that is not the card
    int dataWriteBytes = -1;  // a data memory write keeps only its first N bytes (-1: all)
};

// The card's firmware: memories, commands and measurement.
class VirtualCard {
  public:
    static constexpr int kAd9888Regs = 0x1A;
    static constexpr int kTxRegs = 0x40;
    static constexpr int kLaserImage = 28;
    static constexpr int kLaserSerial = 5;
    static constexpr int kMonitorSize = 256;
    static constexpr int kDataSize = 65536;
    static constexpr int kMinPayload = 26;
    static constexpr int kVersionAddress = 0x18E0;
    static constexpr int kPresetArea = 0x2000;

    explicit VirtualCard(const CardConfig& config = {});

    const CardConfig& config() const { return cfg_; }
    // Old or New; never Auto.
    LaserKind laserKind() const;
    // A new source (or none) and what the chips report about it.
    void setSource(std::optional<VideoMode> source);
    void setMonitorAttached(bool attached) { cfg_.monitorAttached = attached; }
    // Counts the sync counters report whatever the source (nullopt: measured from the source).
    void setMeasuredCounts(std::optional<SyncCounts> counts) { measured_ = counts; }
    void setRefusedRegister(int chip, int reg);

    const Faults& faults() const { return faults_; }
    void setFaults(const Faults& f) { faults_ = f; }

    // Takes one frame; returns the reply as sent on the line (empty: no reply).
    // Faults apply here, except the delay, which belongs to the line.
    QByteArray receive(const QByteArray& frame);
    // The reply to a frame without faults and without counting it.
    QByteArray answer(const QByteArray& frame);
    bool unplugged() const { return unplugged_; }
    // The card vanishes now, as if pulled out.
    void unplug() { unplugged_ = true; }
    int framesTaken() const { return frames_; }

    // The parameter block, positions 1..26.
    QByteArray paramBlock() const;
    // A byte of the parameter block held at a value whatever the card measures (nullopt: let go).
    void setParamByte(int pos, std::optional<int> value);
    SyncCounts syncCounts() const;

    // Any register or byte of chip 32, 96, 64 or 88 (0 outside); the setter ignores read-only.
    int registerValue(int chip, int reg) const;
    void setRegister(int chip, int reg, int value);
    int ad9888(int reg) const { return ad_.at(reg); }
    int transmitter(int reg) const { return tx_.at(reg); }
    QByteArray laserImage() const;
    QByteArray laserSerial() const;
    QByteArray monitorMemory() const;
    QByteArray dataMemory(int address, int count) const;
    void setMonitorMemory(int offset, const QByteArray& bytes);
    // The EDID of the display behind the card, which "CMDRRMON" reads into the monitor memory
    // of a Receiver; a Transmitter takes the fibre's copy instead.
    QByteArray displayEdid() const { return display_; }
    void setDisplayEdid(const QByteArray& edid);
    // The monitor data that came over the fibre: a Receiver's "CMDRTMIN" sends its memory.
    QByteArray fibreEdid() const { return fibre_; }
    void setDataMemory(int address, const QByteArray& bytes);

    // Register numbers that keep their value on writes.
    static bool ad9888ReadOnly(int reg);
    static bool transmitterReadOnly(int reg);
    // The monitor data the card starts with: one EDID block, then erased memory.
    static QByteArray defaultEdid(bool digital);

  private:
    QByteArray readEE(int chip, int sel) const;
    void writeEE(int chip, int sel, const QByteArray& data);
    void writeRegister(int chip, int reg, int value);
    QByteArray readRegisters(int chip, int reg, int count) const;
    void applySource();
    void applyLaserChip();
    QByteArray refreshMonitor();
    QByteArray transmitMonitor();
    void initData();

    CardConfig cfg_;
    Faults faults_;
    std::array<quint8, kAd9888Regs> ad_{};
    std::array<quint8, kTxRegs> tx_{};
    std::array<quint8, kLaserImage> laser_{};
    std::array<quint8, kLaserSerial> serial_{};
    QByteArray monitor_;
    QByteArray display_;
    QByteArray fibre_;
    QByteArray data_;
    std::optional<SyncCounts> measured_;
    std::map<int, int> paramHeld_;
    int frames_ = 0;
    bool unplugged_ = false;
};

} // namespace velmorak::sim
