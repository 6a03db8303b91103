// A port that will not open is judged by the device itself first, its error second.
#include "link/LinkFailure.h"

#include <gtest/gtest.h>

using namespace velmorak;

TEST(LinkFailure, CauseAndWordsFromTheDeviceAndTheError) {
    const DeviceAccess missing{};
    const DeviceAccess foreignGroup{true, false, "dialout", false};
    const DeviceAccess ownGroup{true, false, "dialout", true};
    const DeviceAccess rootOnly{true, false, "root", false};
    const DeviceAccess usable{true, true, "dialout", true};
    struct Case {
        const char* name;
        DeviceAccess device;
        PortFault fault;
        const char* error;
        LinkCause cause;
        const char* words;
    };
    const Case cases[] = {
        {"missing path", missing, PortFault::Other, "No such file or directory",
         LinkCause::NoSuchDevice, "No device at /dev/ttyUSB4"},
        {"not in the group", foreignGroup, PortFault::Other, "Permission denied",
         LinkCause::PermissionDenied,
         "you are not in the dialout group. Run \"sudo usermod -aG dialout $USER\""},
        // In the group but still refused (e.g. not logged in again): no command to offer.
        {"in the group", ownGroup, PortFault::Other, "Permission denied",
         LinkCause::PermissionDenied, "Permission denied on /dev/ttyUSB4: this user may not"},
        {"root's device", rootOnly, PortFault::Other, "Permission denied",
         LinkCause::PermissionDenied, "this user may not open it"},
        {"lock of another program", usable, PortFault::Other, "Permission error while locking",
         LinkCause::HeldElsewhere, "/dev/ttyUSB4 is held by another program"},
        {"already open", usable, PortFault::AlreadyOpen, "Port already open",
         LinkCause::HeldElsewhere, "held by another program"},
        {"gone", usable, PortFault::DeviceGone, "Input/output error", LinkCause::DeviceGone,
         "went away"},
        {"anything else", usable, PortFault::Other, "Invalid argument", LinkCause::Other,
         "/dev/ttyUSB4 could not be used: Invalid argument"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const LinkCause cause = openFailureCause(c.device, c.fault, c.error);
        EXPECT_EQ(cause, c.cause);
        const QString words = describe({cause, "/dev/ttyUSB4", c.error}, c.device);
        EXPECT_TRUE(words.contains(c.words)) << words.toStdString();
    }
    EXPECT_EQ(describe({}, usable), "");
}
