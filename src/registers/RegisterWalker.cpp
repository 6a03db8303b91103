#include "registers/RegisterWalker.h"

#include "link/ParamBlock.h"
#include "link/ValueHelpers.h"

#include <cmath>
#include <limits>

namespace velmorak {

namespace {

QString cellText(const char* s) {
    return s ? QString::fromLatin1(s) : QString();
}

void setUpMember(UcBitsField& m, const RegisterRow& row) {
    for (int i = 0; i < 8; ++i) {
        m.setBitIndex(qint16(i));
        m.setBitVisible(row.shown & (1 << i));
    }
    for (int i = 0; i < 8; ++i) {
        if (!(row.shown & (1 << i))) continue;
        m.setBitIndex(qint16(i));
        m.setBitEnable(row.edit & (1 << i));
        // Read-back colour only after the cell is disabled, or it is lost.
        if (row.status & (1 << i)) {
            m.setBitEnable(false);
            m.setBitRead(true);
        }
    }
    m.setFSum_Visible(row.kind == RegisterRow::Register);
}

void put(BitsFieldArray& rows, int member, int value, quint16 mask, const MemberWritten& written) {
    if (mask != RegisterRow::kWhole) value &= mask;
    rows(member).WriteByte(qint16(value));
    if (written) written(member);
}

} // namespace

void buildRows(Form& form, const RegisterMap& map) {
    auto& rows = form.array<UcBitsField>(QString::fromLatin1(map.array));
    for (int m = 0; m < int(map.rows.size()); ++m) {
        if (!rows.exists(m)) rows.load(m);
        setUpMember(rows(m), map.rows[size_t(m)]);
    }
    for (const RegisterGrid& g : map.grids) {
        auto& grid = form.control<Grid>(QString::fromLatin1(g.grid));
        grid.setCols(4);
        grid.setRows(g.last - g.first + 2);
        grid.setFixedRows(1);
        grid.setFixedCols(0);
        for (int c = 0; c < 4; ++c)
            grid.setTextMatrix(0, c, QString::fromLatin1(kGridHeaders[c]));
        for (int m = g.first; m <= g.last; ++m) {
            const RegisterRow& row = map.rows[size_t(m)];
            const int r = m - g.first + 1;
            grid.setTextMatrix(r, 0, cellText(row.address));
            grid.setTextMatrix(r, 1, cellText(row.name));
            grid.setTextMatrix(r, 3, cellText(row.cellText));
        }
    }
}

ImageSpread spreadImage(BitsFieldArray& rows, const RegisterMap& map, const QByteArray& image,
                        const MemberWritten& written) {
    ImageSpread out;
    for (int k = 1; k <= map.imageLength; ++k) {
        if (k > image.size()) return out;
        const int b = quint8(image[k - 1]);
        out.sum += b;
        for (int m = 0; m < int(map.rows.size()); ++m) {
            const RegisterRow& row = map.rows[size_t(m)];
            if (row.imageByte != k || (row.keepOnZero && b == 0)) continue;
            put(rows, m, b, row.imageMask, written);
        }
        out.taken = k;
    }
    out.complete = true;
    return out;
}

int spreadList(BitsFieldArray& rows, const RegisterMap& map, const QString& list,
               const MemberWritten& written) {
    qsizetype from = 0;
    for (int n = 1; n <= map.listLength; ++n) {
        const qsizetype comma = list.indexOf(QLatin1Char(','), from);
        if (comma < 0) return n - 1;
        const qint16 value = ToInt16(Val(list.mid(from, comma - from)));
        from = comma + 1;
        for (int m = 0; m < int(map.rows.size()); ++m) {
            const RegisterRow& row = map.rows[size_t(m)];
            if (row.listNumber == n) put(rows, m, value, row.listMask, written);
        }
    }
    return map.listLength;
}

QByteArray collectBlock(BitsFieldArray& rows, const RegisterMap& map) {
    QByteArray block;
    for (int m : map.loadOrder)
        block.append(char(rows(m).ReadByte()));
    return block;
}

int registerRowOf(const RegisterMap& map, int member) {
    const quint8 reg = map.rows[size_t(member)].reg;
    for (int m = 0; m < int(map.rows.size()); ++m)
        if (map.rows[size_t(m)].reg == reg && map.rows[size_t(m)].kind == RegisterRow::Register)
            return m;
    return -1;
}

} // namespace velmorak
