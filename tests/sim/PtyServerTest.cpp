// The card behind a real pseudo-terminal, in real time.
#include "sim/PtyServer.h"
#include "support/SimProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

using namespace velmorak::sim;

namespace {

// One side of the line as a program opens it.
struct Port {
    explicit Port(const QString& path) {
        fd = ::open(path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
        if (fd < 0) return;
        termios t{};
        tcgetattr(fd, &t);
        cfmakeraw(&t);
        tcsetattr(fd, TCSANOW, &t);
        tcflush(fd, TCIFLUSH);
    }
    ~Port() {
        if (fd >= 0) ::close(fd);
    }
    void send(const QByteArray& b) const {
        ASSERT_EQ(::write(fd, b.constData(), b.size()), b.size());
    }
    // Everything that arrives until the line has been quiet for quietMs.
    QByteArray receive(int quietMs = 150) const {
        QByteArray out;
        char buf[256];
        for (;;) {
            pollfd p{fd, POLLIN, 0};
            if (::poll(&p, 1, quietMs) <= 0 || !(p.revents & POLLIN)) return out;
            const ssize_t n = ::read(fd, buf, sizeof buf);
            if (n <= 0) return out;
            out.append(buf, n);
        }
    }
    int fd = -1;
};

struct ServerThread {
    explicit ServerThread(const CardConfig& cfg = {}) : card(cfg), server(card, &trace) {}
    bool start() {
        if (!server.start()) return false;
        thread = std::thread([this] { server.serve(stop); });
        return true;
    }
    ~ServerThread() {
        stop = true;
        if (thread.joinable()) thread.join();
    }
    VirtualCard card;
    WireTrace trace;
    PtyServer server;
    std::atomic<bool> stop{false};
    std::thread thread;
};

bool wellFormed(const QStringList& lines) {
    static const QRegularExpression re("^\\d+ [<>]( [0-9A-F]{2})+$");
    for (const QString& l : lines)
        if (!re.match(l).hasMatch()) return false;
    return !lines.isEmpty();
}

const QByteArray kParr("PARR\0\0", 6);

} // namespace

TEST(PtyServer, SurvivesThePortClosingBetweenExchanges) {
    QTemporaryDir dir;
    ServerThread s;
    ASSERT_TRUE(s.trace.writeTo(dir.filePath("trace.txt")));
    ASSERT_TRUE(s.start());
    for (int round = 0; round < 3; ++round) {
        Port p(s.server.slavePath());
        ASSERT_GE(p.fd, 0);
        p.send("5USB");
        EXPECT_EQ(p.receive(), QByteArray("5DVI\x02\x03")) << round;
    }
    {
        Port p(s.server.slavePath());
        p.send(kParr);
        EXPECT_EQ(p.receive().size(), 32);
    }
    QFile f(dir.filePath("trace.txt"));
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromLatin1(f.readAll()).split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines, s.trace.lines());
    EXPECT_EQ(lines.size(), 8);
    EXPECT_TRUE(wellFormed(lines));
    EXPECT_TRUE(lines[0].endsWith(" > 35 55 53 42"));
}

TEST(PtyServer, IdleLineDelimitsFrames) {
    ServerThread s;
    ASSERT_TRUE(s.start());
    Port p(s.server.slavePath());
    // Two pieces 1 ms apart are one frame.
    p.send("RDEE");
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    p.send(QByteArray("\x20\xFF", 2));
    EXPECT_EQ(p.receive().size(), 32);
    // Two frames 30 ms apart get two replies.
    p.send("5USB");
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    p.send(kParr);
    EXPECT_EQ(p.receive().size(), 6 + 32);
    EXPECT_EQ(s.trace.lines().filter(" > ").size(), 3);
}

TEST(CardSimExecutable, ServesOnItsLinkAndCleansUp) {
    QString link;
    {
        velmorak::test::SimProcess sim({"--receiver", "--firmware", "1.7"});
        ASSERT_TRUE(sim.started()) << "velmorak-cardsim must be built beside the tests";
        link = sim.link();
        EXPECT_TRUE(QFileInfo(link).isSymLink());
        for (int round = 0; round < 2; ++round) {
            Port p(link);
            ASSERT_GE(p.fd, 0);
            p.send("5USB");
            EXPECT_EQ(p.receive(), QByteArray("5DVI\x01\x07"));
        }
        Port p(link);
        p.send(kParr);
        const QByteArray r = p.receive();
        ASSERT_EQ(r.size(), 32);
        EXPECT_EQ(r.at(6 + 21), 1) << "receiver";
        EXPECT_TRUE(wellFormed(sim.trace()));
        EXPECT_EQ(sim.trace().size(), 6);
        sim.stop();
        EXPECT_FALSE(QFileInfo::exists(link));
    }
}

TEST(CardSimExecutable, UnplugsAfterNFrames) {
    QTemporaryDir dir;
    const QString link = dir.filePath("card");
    QProcess proc;
    proc.start(velmorak::test::buildDir() + "/velmorak-cardsim",
               {"--link", link, "--unplug-after", "2", "--short", "5"});
    ASSERT_TRUE(proc.waitForReadyRead(5000));
    EXPECT_TRUE(proc.readLine().startsWith("/dev/"));
    Port p(link);
    ASSERT_GE(p.fd, 0);
    p.send("5USB");
    EXPECT_EQ(p.receive(), QByteArray("5DVI\x02"));
    p.send(kParr);
    EXPECT_TRUE(p.receive().isEmpty());
    ASSERT_TRUE(proc.waitForFinished(3000));
    EXPECT_EQ(proc.exitCode(), 0);
    EXPECT_TRUE(proc.readAllStandardError().contains("unplugged"));
    EXPECT_FALSE(QFileInfo::exists(link));
    char c;
    EXPECT_LE(::read(p.fd, &c, 1), 0) << "the line is gone";
}

TEST(CardSimExecutable, RejectsBadOptions) {
    const QStringList bad[] = {
        {"--fibres", "3"}, {"--source", "big"}, {"--firmware", "2"}, {"--bogus"}, {"--short"}};
    for (const QStringList& args : bad) {
        QProcess proc;
        proc.start(velmorak::test::buildDir() + "/velmorak-cardsim", args);
        ASSERT_TRUE(proc.waitForFinished(3000));
        EXPECT_EQ(proc.exitCode(), 2) << args.join(' ').toStdString();
        EXPECT_TRUE(proc.readAllStandardOutput().isEmpty());
    }
}
