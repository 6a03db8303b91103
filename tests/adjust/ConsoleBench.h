#pragma once

#include "SessionBench.h"

#include "adjust/FrmConsole.h"

#include <QByteArray>
#include <QStringList>

#include <utility>
#include <vector>

namespace velmorak::test {

// A session on the virtual card showing 1024x768x75, with the chips and the factory row of that
// resolution set by the test.
struct ConsoleBench : SessionBench {
    // One register of a chip.
    struct Reg {
        int chip, reg, value;
    };
    // A column of a resolution row.
    struct Col {
        const char* column;
        int value;
    };
    explicit ConsoleBench(const SimLink::Card& card = {}) : SessionBench(card) {}

    void chip(std::initializer_list<Reg> regs);
    void row(const char* table, std::initializer_list<Col> cols, const char* name = "1024x768x75");
    int column(const char* table, const char* column, const char* name = "1024x768x75");
    void sql(const QString& text);
    // Display Adjustment from the main window's menu.
    FrmConsole& open();
    // The frames sent since the last clear that write chip registers.
    QStringList writes() const;
};

// "WREE" to a chip register, as hex.
QString wree(int chip, int reg, int value);

// The chips and rows of the usual case: factory H 288, divider 1311; the card at divider 1299,
// phase 88, offsets 64/80/96, gains 128/112/97, H 304 (33H A5), V 0x9A, laser serial AB123.
void usualCard(ConsoleBench& b);

} // namespace velmorak::test
