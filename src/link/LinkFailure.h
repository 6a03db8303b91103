#pragma once

#include "link/Transport.h"

#include <QString>

namespace velmorak {

// Why the last exchange with the card failed, in terms a user can act on.
enum class LinkCause {
    None,
    NoSuchDevice,     // nothing at the port's path
    PermissionDenied, // the device is there but this user may not open it
    HeldElsewhere,    // another program has the port open
    DeviceGone,       // the device vanished during an exchange
    CardSilent,       // the port opened but nothing answered
    UnexpectedAnswer, // something answered, not as the card does
    Other,
};

struct LinkFailure {
    LinkCause cause = LinkCause::None;
    QString device;
    QString detail; // the system's own words, or the answer received
};

// What the system knows of a device path, for the classification below.
struct DeviceAccess {
    bool exists = false;
    bool readWrite = false;
    QString group;        // the device file's group
    bool inGroup = false; // this process is a member of it
};
// An empty path (a port that is not a device file) counts as present and usable.
DeviceAccess probeDevice(const QString& path);

// The cause of a port that would not open, from the device itself and the port's own error.
LinkCause openFailureCause(const DeviceAccess& device, PortFault fault, const QString& text);
// The words for the status bar; empty when nothing failed.
QString describe(const LinkFailure& failure, const DeviceAccess& device);

} // namespace velmorak
