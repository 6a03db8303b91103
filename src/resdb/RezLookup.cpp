#include "resdb/RezLookup.h"

#include "link/ValueHelpers.h"
#include "resdb/Schema.h"

#include <cmath>

namespace velmorak {

namespace {

// The listing pattern: MoveLast, RecordCount, MoveFirst, then that many rows.
template <typename F> void forEachRow(Recordset& rs, F f) {
    if (!(rs.Eof() && rs.Bof())) {
        rs.MoveLast();
        const int n = rs.RecordCount();
        rs.MoveFirst();
        for (int i = 0; i < n; ++i) {
            f(rs);
            rs.MoveNext();
        }
    }
    rs.Close();
}

QStringList nonZero(Database& db, const QString& table, const QString& field) {
    QStringList out;
    Recordset rs = db.OpenRecordset(table);
    forEachRow(rs, [&](Recordset& r) {
        const qint64 v = r.Fields(field).Value().toInt();
        if (v != 0) out << QString::number(v);
    });
    return out;
}

double entry(const QStringList& list, int i) {
    return i < list.size() ? Val(list.at(i)) : 0.0; // an index past the list reads as empty
}

int byte(const QByteArray& b, int pos) {
    return quint8(b.at(pos - 1));
}

} // namespace

RezClassLists FillRezClassLists(Database& db) {
    RezClassLists l;
    l.lstVGroup = nonZero(db, QStringLiteral("tblVValues"), QStringLiteral("Val_V"));
    l.lstVBorders = nonZero(db, QStringLiteral("tblVValues"), QStringLiteral("Border"));
    l.lstHBorders = nonZero(db, QStringLiteral("tblHValues"), QStringLiteral("Border_H"));
    l.lstHGroup = HGroupList();
    return l;
}

QStringList ListRezNames(Database& db, const QString& table, bool liveOnly) {
    QStringList names;
    Recordset rs =
        db.OpenRecordset(QStringLiteral("SELECT * from %1 ORDER BY NameSort").arg(table));
    forEachRow(rs, [&](Recordset& r) {
        if (liveOnly && !r.Fields(QStringLiteral("Mark")).Value().toString().isEmpty()) return;
        names << r.Fields(QStringLiteral("Name")).Value().toString();
    });
    return names;
}

int RezClassCode(int syncV, int h, const QStringList& lstVBorders, const QStringList& lstHBorders) {
    int nV = 0;
    while (nV <= 16 && !(entry(lstVBorders, nV) < syncV))
        ++nV;
    int nH = 0;
    while (nH <= 16 && !(entry(lstHBorders, nH) > h))
        ++nH;
    return nV * 16 + nH;
}

QString FindRezName(const QByteArray& sParams, const QStringList& lstVBorders,
                    const QStringList& lstHBorders, Database& db) {
    if (sParams.size() < 18) return {};
    const int v = byte(sParams, 15) * 256 + byte(sParams, 16);
    const int h = int(std::nearbyint((byte(sParams, 17) * 256 + byte(sParams, 18)) / 2.0));
    const int code = RezClassCode(v, h, lstVBorders, lstHBorders);
    Recordset rs = db.OpenRecordset(QStringLiteral("tblCodesRez"));
    rs.setIndex(QStringLiteral("CodeRez"));
    rs.Seek(QStringLiteral("="), DbValue(code));
    QString name;
    if (!rs.NoMatch()) name = rs.Fields(QStringLiteral("NameRez")).Value().toString();
    rs.Close();
    if (name.isEmpty() || name.startsWith(QLatin1Char('>'))) return {};
    return name;
}

} // namespace velmorak
