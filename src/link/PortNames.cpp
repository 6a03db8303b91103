#include "link/PortNames.h"

#include "platform/Settings.h"

namespace velmorak {

QString portDeviceName(int number, const Settings& settings) {
    const QString com = QStringLiteral("COM%1").arg(number);
#if defined(Q_OS_WIN)
    Q_UNUSED(settings);
    return com;
#else
    const QString mapped = settings.get(QStringLiteral("Ports"), com).trimmed();
    if (!mapped.isEmpty()) return mapped;
#if defined(Q_OS_MACOS)
    return QStringLiteral("/dev/cu.usbserial-%1").arg(number);
#else
    return QStringLiteral("/dev/ttyUSB%1").arg(number - 1);
#endif
#endif
}

} // namespace velmorak
