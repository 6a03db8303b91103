// Commands typed at a running virtual card.
#include "sim/Console.h"
#include "support/SimProcess.h"

#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <functional>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

using namespace velmorak;
using namespace velmorak::sim;

TEST(SimConsole, CommandsChangeTheCard) {
    struct Row {
        const char* line;
        const char* answer; // how the answer starts
        std::function<bool(const VirtualCard&)> holds;
    };
    const Row rows[] = {
        {"silent on", "silent on,", [](auto& c) { return c.faults().silent; }},
        {"SILENT  off", "silent off,", [](auto& c) { return !c.faults().silent; }},
        {"short 3", "silent off, short 3,", [](auto& c) { return c.faults().shortReply == 3; }},
        {"short off", "silent off, short off", [](auto& c) { return c.faults().shortReply == -1; }},
        {"delay 40", "silent off, short off, delay 40 ms",
         [](auto& c) { return c.faults().delayMs == 40; }},
        {"source 800x600x60", "", [](auto& c) { return c.config().source->width == 800; }},
        {"source none", "", [](auto& c) { return !c.config().source; }},
        {"monitor off", "", [](auto& c) { return !c.config().monitorAttached; }},
        {"garble on", "", [](auto& c) { return c.faults().garble; }},
        {"garble off", "", [](auto& c) { return !c.faults().garble; }},
        {"reg 0x20 5 77", "reg 32 5 = 77", [](auto& c) { return c.registerValue(32, 5) == 77; }},
        {"reg 32 5", "reg 32 5 = 77", nullptr},
        {"short -2", "commands:", [](auto& c) { return c.faults().shortReply == -1; }},
        {"reg 32 5 256", "commands:", [](auto& c) { return c.registerValue(32, 5) == 77; }},
        {"source big", "commands:", nullptr},
        {"fly", "commands:", nullptr},
        {"", "", nullptr},
        {"unplug on WREE", "silent off, short off, delay 40 ms, unplug on WREE,",
         [](auto& c) { return c.faults().unplugOn == "WREE" && !c.unplugged(); }},
        {"unplug off", "", [](auto& c) { return c.faults().unplugOn.isEmpty(); }},
        {"unplug", "unplugged", [](auto& c) { return c.unplugged(); }},
    };
    VirtualCard card;
    for (const Row& r : rows) {
        SCOPED_TRACE(r.line);
        const QString answer = consoleCommand(card, r.line);
        EXPECT_TRUE(answer.startsWith(r.answer) || (!*r.answer && answer.isEmpty()));
        if (r.holds) {
            EXPECT_TRUE(r.holds(card));
        }
    }
}

// The real executable: a silenced card answers nothing until told otherwise, and "unplug"
// takes the line away.
TEST(SimConsole, TypedIntoTheRunningExecutable) {
    QTemporaryDir dir;
    const QString link = dir.filePath("card");
    QProcess proc;
    proc.start(velmorak::test::buildDir() + "/velmorak-cardsim", {"--link", link, "--console"});
    ASSERT_TRUE(proc.waitForReadyRead(5000));
    EXPECT_TRUE(proc.readLine().startsWith("/dev/"));
    const int fd = ::open(link.toLocal8Bit().constData(), O_RDWR | O_NOCTTY);
    ASSERT_GE(fd, 0);
    termios t{};
    tcgetattr(fd, &t);
    cfmakeraw(&t);
    tcsetattr(fd, TCSANOW, &t);
    auto probe = [fd] {
        EXPECT_EQ(::write(fd, "5USB", 4), 4);
        QByteArray out;
        char buf[64];
        pollfd p{fd, POLLIN, 0};
        while (::poll(&p, 1, 150) > 0 && (p.revents & POLLIN)) {
            const ssize_t n = ::read(fd, buf, sizeof buf);
            if (n <= 0) break;
            out.append(buf, n);
        }
        return out;
    };
    auto type = [&proc](const char* line) {
        proc.write(line);
        proc.write("\n");
        EXPECT_TRUE(proc.waitForReadyRead(3000));
        return QString::fromLocal8Bit(proc.readLine());
    };
    EXPECT_EQ(probe(), QByteArray("5DVI\x02\x03"));
    EXPECT_TRUE(type("silent on").startsWith("silent on"));
    EXPECT_TRUE(probe().isEmpty());
    EXPECT_TRUE(type("silent off").startsWith("silent off"));
    EXPECT_EQ(probe(), QByteArray("5DVI\x02\x03"));
    EXPECT_TRUE(type("unplug").startsWith("unplugged"));
    ASSERT_TRUE(proc.waitForFinished(3000));
    EXPECT_FALSE(QFileInfo::exists(link));
    ::close(fd);
}
