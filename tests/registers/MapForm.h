#pragma once

#include "forms/Form.h"
#include "registers/RegisterMap.h"
#include "registers/RegisterWalker.h"

#include <string>

// A window holding what a register map needs: its grids and its array of rows, built.
class MapForm : public velmorak::Form {
  public:
    explicit MapForm(const velmorak::RegisterMap& map) : Form("frmMap"), map(map) {
        for (const auto& g : map.grids)
            add<velmorak::Grid>(QString::fromLatin1(g.grid));
        addArray<velmorak::UcBitsField>(QString::fromLatin1(map.array), {0});
        velmorak::buildRows(*this, map);
    }
    velmorak::BitsFieldArray& rows() const {
        return array<velmorak::UcBitsField>(QString::fromLatin1(map.array));
    }
    velmorak::Grid& grid(int i) const {
        return control<velmorak::Grid>(QString::fromLatin1(map.grids[size_t(i)].grid));
    }
    const velmorak::RegisterMap& map;
};

// Cell backgrounds of a row, bit 7 first: H hidden, F button face, W editable, Y read back.
inline std::string backs(const velmorak::UcBitsField& f) {
    std::string s;
    for (int i = 7; i >= 0; --i)
        s += "HFWY"[int(f.txtBitBack(i))];
    return s;
}
