#pragma once

#include <QtGlobal>

#include <span>

namespace velmorak {

// A register map as data: one record a grid row, one member of the window's ucBitsField array.
// Set-up, spreading of images and lists, and the load block all walk these records.
struct RegisterRow {
    enum Kind : quint8 {
        Register, // the whole byte; shows the sums; what is read, loaded and saved
        Field,    // one field of a register, in place, other bits hidden, no sums
    };
    // Value masks: whole takes the number as it is.
    static constexpr quint16 kWhole = 0xFFFF;

    const char* address; // "Address" cell
    const char* name;    // "Name" cell
    quint8 reg;          // register address
    Kind kind;
    quint8 shown;         // bits with a live cell
    quint8 edit;          // bits the user toggles
    quint8 status;        // bits driven by the chip, shown pale yellow
    qint16 defaultValue;  // -1: none
    const char* control;  // controls lying over the "Control" cell, comma separated
    const char* cellText; // text written into the "Control" cell itself
    const char* word1;    // value word of a single-bit field when the bit is 1
    const char* word0;    // ... and when it is 0
    quint8 imageByte;     // position in the chip's byte image, from 1; 0: none
    quint16 imageMask;    // mask on that byte
    bool keepOnZero;      // a 0 byte leaves the row as it is
    quint8 listNumber;    // position in a comma list, from 1; 0: none
    quint16 listMask;     // mask on that number
    quint32 nameColor;    // 0xRRGGBB of the "Name" text; 0: the grid's own
};

// One grid of the window, on one tab, over the members first to last.
struct RegisterGrid {
    const char* caption; // tab caption
    const char* frame;
    const char* grid;
    int first;
    int last;
};

struct RegisterMap {
    int device;                        // chip address on the card
    const char* array;                 // the window's control array of rows
    std::span<const RegisterRow> rows; // member i is rows[i]
    std::span<const RegisterGrid> grids;
    const char* tabText;            // text every tab carries besides its caption
    std::span<const int> loadOrder; // register members of the load block and of a save
    int imageLength;                // bytes of a full chip image
    int listLength;                 // numbers of a comma list
};

// A resolution table column and the register member whose byte it stores.
struct SaveColumn {
    const char* column;
    int member;
};

// The four column headers of every register grid.
inline constexpr const char* kGridHeaders[4] = {"Address", "Name", "Value", "Control"};

} // namespace velmorak
