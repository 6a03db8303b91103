#pragma once

#include "registers/Ad9888Map.h"
#include "registers/RegisterMap.h"

#include <span>

namespace velmorak {

// The PanelLink transmitter behind frmTransmitter: 43 rows over three grids, device 96.
extern const RegisterMap kTransmitterMap;
// The comma list of cmdDefault, by register order as in the chip image.
extern const RegisterList kTransmitterDefault;

// The columns of a save; "35H", of the read-only register, is left alone.
extern const std::span<const SaveColumn> kTransmitterColumns;

} // namespace velmorak
