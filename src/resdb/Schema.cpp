#include "resdb/Schema.h"

#include "link/ValueHelpers.h"
#include "resdb/SqliteHandle.h"

namespace velmorak {

using detail::quoteIdent;

const QStringList& RegisterFieldNames() {
    static const QStringList names = {
        "01",  "02",   "03",  "04",  "05",  "06",  "07",  "08",  "09",  "0AH", "0BH", "0CH",
        "0DH", "0EH",  "0FH", "10H", "11H", "12H", "13H", "14H", "15H", "16H", "17H", "08T",
        "09T", "0AHT", "32H", "33H", "34H", "35H", "36H", "37H", "38H", "39H"};
    return names;
}

const QStringList& RezFieldNames() {
    static const QStringList names = QStringList{"NN", "Name", "NameSort", "Vertical"} +
                                     RegisterFieldNames() + QStringList{"Description", "Mark"};
    return names;
}

const QStringList& HGroupList() {
    static const QStringList list = {"480", "600",  "720",  "768", "864",
                                     "960", "1024", "1080", "1200"};
    return list;
}

const QStringList& CardMemoryFieldNames() {
    static const QStringList names = [] {
        QStringList n = RegisterFieldNames();
        for (const char* drop : {"35H", "17H", "16H", "14H"})
            n.removeOne(QLatin1String(drop));
        return n;
    }();
    return names;
}

namespace {

QString rowTable(const QString& table) {
    QStringList cols = {"NN INTEGER", "Name TEXT", "NameSort TEXT", "Vertical INTEGER"};
    for (const QString& r : RegisterFieldNames())
        cols << QStringLiteral("%1 INTEGER CHECK (%1 IS NULL OR %1 BETWEEN 0 AND 255)")
                    .arg(quoteIdent(r));
    cols << "Description TEXT"
         << "Mark TEXT";
    return QStringLiteral("CREATE TABLE %1 (\n  %2\n);\nCREATE INDEX %3 ON %1 (Name);\n")
        .arg(table, cols.join(QStringLiteral(",\n  ")), quoteIdent(table + "_Name"));
}

QString quotedList(const QStringList& names) {
    QStringList q;
    for (const QString& n : names)
        q << quoteIdent(n);
    return q.join(QStringLiteral(", "));
}

const char* const kLive = "(Mark IS NULL OR Mark = '')";

QByteArray blockOf(const QStringList& fields, const std::function<int(const QString&)>& get) {
    QByteArray b;
    for (const QString& f : fields)
        b.append(char(get(f) & 0xFF));
    return b;
}

QStringList ad9888Fields() {
    return RegisterFieldNames().mid(0, 23);
}

QStringList transmitterFields() {
    return RegisterFieldNames().mid(23);
}

} // namespace

void CreateSchema(Database& db) {
    QString sql = rowTable("tblDefValues") + rowTable("tblCustValues");
    sql += "CREATE TABLE tblVValues (Val_V INTEGER, Border INTEGER);\n"
           "CREATE TABLE tblHValues (Border_H INTEGER);\n"
           "CREATE TABLE tblCodesRez (CodeRez INTEGER, NameRez TEXT);\n"
           "CREATE INDEX tblCodesRez_CodeRez ON tblCodesRez (CodeRez);\n"
           "CREATE INDEX tblCodesRez_NameRez ON tblCodesRez (NameRez);\n";
    sql += QStringLiteral("CREATE VIEW tblDefValuesQ AS SELECT Name, Description, %1 FROM "
                          "tblDefValues WHERE %2 ORDER BY NameSort;\n")
               .arg(quotedList(RegisterFieldNames()), kLive);
    // Rows of a vertical group in the order of the height classes: DE_LIN, the active lines.
    sql += QStringLiteral("CREATE VIEW tblDefPresetsQ AS SELECT Name, Vertical, %1 FROM "
                          "tblDefValues WHERE %2 ORDER BY \"38H\" + 256 * \"39H\", NameSort;\n")
               .arg(quotedList(CardMemoryFieldNames()), kLive);
    db.Execute(sql);
}

quint8 RezRow::reg(const QString& field) const {
    const qsizetype i = RegisterFieldNames().indexOf(field);
    if (i < 0)
        throw DbError(DbErr::ItemNotFound, QStringLiteral("No register field %1").arg(field));
    return regs[size_t(i)];
}

void RezRow::setReg(const QString& field, int value) {
    const qsizetype i = RegisterFieldNames().indexOf(field);
    if (i < 0)
        throw DbError(DbErr::ItemNotFound, QStringLiteral("No register field %1").arg(field));
    regs[size_t(i)] = quint8(value & 0xFF);
}

RezRow ReadRezRow(Recordset& rs) {
    RezRow r;
    r.NN = ToInt16(rs.Fields("NN").Value().toDouble());
    r.Name = rs.Fields("Name").Value().toString();
    r.NameSort = rs.Fields("NameSort").Value().toString();
    r.Vertical = ToInt16(rs.Fields("Vertical").Value().toDouble());
    for (int i = 0; i < kRegisterCount; ++i)
        r.regs[size_t(i)] = quint8(rs.Fields(kFirstRegisterOrdinal + i).Value().toInt() & 0xFF);
    r.Description = rs.Fields("Description").Value();
    r.Mark = rs.Fields("Mark").Value();
    return r;
}

void WriteRezRow(Recordset& rs, const RezRow& row, bool adding) {
    if (adding) {
        rs.Fields("NN").setValue(DbValue(int(row.NN)));
        rs.Fields("Name").setValue(DbValue(row.Name));
        rs.Fields("NameSort").setValue(DbValue(row.NameSort));
        rs.Fields("Vertical").setValue(DbValue(int(row.Vertical)));
    }
    if (!row.Description.toString().isEmpty()) rs.Fields("Description").setValue(row.Description);
    rs.Fields("Mark").setValue(DbValue(QString()));
    for (int i = 0; i < kRegisterCount; ++i)
        rs.Fields(kFirstRegisterOrdinal + i).setValue(DbValue(int(row.regs[size_t(i)])));
}

QByteArray AD9888LoadBlock(const RezRow& row) {
    return blockOf(ad9888Fields(), [&](const QString& f) { return row.reg(f); });
}
QByteArray TransmitterLoadBlock(const RezRow& row) {
    return blockOf(transmitterFields(), [&](const QString& f) { return row.reg(f); });
}
QByteArray CardMemoryBlock(const RezRow& row) {
    return blockOf(CardMemoryFieldNames(), [&](const QString& f) { return row.reg(f); });
}
QByteArray AD9888LoadBlock(Recordset& rs) {
    return blockOf(ad9888Fields(),
                   [&](const QString& f) { return int(rs.Fields(f).Value().toInt()); });
}
QByteArray TransmitterLoadBlock(Recordset& rs) {
    return blockOf(transmitterFields(),
                   [&](const QString& f) { return int(rs.Fields(f).Value().toInt()); });
}
QByteArray CardMemoryBlock(Recordset& rs) {
    return blockOf(CardMemoryFieldNames(),
                   [&](const QString& f) { return int(rs.Fields(f).Value().toInt()); });
}

std::optional<CardAddress> CardMemoryAddress(int codeRez) {
    if (codeRez < 16) return std::nullopt;
    const int a = (codeRez - 16) * 32 + 0x2000;
    return CardAddress{a / 256, a % 256};
}

CardAddress AutoPresetAddress(int group, int slot) {
    const int a = (32 + 2 * group) * 256 + 32 * slot;
    return CardAddress{a / 256, a % 256};
}

} // namespace velmorak
