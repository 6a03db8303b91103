#include "link/SerialTransport.h"

#include "link/PortNames.h"

namespace velmorak {

SerialTransport::SerialTransport(const Settings& settings, QObject* parent)
    : QObject(parent), settings_(settings) {
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialTransport::onError);
}

SerialTransport::~SerialTransport() {
    if (port_.isOpen()) port_.close();
}

QString SerialTransport::deviceName() const {
    return portDeviceName(number_, settings_);
}

void SerialTransport::onError(QSerialPort::SerialPortError e) {
    switch (e) {
    case QSerialPort::ResourceError:
    case QSerialPort::ReadError:
    case QSerialPort::WriteError:
        // The other side went away: the port would report this in a tight loop until closed.
        if (port_.isOpen()) {
            gone_ = true;
            goneText_ = port_.errorString();
            port_.close();
        }
        break;
    default:
        // Modem-line requests fail harmlessly on pseudo-terminals; time-outs of the
        // zero-wait polls below are not errors either.
        break;
    }
}

void SerialTransport::throwIfGone() {
    if (gone_) throw PortError(PortFault::DeviceGone, goneText_);
}

void SerialTransport::open() {
    if (port_.isOpen() || gone_) {
        if (gone_) {
            // The earlier exchange lost its device; that port is closed now.
            gone_ = false;
        } else {
            throw PortError(PortFault::AlreadyOpen, QStringLiteral("Port already open"));
        }
    }
    port_.setPortName(deviceName());
    port_.setBaudRate(QSerialPort::Baud115200);
    port_.setDataBits(QSerialPort::Data8);
    port_.setParity(QSerialPort::NoParity);
    port_.setStopBits(QSerialPort::OneStop);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    if (!port_.open(QIODevice::ReadWrite)) {
        const auto err = port_.error();
        const QString text = port_.errorString();
        port_.clearError();
        // A second opener finds the lock of the first.
        if (err == QSerialPort::PermissionError && text.contains(QStringLiteral("locking")))
            throw PortError(PortFault::AlreadyOpen, text);
        throw PortError(PortFault::Other, text);
    }
    port_.clear(QSerialPort::Input);
}

void SerialTransport::close() {
    gone_ = false;
    if (port_.isOpen()) port_.close();
    port_.clearError();
}

void SerialTransport::write(const QByteArray& bytes) {
    throwIfGone();
    if (!port_.isOpen()) throw PortError(PortFault::Other, QStringLiteral("Port is closed"));
    if (port_.write(bytes) != bytes.size()) {
        throwIfGone();
        throw PortError(PortFault::Other, port_.errorString());
    }
    // The thread sleeps after a frame: hand it to the device now.
    port_.waitForBytesWritten(100);
    throwIfGone();
}

int SerialTransport::bytesAvailable() {
    throwIfGone();
    if (!port_.isOpen()) throw PortError(PortFault::Other, QStringLiteral("Port is closed"));
    port_.waitForReadyRead(0);
    throwIfGone();
    return static_cast<int>(port_.bytesAvailable());
}

QByteArray SerialTransport::readAll() {
    throwIfGone();
    if (!port_.isOpen()) throw PortError(PortFault::Other, QStringLiteral("Port is closed"));
    port_.waitForReadyRead(0);
    throwIfGone();
    return port_.readAll();
}

void SerialTransport::clearInput() {
    throwIfGone();
    if (!port_.isOpen()) return;
    port_.waitForReadyRead(0);
    port_.readAll();
    port_.clear(QSerialPort::Input);
}

} // namespace velmorak
