#include "link/LinkFailure.h"

#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>
#endif

namespace velmorak {

DeviceAccess probeDevice(const QString& path) {
    DeviceAccess a;
    // A port without a path (the in-process card) is judged by its error alone.
    if (path.isEmpty()) return {true, true, {}, true};
    const QFileInfo info(path);
    a.exists = info.exists();
    if (!a.exists) return a;
#ifdef Q_OS_UNIX
    const QByteArray native = QFile::encodeName(path);
    a.readWrite = ::access(native.constData(), R_OK | W_OK) == 0;
    struct stat st {};
    if (::stat(native.constData(), &st) == 0) {
        if (const group* g = ::getgrgid(st.st_gid)) a.group = QString::fromLocal8Bit(g->gr_name);
        a.inGroup = ::getegid() == st.st_gid;
        const int n = ::getgroups(0, nullptr);
        std::vector<gid_t> groups(n > 0 ? n : 0);
        if (n > 0 && ::getgroups(n, groups.data()) == n)
            for (gid_t g : groups)
                a.inGroup = a.inGroup || g == st.st_gid;
    }
#else
    a.readWrite = info.isReadable() && info.isWritable();
#endif
    return a;
}

LinkCause openFailureCause(const DeviceAccess& device, PortFault fault, const QString& text) {
    if (fault == PortFault::DeviceGone) return LinkCause::DeviceGone;
    if (!device.exists) return LinkCause::NoSuchDevice;
    if (!device.readWrite) return LinkCause::PermissionDenied;
    if (fault == PortFault::AlreadyOpen ||
        text.contains(QStringLiteral("lock"), Qt::CaseInsensitive) ||
        text.contains(QStringLiteral("busy"), Qt::CaseInsensitive))
        return LinkCause::HeldElsewhere;
    return LinkCause::Other;
}

namespace {
QString sentence(const LinkFailure& f, const DeviceAccess& device) {
    const QString at = f.device.isEmpty() ? QStringLiteral("the port") : f.device;
    switch (f.cause) {
    case LinkCause::None:
        return {};
    case LinkCause::NoSuchDevice:
        return QStringLiteral("No device at %1: is the card plugged in, and is this the right COM "
                              "number?")
            .arg(at);
    case LinkCause::PermissionDenied:
        if (!device.group.isEmpty() && !device.inGroup && device.group != QLatin1String("root"))
            return QStringLiteral("Permission denied on %1: you are not in the %2 group. Run "
                                  "\"sudo usermod -aG %2 $USER\", then log out and in again.")
                .arg(at, device.group);
        return QStringLiteral("Permission denied on %1: this user may not open it.").arg(at);
    case LinkCause::HeldElsewhere:
        return QStringLiteral("%1 is held by another program; close it and connect again.").arg(at);
    case LinkCause::DeviceGone:
        return QStringLiteral("The device at %1 went away (the card was unplugged).").arg(at);
    case LinkCause::CardSilent:
        return QStringLiteral("%1 opened, but no card answered: is the card powered and its cable "
                              "in?")
            .arg(at);
    case LinkCause::UnexpectedAnswer:
        return QStringLiteral("Something on %1 answered, but not as the card does (\"%2\").")
            .arg(at, f.detail);
    case LinkCause::Other:
        break;
    }
    return QStringLiteral("%1 could not be used: %2").arg(at, f.detail);
}
} // namespace

QString describe(const LinkFailure& f, const DeviceAccess& device) {
    QString text = sentence(f, device);
    if (!text.isEmpty()) text[0] = text[0].toUpper();
    return text;
}

} // namespace velmorak
