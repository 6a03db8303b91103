#pragma once

#include "registers/RegisterMap.h"

#include <array>

namespace velmorak {

// The video converter behind frmAD9888: 56 rows over four grids, device 32.
extern const RegisterMap kAd9888Map;

// A comma list of register values 01H to 15H, and where it is offered.
struct RegisterList {
    const char* control; // the button or menu entry that loads it
    const char* caption;
    const char* list;
};

extern const RegisterList kAd9888Default;
// The columns of a save: 01H to 17H but the status register 14H.
extern const std::span<const SaveColumn> kAd9888Columns;
extern const std::array<RegisterList, 6> kAd9888Presets;

} // namespace velmorak
