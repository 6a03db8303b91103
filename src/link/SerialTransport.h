#pragma once

#include "link/Transport.h"

#include <QSerialPort>

namespace velmorak {

class Settings;

// The card's USB serial port, 115200 8N1, through QSerialPort. Safe on pseudo-terminals: the
// modem lines are never touched, and a port whose other side vanished is closed on its first
// error report instead of spinning.
class SerialTransport : public QObject, public Transport {
    Q_OBJECT
  public:
    explicit SerialTransport(const Settings& settings, QObject* parent = nullptr);
    ~SerialTransport() override;

    void setCommPort(int number) override { number_ = number; }
    int commPort() const override { return number_; }
    void open() override;
    void close() override;
    bool isOpen() const override { return port_.isOpen(); }
    void write(const QByteArray& bytes) override;
    int bytesAvailable() override;
    QByteArray readAll() override;
    void clearInput() override;

    QString deviceName() const override;

  private:
    void onError(QSerialPort::SerialPortError e);
    void throwIfGone();

    const Settings& settings_;
    QSerialPort port_;
    int number_ = 0;
    bool gone_ = false;
    QString goneText_;
};

} // namespace velmorak
