#include "sim/PtyServer.h"

#ifndef _WIN32

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace velmorak::sim {

namespace {

using Clock = std::chrono::steady_clock;

qint64 microsSince(Clock::time_point t) {
    return std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - t).count();
}

} // namespace

PtyServer::PtyServer(VirtualCard& card, WireTrace* trace)
    : card_(card), trace_(trace), started_(Clock::now()) {}

PtyServer::~PtyServer() {
    shutdown();
}

bool PtyServer::start(QString* error) {
    auto fail = [&](const char* what) {
        if (error)
            *error = QStringLiteral("%1: %2").arg(what, QString::fromLocal8Bit(strerror(errno)));
        shutdown();
        return false;
    };
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0) return fail("posix_openpt");
    if (grantpt(master_) != 0) return fail("grantpt");
    if (unlockpt(master_) != 0) return fail("unlockpt");
    const char* name = ptsname(master_);
    if (!name) return fail("ptsname");
    slave_ = QString::fromLocal8Bit(name);
    keeper_ = ::open(name, O_RDWR | O_NOCTTY);
    if (keeper_ < 0) return fail("open slave");
    termios tio{};
    if (tcgetattr(keeper_, &tio) != 0) return fail("tcgetattr");
    cfmakeraw(&tio);
    cfsetispeed(&tio, B115200);
    cfsetospeed(&tio, B115200);
    if (tcsetattr(keeper_, TCSANOW, &tio) != 0) return fail("tcsetattr");
    fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
    started_ = Clock::now();
    return true;
}

void PtyServer::shutdown() {
    if (keeper_ >= 0) ::close(keeper_);
    if (master_ >= 0) ::close(master_);
    keeper_ = master_ = -1;
}

qint64 PtyServer::elapsedMs() const {
    return microsSince(started_) / 1000;
}

void PtyServer::serve(const std::atomic<bool>& stop, int controlFd,
                      const std::function<void(const QString&)>& onLine) {
    QByteArray pending, typed;
    Clock::time_point lastByte = Clock::now();
    char buf[512];
    while (!stop && master_ >= 0) {
        int timeout = 50;
        if (!pending.isEmpty()) {
            const qint64 left = kIdleMs * 1000 - microsSince(lastByte);
            if (left <= 0) {
                const QByteArray frame = pending;
                pending.clear();
                handle(frame);
                continue;
            }
            timeout = int((left + 999) / 1000);
        }
        pollfd p[2] = {{master_, POLLIN, 0}, {controlFd, POLLIN, 0}};
        const int n = ::poll(p, controlFd >= 0 ? 2 : 1, timeout);
        if (n < 0 && errno != EINTR) break;
        if (n <= 0) continue;
        if (controlFd >= 0 && p[1].revents) {
            const ssize_t got = ::read(controlFd, buf, sizeof buf);
            if (got <= 0) {
                controlFd = -1; // end of input: serve on without it
            } else {
                typed.append(buf, got);
                for (qsizetype nl; (nl = typed.indexOf('\n')) >= 0;) {
                    const QString line = QString::fromLocal8Bit(typed.left(nl));
                    typed.remove(0, nl + 1);
                    if (onLine) onLine(line);
                }
                if (card_.unplugged()) {
                    shutdown();
                    break;
                }
            }
        }
        if (p[0].revents & POLLIN) {
            const ssize_t got = ::read(master_, buf, sizeof buf);
            if (got > 0) {
                pending.append(buf, got);
                lastByte = Clock::now();
            }
        } else if (p[0].revents & (POLLHUP | POLLERR)) {
            // Only while nobody holds the slave; the keeper prevents it, but never spin.
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
}

void PtyServer::handle(const QByteArray& frame) {
    if (trace_) trace_->toCard(elapsedMs(), frame);
    const QByteArray reply = card_.receive(frame);
    if (card_.unplugged()) {
        shutdown();
        return;
    }
    if (reply.isEmpty()) return;
    if (card_.faults().delayMs > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(card_.faults().delayMs));
    if (trace_) trace_->fromCard(elapsedMs(), reply);
    send(reply);
}

// A reply nobody reads must not block the card: what the line can't take is dropped.
void PtyServer::send(const QByteArray& reply) {
    qsizetype done = 0;
    int stalls = 0;
    while (done < reply.size() && stalls < 10) {
        const ssize_t n = ::write(master_, reply.constData() + done, size_t(reply.size() - done));
        if (n > 0) {
            done += n;
            continue;
        }
        if (n < 0 && errno != EAGAIN && errno != EINTR) return;
        pollfd p{master_, POLLOUT, 0};
        ::poll(&p, 1, 10);
        ++stalls;
    }
}

} // namespace velmorak::sim

#endif
