#pragma once

#include "sim/VirtualCard.h"
#include "sim/WireTrace.h"

#include <QString>

#include <atomic>
#include <chrono>
#include <functional>

namespace velmorak::sim {

#ifndef _WIN32

// The card behind a pseudo-terminal. A frame ends when the line has been idle for kIdleMs.
// The server keeps the slave side open itself, so a program that opens and closes the port
// around every exchange never hangs the line up.
class PtyServer {
  public:
    static constexpr int kIdleMs = 5;

    explicit PtyServer(VirtualCard& card, WireTrace* trace = nullptr);
    ~PtyServer();
    PtyServer(const PtyServer&) = delete;
    PtyServer& operator=(const PtyServer&) = delete;

    // Creates the pseudo-terminal; false with a reason on failure.
    bool start(QString* error = nullptr);
    // The device a program opens, e.g. /dev/pts/7.
    QString slavePath() const { return slave_; }
    // Answers frames until stop is set or the card vanishes (then the line is closed). Lines
    // read from controlFd (when given) go to onLine between frames; its end stops the reading.
    void serve(const std::atomic<bool>& stop, int controlFd = -1,
               const std::function<void(const QString&)>& onLine = {});
    bool unplugged() const { return card_.unplugged(); }
    // Closes both sides: whoever has the slave open sees the device go.
    void shutdown();

  private:
    void handle(const QByteArray& frame);
    void send(const QByteArray& reply);
    qint64 elapsedMs() const;

    VirtualCard& card_;
    WireTrace* trace_;
    int master_ = -1;
    int keeper_ = -1;
    QString slave_;
    std::chrono::steady_clock::time_point started_;
};

#endif

} // namespace velmorak::sim
