#pragma once

#include <QList>
#include <QString>

#include <functional>

namespace velmorak {

class Settings;

// A serial device as the system lists it.
struct SerialDevice {
    QString path;
    QString description;
    QString vendorId; // USB ids in hexadecimal, empty when not a USB device
    QString productId;
    QString serial;
    bool operator==(const SerialDevice&) const = default;
};
using SerialDeviceLister = std::function<QList<SerialDevice>()>;

// The serial ports the system sees now.
QList<SerialDevice> systemSerialDevices();

// One row of the port picker: a device and the COM number that reaches it (0: none).
struct PortRow {
    int com = 0;
    SerialDevice device;
    bool named = false;  // named in the settings ("Ports"/"COMn")
    bool present = true; // the system lists it, or the path exists
};

// The devices the system lists and the paths the settings name (pseudo-terminals included),
// each once, with the COM number in 1..16 that reaches it.
QList<PortRow> portRows(const QList<SerialDevice>& devices, const Settings& settings);

} // namespace velmorak
