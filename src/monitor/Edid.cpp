#include "monitor/Edid.h"

#include "link/ValueHelpers.h"

namespace velmorak {

const MonitorSlice kMonitorSlices[12] = {
    {0, 24, 500},   {24, 24, 500},  {48, 24, 500},  {72, 24, 500},  {96, 16, 300},  {112, 16, 300},
    {128, 24, 500}, {152, 24, 500}, {176, 24, 500}, {200, 24, 500}, {224, 16, 300}, {240, 16, 300}};

namespace {

// "VLM" Kestrel 19, 1280x1024 at 60 Hz preferred, 38 x 30 cm, made in week 27 of 2008.
const char* const kDviLines[kSlicesPerBlock] = {
    "00,FF,FF,FF,FF,FF,FF,00,59,8D,04,19,1F,2A,01,00,1B,12,01,03,80,26,1E,78",
    "EE,EE,91,A3,54,4C,99,26,0F,50,54,21,4B,00,81,80,61,4F,81,40,71,4F,01,01",
    "01,01,01,01,01,01,30,2A,00,98,51,00,2A,40,30,70,13,00,78,2D,11,00,00,1E",
    "00,00,00,FD,00,32,4C,1E,52,0E,00,0A,20,20,20,20,20,20,00,00,00,FC,00,4B",
    "65,73,74,72,65,6C,20,31,39,0A,20,20,00,00,00,FF",
    "00,56,4C,4D,38,46,30,37,36,33,31,39,0A,20,00,13"};

const char* const kRgbLines[kSlicesPerBlock] = {
    "00,FF,FF,FF,FF,FF,FF,00,59,8D,04,19,1F,2A,01,00,1B,12,01,03,0F,26,1E,78",
    kDviLines[1],
    kDviLines[2],
    kDviLines[3],
    kDviLines[4],
    "00,56,4C,4D,38,46,30,37,36,33,31,39,0A,20,00,84"};

int at(const QByteArray& b, int i) {
    return i < b.size() ? static_cast<quint8>(b[i]) : 0;
}

int le16(const QByteArray& b, int i) {
    return at(b, i) | at(b, i + 1) << 8;
}

// Descriptor text: up to 13 characters, ended by a line feed, blanks trimmed.
QString descriptorText(const QByteArray& b, int d) {
    QByteArray t = b.mid(d + 5, 13);
    const int lf = t.indexOf('\n');
    if (lf >= 0) t.truncate(lf);
    return QString::fromLatin1(t).trimmed();
}

QString analogueInput(int v) {
    static const char* const levels[] = {"0.700/0.300 V", "0.714/0.286 V", "1.000/0.400 V",
                                         "0.700/0.000 V"};
    QString s = QStringLiteral("Analogue, ") + QString::fromLatin1(levels[(v >> 5) & 3]);
    const struct {
        int bit;
        const char* text;
    } flags[] = {{0x10, "blank-to-black setup"},
                 {0x08, "separate sync"},
                 {0x04, "composite sync"},
                 {0x02, "sync on green"},
                 {0x01, "serration"}};
    for (const auto& f : flags)
        if (v & f.bit) s += QStringLiteral(", ") + QString::fromLatin1(f.text);
    return s;
}

QString digitalInput(int v, int revision) {
    QString s = QStringLiteral("Digital");
    if (revision < 4) {
        if (v & 1) s += QStringLiteral(", DFP 1.x compatible");
        return s;
    }
    static const char* const interfaces[] = {nullptr,  "DVI",  "HDMI-a",
                                             "HDMI-b", "MDDI", "DisplayPort"};
    const int iface = v & 0x0F;
    if (iface >= 1 && iface <= 5)
        s += QStringLiteral(", ") + QString::fromLatin1(interfaces[iface]);
    const int depth = (v >> 4) & 7;
    if (depth >= 1 && depth <= 6) s += QStringLiteral(", %1 bits per colour").arg(4 + 2 * depth);
    return s;
}

void decodeDescriptor(const QByteArray& b, int d, bool first, EdidInfo& info) {
    if (le16(b, d) != 0) {
        if (!first) return;
        info.pixelClockKHz = le16(b, d) * 10;
        info.hActive = at(b, d + 2) | (at(b, d + 4) >> 4) << 8;
        info.hTotal = info.hActive + (at(b, d + 3) | (at(b, d + 4) & 0x0F) << 8);
        info.vActive = at(b, d + 5) | (at(b, d + 7) >> 4) << 8;
        info.vTotal = info.vActive + (at(b, d + 6) | (at(b, d + 7) & 0x0F) << 8);
        return;
    }
    if (at(b, d + 3) == 0xFC && info.monitorName.isEmpty()) info.monitorName = descriptorText(b, d);
    if (at(b, d + 3) == 0xFF && info.serialText.isEmpty()) info.serialText = descriptorText(b, d);
}

} // namespace

const char* const* defaultEdidLines(DefaultEdid which) {
    return which == DefaultEdid::Dvi ? kDviLines : kRgbLines;
}

QByteArray defaultEdid(DefaultEdid which) {
    QByteArray out;
    for (int k = 0; k < kSlicesPerBlock; ++k)
        out += HexListToText(QString::fromLatin1(defaultEdidLines(which)[k]));
    return out;
}

double EdidInfo::refreshHz() const {
    if (hTotal <= 0 || vTotal <= 0) return 0;
    return pixelClockKHz * 1000.0 / (double(hTotal) * vTotal);
}

EdidInfo decodeEdid(const QByteArray& b) {
    EdidInfo info;
    info.headerOk = b.startsWith(QByteArray::fromHex("00FFFFFFFFFFFF00"));
    const int id = at(b, 8) << 8 | at(b, 9);
    for (int shift : {10, 5, 0}) {
        const int letter = (id >> shift) & 0x1F;
        info.manufacturer += letter >= 1 && letter <= 26 ? QChar(u'A' + letter - 1) : QChar(u'?');
    }
    info.productCode = le16(b, 10);
    info.serialNumber = quint32(le16(b, 12)) | quint32(le16(b, 14)) << 16;
    info.week = at(b, 16);
    info.year = 1990 + at(b, 17);
    info.version = at(b, 18);
    info.revision = at(b, 19);
    const int input = at(b, 20);
    info.digital = input & 0x80;
    info.input = info.digital ? digitalInput(input, info.revision) : analogueInput(input);
    info.widthCm = at(b, 21);
    info.heightCm = at(b, 22);
    for (int d = 54; d <= 108; d += 18)
        decodeDescriptor(b, d, d == 54, info);
    info.extensions = at(b, 126);
    for (int start = 0; start + 128 <= b.size(); start += 128) {
        int sum = 0;
        for (int i = start; i < start + 127; ++i)
            sum += at(b, i);
        info.blocks.push_back({at(b, start + 127), (256 - sum % 256) % 256});
    }
    return info;
}

QStringList describeEdid(const EdidInfo& i) {
    auto hex = [](int v, int width) {
        return QStringLiteral("%1").arg(v, width, 16, QLatin1Char('0')).toUpper();
    };
    QStringList out;
    if (!i.headerOk) out << QStringLiteral("Header: not an EDID header");
    out << QStringLiteral("Manufacturer: ") + i.manufacturer;
    out << QStringLiteral("Product code: %1 (%2H)").arg(i.productCode).arg(hex(i.productCode, 4));
    out << QStringLiteral("Serial number: %1").arg(i.serialNumber);
    if (i.week == 255)
        out << QStringLiteral("Model year: %1").arg(i.year);
    else if (i.week == 0)
        out << QStringLiteral("Made in: %1").arg(i.year);
    else
        out << QStringLiteral("Made in: week %1 of %2").arg(i.week).arg(i.year);
    out << QStringLiteral("EDID version: %1.%2").arg(i.version).arg(i.revision);
    out << QStringLiteral("Input: ") + i.input;
    if (i.widthCm && i.heightCm)
        out << QStringLiteral("Screen size: %1 x %2 cm").arg(i.widthCm).arg(i.heightCm);
    else
        out << QStringLiteral("Screen size: not given");
    if (i.pixelClockKHz)
        out << QStringLiteral("Preferred timing: %1x%2 at %3 Hz, %4 MHz")
                   .arg(i.hActive)
                   .arg(i.vActive)
                   .arg(i.refreshHz(), 0, 'f', 2)
                   .arg(i.pixelClockKHz / 1000.0, 0, 'f', 2);
    else
        out << QStringLiteral("Preferred timing: none");
    out << QStringLiteral("Monitor name: ") +
               (i.monitorName.isEmpty() ? QStringLiteral("none") : i.monitorName);
    if (!i.serialText.isEmpty()) out << QStringLiteral("Serial text: ") + i.serialText;
    out << QStringLiteral("Extension blocks: %1").arg(i.extensions);
    for (size_t k = 0; k < i.blocks.size(); ++k) {
        const EdidInfo::Block& b = i.blocks[k];
        const QString state = b.ok() ? QStringLiteral("correct")
                                     : QStringLiteral("wrong, should be ") + hex(b.computed, 2);
        out << QStringLiteral("Checksum of block %1: %2 %3").arg(k).arg(hex(b.stored, 2), state);
    }
    return out;
}

} // namespace velmorak
