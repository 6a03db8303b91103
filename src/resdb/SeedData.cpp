#include "resdb/SeedData.h"

#include "link/ValueHelpers.h"
#include "resdb/RezLookup.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace velmorak {

namespace {

// AD9888 VCO range by pixel clock (MHz): 10-41, 41-82, 82-150, 150-205.
int vcoRange(double mhz) {
    return mhz < 41 ? 0 : mhz < 82 ? 1 : mhz < 150 ? 2 : 3;
}

// Charge pump current code (50 to 1500 uA) for the place of the clock in its VCO range: more
// current towards the top of a range keeps the loop bandwidth.
int chargePump(double mhz) {
    switch (vcoRange(mhz)) {
    case 0:
        return mhz < 28 ? 2 : mhz < 35 ? 4 : 5;
    case 1:
        return mhz < 55 ? 3 : 4;
    case 2:
        return mhz < 120 ? 4 : 5;
    default:
        return mhz < 190 ? 4 : 5;
    }
}

// Input bandwidth field of 15H (bits 2-1): 75, 150, 300, 500 MHz.
int inputBandwidth(double mhz) {
    return mhz < 30 ? 0 : mhz < 60 ? 1 : mhz < 120 ? 2 : 3;
}

} // namespace

QByteArray ParamBlockWithCounts(const SyncCounts& c, int firmwareMajor) {
    QByteArray b(24, '\0');
    b[8] = char(0x80); // RGB
    b[14] = char(c.syncV >> 8);
    b[15] = char(c.syncV & 0xFF);
    b[16] = char(c.syncH >> 8);
    b[17] = char(c.syncH & 0xFF);
    b[22] = char(firmwareMajor);
    return b;
}

SeedSource ParseSeedSource(const QString& text) {
    SeedSource src;
    const QStringList lines = text.split(QLatin1Char('\n'));
    static const QRegularExpression ws(QStringLiteral("\\s+"));
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i);
        const qsizetype hash = line.indexOf(QLatin1Char('#'));
        if (hash >= 0) line.truncate(hash);
        line = line.trimmed();
        if (line.isEmpty()) continue;
        const QStringList parts = line.split(ws);
        const QString& key = parts.first();
        auto fail = [&](const char* why) {
            throw std::runtime_error(QStringLiteral("line %1: %2: %3")
                                         .arg(i + 1)
                                         .arg(QLatin1String(why), lines.at(i).trimmed())
                                         .toStdString());
        };
        bool ok1 = false, ok2 = false;
        if (key == QLatin1String("vclass")) {
            if (parts.size() != 3) fail("vclass needs a group and a border");
            src.vValues.emplace_back(parts.at(1).toInt(&ok1), parts.at(2).toInt(&ok2));
            if (!ok1 || !ok2) fail("not a number");
        } else if (key == QLatin1String("hborder")) {
            if (parts.size() != 2) fail("hborder needs one border");
            src.hBorders.push_back(parts.at(1).toInt(&ok1));
            if (!ok1) fail("not a number");
        } else if (key == QLatin1String("mode")) {
            if (parts.size() < 2) fail("mode needs a name");
            SeedMode m;
            m.name = parts.at(1);
            m.description = line.mid(line.indexOf(m.name) + m.name.size()).trimmed();
            const QStringList wh = m.name.split(QLatin1Char('x'));
            if (wh.size() != 3) fail("a name is width x height x rate");
            m.width = wh.at(0).toInt(&ok1);
            m.height = wh.at(1).toInt(&ok2);
            bool ok3 = false;
            m.rate = wh.at(2).toInt(&ok3);
            if (!ok1 || !ok2 || !ok3) fail("a name is width x height x rate");
            src.modes.push_back(m);
        } else {
            fail("unknown keyword");
        }
    }
    return src;
}

SeedSource ReadSeedSource(const QString& path) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        throw std::runtime_error(QStringLiteral("cannot read %1").arg(path).toStdString());
    return ParseSeedSource(QString::fromUtf8(f.readAll()));
}

RezRow ComputeRezRow(const VesaTiming& t, const QString& name, const QString& description) {
    RezRow r;
    r.Name = name;
    r.NameSort = NormalizeRez(name);
    r.Vertical = RezHeight(name);
    r.Description = description.isEmpty() ? DbValue() : DbValue(description);
    r.Mark = DbValue(QString());
    const double mhz = t.pixelClockKHz / 1000.0;
    const int hPos = t.hPositive ? 1 : 0;
    const int vPos = t.vPositive ? 1 : 0;

    // AD9888
    const int pll = t.hTotal() - 1; // 12 bits: 01H is the top eight, 02H bits 7-4 the rest
    r.setReg("01", pll >> 4);
    r.setReg("02", (pll & 0x0F) << 4);
    r.setReg("03", vcoRange(mhz) << 6 | chargePump(mhz) << 3);
    r.setReg("04", 128); // phase 16 of 32
    // Clamp inside the back porch: starts an eighth in, lasts a quarter of it.
    r.setReg("05", std::clamp(t.hBack / 8, 2, 255));
    r.setReg("06", std::clamp(t.hBack / 4, 4, 255));
    r.setReg("07", std::clamp(t.hSync, 1, 255)); // Hsync out width: the source's sync
    for (const char* f : {"08", "09", "0AH", "0BH", "0CH", "0DH"})
        r.setReg(f, 128);
    // Hsync polarity given (bit 7) as the timing has it (bit 6); Vsync out as in (bit 2).
    r.setReg("0EH", 0x80 | hPos << 6 | 0x04);
    r.setReg("0FH", 78);  // clamp on Hsync, clamp active low, coast active high, powered up
    r.setReg("10H", 184); // SOG threshold 23
    r.setReg("11H", 32);  // sync separator threshold
    r.setReg("12H", 4);   // pre-coast lines
    r.setReg("13H", 4);   // post-coast lines
    // What the sync detect register reads with this source on H/V sync and green sync.
    r.setReg("14H", 0x80 | hPos << 5 | 0x10 | (vPos ? 0 : 0x04) | 0x02 | 0x01);
    // Parallel output; a second channel above the single-link pixel rate.
    r.setReg("15H", (mhz > 165 ? 0x80 : 0) | 0x40 | inputBandwidth(mhz) << 1);
    r.setReg("16H", 0xFE); // "Must be set to 11111110"
    r.setReg("17H", 0x00); // "Must be set to 00000000"

    // Transmitter
    r.setReg("08T", 191); // VEN, HEN, DSEL, BSEL, EDGE, normal operation
    r.setReg("09T", 0);
    r.setReg("0AHT", 128);               // de-skew 4, disabled
    const int deDly = t.hSync + t.hBack; // from the sync edge to the first active pixel
    r.setReg("32H", deDly & 0xFF);
    r.setReg("33H", (deDly >> 8 & 1) | hPos << 4 | vPos << 5 | 0x40); // DE generator on
    r.setReg("34H", t.vSync + t.vBack); // DE_TOP: lines from the Vsync edge to the first active
    r.setReg("35H", 0);
    r.setReg("36H", t.width & 0xFF); // DE_CNT: active pixels
    r.setReg("37H", t.width >> 8 & 7);
    r.setReg("38H", t.height & 0xFF); // DE_LIN: active lines, the key of the auto preset slot
    r.setReg("39H", t.height >> 8 & 7);
    return r;
}

QStringList ValidateSeed(const SeedSource& src) {
    QStringList problems;
    QStringList groups, vBorders, hBorders;
    for (const auto& [group, border] : src.vValues) {
        if (group != 0) groups << QString::number(group);
        if (border != 0) vBorders << QString::number(border);
    }
    for (int b : src.hBorders)
        if (b != 0) hBorders << QString::number(b);
    if (vBorders.size() > 17 || hBorders.size() > 17) problems << "more than 17 borders";
    for (int i = 1; i < vBorders.size(); ++i)
        if (vBorders.at(i).toInt() >= vBorders.at(i - 1).toInt()) problems << "V borders must fall";
    for (int i = 1; i < hBorders.size(); ++i)
        if (hBorders.at(i).toInt() <= hBorders.at(i - 1).toInt()) problems << "H borders must rise";
    if (groups.size() > 16) problems << "more than 16 groups";
    // H is at most 65535 / 2; a last border above it keeps nH below 17, whose code would alias
    // slot 1 of the next group.
    if (hBorders.isEmpty() || hBorders.last().toInt() <= 32768)
        problems << "the last H border must lie above 32768";

    QSet<int> codes;
    QSet<QString> names;
    for (const SeedMode& m : src.modes) {
        const auto t = findVesaTiming({m.width, m.height, m.rate});
        if (!t) {
            problems << m.name + ": no VESA timing";
            continue;
        }
        if (t->pixelClockKHz > 205000) problems << m.name + ": pixel clock beyond 205 MHz";
        if (names.contains(m.name)) problems << m.name + ": named twice";
        names.insert(m.name);
        const qsizetype group = groups.indexOf(QString::number(m.rate));
        const qsizetype slot = HGroupList().indexOf(QString::number(m.height));
        if (group < 0) problems << m.name + ": its rate is no group";
        if (slot < 0) problems << m.name + ": its height is no slot";
        if (group < 0 || slot < 0) continue;
        const int code = int(group + 1) * 16 + int(slot);
        if (codes.contains(code)) problems << m.name + ": its slot is taken";
        codes.insert(code);
        const SyncCounts c = measure({t->width, t->height, t->rate}, 2);
        const int h = int(std::nearbyint(c.syncH / 2.0));
        const int measured = RezClassCode(c.syncV, h, vBorders, hBorders);
        if (measured != code)
            problems << QStringLiteral("%1: measured class %2, its slot is %3")
                            .arg(m.name)
                            .arg(measured)
                            .arg(code);
        if (t->hTotal() - 1 > 4095) problems << m.name + ": PLL divisor beyond 12 bits";
        if (t->hSync + t->hBack > 511) problems << m.name + ": DE_DLY beyond 9 bits";
        if (t->vSync + t->vBack > 127) problems << m.name + ": DE_TOP beyond 7 bits";
        if (t->width > 2047 || t->height > 2047)
            problems << m.name + ": DE_CNT/DE_LIN beyond 11 bits";
    }
    return problems;
}

void BuildSeedDatabase(const SeedSource& src, const QString& path) {
    const QStringList problems = ValidateSeed(src);
    if (!problems.isEmpty())
        throw std::runtime_error(problems.join(QLatin1Char('\n')).toStdString());
    const QString tmp = path + QStringLiteral(".tmp");
    QFile::remove(tmp);
    {
        auto db = Database::CreateDatabase(tmp, passwordOf(QString::fromLatin1(kDbConnect)));
        CreateSchema(*db);
        db->BeginTrans();
        {
            Recordset v = db->OpenRecordset(QStringLiteral("tblVValues"));
            for (const auto& [group, border] : src.vValues) {
                v.AddNew();
                v.Fields("Val_V").setValue(group);
                v.Fields("Border").setValue(border);
                v.Update();
            }
            Recordset h = db->OpenRecordset(QStringLiteral("tblHValues"));
            for (int b : src.hBorders) {
                h.AddNew();
                h.Fields("Border_H").setValue(b);
                h.Update();
            }
        }
        QStringList groups;
        for (const auto& vv : src.vValues)
            if (vv.first != 0) groups << QString::number(vv.first);
        Recordset codes = db->OpenRecordset(QStringLiteral("tblCodesRez"));
        for (const char* table : {"tblDefValues", "tblCustValues"}) {
            Recordset rs = db->OpenRecordset(QLatin1String(table));
            for (const SeedMode& m : src.modes) {
                RezRow row = ComputeRezRow(*findVesaTiming({m.width, m.height, m.rate}), m.name,
                                           m.description);
                row.NN = qint16(rs.RecordCount() + 1);
                rs.AddNew();
                WriteRezRow(rs, row, true);
                rs.Update();
            }
        }
        for (const SeedMode& m : src.modes) {
            const int code = int(groups.indexOf(QString::number(m.rate)) + 1) * 16 +
                             int(HGroupList().indexOf(QString::number(m.height)));
            codes.AddNew();
            codes.Fields("CodeRez").setValue(code);
            codes.Fields("NameRez").setValue(m.name);
            codes.Update();
        }
        codes.Close();
        db->CommitTrans();
        db->Close();
    }
    QFile::remove(path);
    if (!QFile::rename(tmp, path))
        throw std::runtime_error(QStringLiteral("cannot write %1").arg(path).toStdString());
}

} // namespace velmorak
