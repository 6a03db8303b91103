#include "ConsoleBench.h"

#include "resdb/Database.h"
#include "resdb/Recordset.h"

#include <stdexcept>

namespace velmorak::test {

void ConsoleBench::chip(std::initializer_list<Reg> regs) {
    for (const Reg& r : regs)
        link.setReg(r.chip, r.reg, r.value);
}

void ConsoleBench::sql(const QString& text) {
    session->DbRez->Execute(text);
}

void ConsoleBench::row(const char* table, std::initializer_list<Col> cols, const char* name) {
    QStringList sets;
    for (const Col& c : cols)
        sets << QStringLiteral("\"%1\" = %2").arg(QString::fromLatin1(c.column)).arg(c.value);
    sql(QStringLiteral("UPDATE %1 SET %2 WHERE Name = '%3'")
            .arg(QString::fromLatin1(table), sets.join(", "), QString::fromLatin1(name)));
}

int ConsoleBench::column(const char* table, const char* column, const char* name) {
    Recordset rs = session->DbRez->OpenRecordset(QString::fromLatin1(table));
    rs.setIndex("Name");
    rs.Seek("=", QString::fromLatin1(name));
    if (rs.NoMatch()) return -1;
    return int(rs.Fields(QString::fromLatin1(column)).Value().toInt());
}

FrmConsole& ConsoleBench::open() {
    frm().mnuDisplayAdj.click();
    auto* f = session->forms.get<FrmConsole>("frmConsole");
    if (!f) throw std::runtime_error("frmConsole did not open");
    return *f;
}

QStringList ConsoleBench::writes() const {
    QStringList out;
    for (const QString& s : link.sent())
        if (s.startsWith("57 52 45 45")) out << s;
    return out;
}

QString wree(int chip, int reg, int value) {
    return QString::fromLatin1(
               (QByteArray("WREE") + char(chip) + char(reg) + char(value)).toHex(' '))
        .toUpper();
}

void usualCard(ConsoleBench& b) {
    b.row("tblDefValues", {{"01", 0x51}, {"02", 0xF0}, {"32H", 0x20}, {"33H", 0x01}});
    b.chip({{32, 1, 0x51},
            {32, 2, 0x30},
            {32, 4, 0x58},
            {32, 8, 0x80},
            {32, 9, 0x70},
            {32, 10, 0x61},
            {32, 11, 0x40},
            {32, 12, 0x50},
            {32, 13, 0x60},
            {96, 0x32, 0x30},
            {96, 0x33, 0xA5},
            {96, 0x34, 0x9A}});
    const char serial[] = "AB123";
    for (int i = 0; i < 5; ++i)
        b.chip({{88, i, serial[i]}});
}

} // namespace velmorak::test
