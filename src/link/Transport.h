#pragma once

#include <QByteArray>
#include <QString>

#include <stdexcept>

namespace velmorak {

// The three kinds of port failure the link tells apart.
enum class PortFault {
    AlreadyOpen, // the port was found open (or locked by another program)
    DeviceGone,  // the USB device vanished during an exchange
    Other,       // anything else: no such port, refused, ...
};

class PortError : public std::runtime_error {
  public:
    PortError(PortFault f, const QString& what)
        : std::runtime_error(what.toStdString()), fault(f) {}
    PortFault fault;
};

// The serial port as the link functions use it: opened and closed around every exchange.
// Operations that fail throw PortError.
class Transport {
  public:
    virtual ~Transport() = default;
    // The port the next open() uses, by its COM number.
    virtual void setCommPort(int number) = 0;
    virtual int commPort() const = 0;
    virtual void open() = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual void write(const QByteArray& bytes) = 0;
    // Bytes received and not yet taken (InBufferCount).
    virtual int bytesAvailable() = 0;
    // Takes all received bytes (Input).
    virtual QByteArray readAll() = 0;
    // Drops received bytes (InBufferCount = 0).
    virtual void clearInput() = 0;
    // The device behind the COM number, for messages.
    virtual QString deviceName() const { return {}; }
};

} // namespace velmorak
