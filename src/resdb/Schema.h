#pragma once

#include "resdb/Database.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace velmorak {

// Fields of a resolution row (tblDefValues, tblCustValues) in ordinal order: NN, Name, NameSort,
// Vertical, the 34 register fields "01" to "39H" at ordinals 4 to 37, Description, Mark.
const QStringList& RezFieldNames();
// The 34 register fields, ordinals 4 to 37.
const QStringList& RegisterFieldNames();
inline constexpr int kFirstRegisterOrdinal = 4;
inline constexpr int kRegisterCount = 34;

// The fixed height classes of the auto preset slots.
const QStringList& HGroupList(); // "480", "600", ... "1200"

// Creates the tables, indexes and stored queries in an empty database.
void CreateSchema(Database& db);

// One resolution row in memory.
struct RezRow {
    qint16 NN = 0;
    QString Name;
    QString NameSort;
    qint16 Vertical = 0;
    std::array<quint8, kRegisterCount> regs{}; // "01" .. "39H" in ordinal order
    DbValue Description;
    DbValue Mark;

    quint8 reg(const QString& field) const;
    void setReg(const QString& field, int value);
};

// The row under a cursor; register fields that are Null read as 0.
RezRow ReadRezRow(Recordset& rs);
// Writes identity (when adding), Description (when not empty), Mark = "" and the registers
// by ordinal into a cursor that is in AddNew or Edit.
void WriteRezRow(Recordset& rs, const RezRow& row, bool adding);

// Register blocks of a row, one character per byte.
QByteArray AD9888LoadBlock(const RezRow& row);      // "01" to "17H", 23 bytes
QByteArray TransmitterLoadBlock(const RezRow& row); // "08T" .. "39H", 11 bytes
QByteArray CardMemoryBlock(const RezRow& row);      // 30 bytes, without 14H, 16H, 17H, 35H
QByteArray AD9888LoadBlock(Recordset& rs);
QByteArray TransmitterLoadBlock(Recordset& rs);
QByteArray CardMemoryBlock(Recordset& rs);
// Field names of the card memory block, in order.
const QStringList& CardMemoryFieldNames();

struct CardAddress {
    int high = 0;
    int low = 0;
    int value() const { return high * 256 + low; }
    bool operator==(const CardAddress&) const = default;
};
// Card memory address of a resolution code: (CodeRez - 16) * 32 + 0x2000; none below 16.
std::optional<CardAddress> CardMemoryAddress(int codeRez);
// Address of slot k of auto preset group i: (32 + 2i) * 256 + 32k.
CardAddress AutoPresetAddress(int group, int slot);

} // namespace velmorak
