#pragma once

#include "resdb/Database.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace velmorak {

// The hidden classification lists of the main window.
struct RezClassLists {
    QStringList lstVGroup;   // tblVValues.Val_V, non-zero, table order
    QStringList lstVBorders; // tblVValues.Border, non-zero, table order (high to low)
    QStringList lstHBorders; // tblHValues.Border_H, non-zero, table order (low to high)
    QStringList lstHGroup;   // fixed height classes
};

// Reads the three lists from the database (each with its own cursor); lstHGroup is the fixed list.
RezClassLists FillRezClassLists(Database& db);

// Names of the rows of "SELECT * from <table> ORDER BY NameSort"; liveOnly keeps only rows whose
// Mark is Null or empty. An empty table gives an empty list.
QStringList ListRezNames(Database& db, const QString& table = QStringLiteral("tblDefValues"),
                         bool liveOnly = true);

// Class code nV * 16 + nH of the counts V and H: nV is the first index (0 to 16) whose V border
// is below V, nH the first whose H border is above H, 17 when none is. Missing entries read as 0.
int RezClassCode(int syncV, int h, const QStringList& lstVBorders, const QStringList& lstHBorders);

// The resolution that a parameter block measures: V from positions 15 and 16, H from 17 and 18
// halved (half to even), classified and looked up in tblCodesRez. Empty when no usable name fits
// or the block is shorter than 18 bytes.
QString FindRezName(const QByteArray& sParams, const QStringList& lstVBorders,
                    const QStringList& lstHBorders, Database& db);
inline QString FindRezName(const QByteArray& sParams, const RezClassLists& lists, Database& db) {
    return FindRezName(sParams, lists.lstVBorders, lists.lstHBorders, db);
}

} // namespace velmorak
