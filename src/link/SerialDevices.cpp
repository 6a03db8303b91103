#include "link/SerialDevices.h"

#include "link/PortNames.h"
#include "platform/Settings.h"

#include <QFileInfo>
#include <QSerialPortInfo>

namespace velmorak {

namespace {
constexpr int kFirstCom = 1;
constexpr int kLastCom = 16;

QString hex4(quint16 v) {
    return QStringLiteral("%1").arg(v, 4, 16, QLatin1Char('0'));
}
} // namespace

QList<SerialDevice> systemSerialDevices() {
    QList<SerialDevice> out;
    for (const QSerialPortInfo& p : QSerialPortInfo::availablePorts()) {
        SerialDevice d;
        d.path = p.systemLocation();
        d.description = p.description();
        if (!p.manufacturer().isEmpty() && !d.description.contains(p.manufacturer()))
            d.description = (p.manufacturer() + u' ' + d.description).trimmed();
        if (p.hasVendorIdentifier()) d.vendorId = hex4(p.vendorIdentifier());
        if (p.hasProductIdentifier()) d.productId = hex4(p.productIdentifier());
        d.serial = p.serialNumber();
        out << d;
    }
    return out;
}

QList<PortRow> portRows(const QList<SerialDevice>& devices, const Settings& settings) {
    QList<PortRow> rows;
    for (const SerialDevice& d : devices)
        rows << PortRow{0, d, false, true};
    for (int n = kFirstCom; n <= kLastCom; ++n) {
        const QString named =
            settings.get(QStringLiteral("Ports"), QStringLiteral("COM%1").arg(n)).trimmed();
        const QString path = named.isEmpty() ? portDeviceName(n, settings) : named;
        auto it = std::find_if(rows.begin(), rows.end(),
                               [&](const PortRow& r) { return r.device.path == path; });
        if (it == rows.end()) {
            if (named.isEmpty()) continue; // a default name with nothing behind it
            SerialDevice d;
            d.path = path;
            d.description = QStringLiteral("named in the settings");
            rows << PortRow{n, d, true, QFileInfo::exists(path)};
            continue;
        }
        if (it->com == 0) it->com = n; // the first number that reaches it
        it->named = it->named || !named.isEmpty();
    }
    return rows;
}

} // namespace velmorak
