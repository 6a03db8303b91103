#pragma once

#include <QString>

namespace velmorak {

class Settings;

// The device behind COM port number n. On Windows it is "COMn". Elsewhere the settings section
// "Ports", key "COMn", may name any device path (the virtual card's pseudo-terminal,
// /dev/ttyUSB0, ...); without it, COMn is the n-th USB serial adapter, /dev/ttyUSB<n-1>
// (on macOS /dev/cu.usbserial-<n>).
QString portDeviceName(int number, const Settings& settings);

} // namespace velmorak
