#pragma once

#include "forms/Form.h"
#include "registers/RegisterMap.h"
#include "registers/UcBitsField.h"

#include <QByteArray>
#include <QString>

#include <functional>

namespace velmorak {

using BitsFieldArray = ControlArray<UcBitsField>;
// Told of each member right after it took a value.
using MemberWritten = std::function<void(int member)>;

// Loads every row of the map into the form's array (creating missing members), sets each up
// (live, editable and chip-driven bits; sum labels on register rows only) and fills each grid:
// headers, address and name cells, and the texts that stand in the "Control" column.
void buildRows(Form& form, const RegisterMap& map);

struct ImageSpread {
    int taken = 0;         // bytes spread
    qint32 sum = 0;        // of the bytes taken, before any mask
    bool complete = false; // false: the image ended before the map did
};

// Spreads a chip image over the members, one byte after the other, each byte to its rows in
// member order, masked. Stops at the first byte missing; bytes beyond the map are ignored.
ImageSpread spreadImage(BitsFieldArray& rows, const RegisterMap& map, const QByteArray& image,
                        const MemberWritten& written = {});

// Spreads a comma list (each number ended by a comma, taken by its numeric value) over the
// members in the same way. Returns how many numbers were taken. Throws OverflowError for a
// number beyond 16 bits.
int spreadList(BitsFieldArray& rows, const RegisterMap& map, const QString& list,
               const MemberWritten& written = {});

// The bytes of the register members in load order: the block that loads the chip.
QByteArray collectBlock(BitsFieldArray& rows, const RegisterMap& map);

// The register row that holds the field of a member (the member itself for a register row);
// -1 when there is none.
int registerRowOf(const RegisterMap& map, int member);

} // namespace velmorak
