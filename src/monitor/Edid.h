#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace velmorak {

// One slice of a write into the card's monitor memory: where it starts, how long it is, and how
// long the card needs after it.
struct MonitorSlice {
    int start;
    int length;
    int pauseMs;
};

// The twelve slices of a 256-byte image; a 128-byte image takes the first six.
extern const MonitorSlice kMonitorSlices[12];
constexpr int kSlicesPerBlock = 6;

// The built-in monitor data: one EDID block of our own 19" monitor, digital or analogue input.
// They differ in the input definition (byte 20) and the checksum (byte 127).
enum class DefaultEdid { Dvi, Rgb };
// The six lines of an image, comma-separated hexadecimal pairs, sent as six slices.
const char* const* defaultEdidLines(DefaultEdid which);
QByteArray defaultEdid(DefaultEdid which);

// What an EDID says, decoded for people (EDID 1.3 / 1.4 base block).
struct EdidInfo {
    struct Block {
        int stored;   // the checksum byte as found
        int computed; // the byte that makes the block sum to zero
        bool ok() const { return stored == computed; }
    };
    bool headerOk = false;
    QString manufacturer; // three letters
    int productCode = 0;
    quint32 serialNumber = 0;
    int week = 0; // 0: not given; 255 (1.4): year of the model
    int year = 0;
    int version = 0;
    int revision = 0;
    bool digital = false;
    QString input; // "Digital, DVI, 8 bits per colour" / "Analogue, 0.700/0.300 V, separate sync"
    int widthCm = 0;
    int heightCm = 0;
    // First detailed timing (the preferred one); zero clock: none.
    int pixelClockKHz = 0;
    int hActive = 0, vActive = 0, hTotal = 0, vTotal = 0;
    double refreshHz() const;
    QString monitorName;
    QString serialText;
    int extensions = 0;
    std::vector<Block> blocks; // one a 128-byte block present
};

EdidInfo decodeEdid(const QByteArray& edid);
// The decoded view, one "Field: value" line a field.
QStringList describeEdid(const EdidInfo& info);

} // namespace velmorak
