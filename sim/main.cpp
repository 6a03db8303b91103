// velmorak-cardsim: the virtual card on a pseudo-terminal.
#include "sim/Console.h"
#include "sim/PtyServer.h"
#include "sim/VirtualCard.h"
#include "sim/WireTrace.h"

#include <QString>
#include <QStringList>

#include <atomic>
#include <cstdio>

#ifndef _WIN32
#include <csignal>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace velmorak;
using namespace velmorak::sim;

namespace {

const char* const kUsage =
    "usage: velmorak-cardsim [--receiver|--transmitter] [--rgb|--dvi] [--fibres 1|2]\n"
    "                        [--firmware M.m] [--source WxHxR|none] [--no-monitor]\n"
    "                        [--link PATH] [--trace FILE] [--silent] [--garble] [--short N]\n"
    "                        [--unplug-after N] [--unplug-on FRAME[:N]] [--delay MS] [--console] "
    "[--help]\n"
    "                        [--version]\n"
    "A virtual card on a pseudo-terminal. Prints the device path, then serves until\n"
    "interrupted. Defaults: --transmitter --rgb --fibres 2 --firmware 2.3\n"
    "--source 1024x768x75. With --console, commands typed on standard input change\n"
    "the card while it runs (type help).\n"
    "  --receiver, --transmitter  which card to be\n"
    "  --rgb, --dvi               the card's video interface\n"
    "  --fibres 1|2               fibres fitted\n"
    "  --firmware M.m             firmware version reported\n"
    "  --source WxHxR|none        the input video mode, or no source\n"
    "  --no-monitor               no monitor on the output\n"
    "  --link PATH                a symbolic link at PATH to the pseudo-terminal\n"
    "  --trace FILE               write every frame in and out to FILE\n"
    "  --silent                   never answer\n"
    "  --garble                   answer with every bit inverted (a device that is not the card)\n"
    "  --short N                  cut every reply to N bytes\n"
    "  --unplug-after N           vanish after N frames\n"
    "  --unplug-on FRAME[:N]      vanish on the N-th (default first) frame starting with FRAME\n"
    "  --delay MS                 wait MS milliseconds before each reply\n"
    "  --console                  read console commands from standard input\n";

struct Options {
    CardConfig card;
    Faults faults;
    QString link;
    QString trace;
    bool console = false;
};

int usageError(const QString& what) {
    std::fprintf(stderr, "velmorak-cardsim: %s\n%s", qPrintable(what), kUsage);
    return 2;
}

bool toInt(const QString& s, int min, int max, int& out) {
    bool ok = false;
    const int v = s.toInt(&ok);
    if (!ok || v < min || v > max) return false;
    out = v;
    return true;
}

// 0 on success, else the exit code; -1 for --help, -2 for --version.
int parse(const QStringList& args, Options& o) {
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        auto value = [&](QString& v) {
            if (i + 1 >= args.size()) return false;
            v = args[++i];
            return true;
        };
        QString v;
        if (a == "--help" || a == "-h") return -1;
        if (a == "--version") return -2;
        if (a == "--receiver")
            o.card.receiver = true;
        else if (a == "--transmitter")
            o.card.receiver = false;
        else if (a == "--rgb")
            o.card.rgb = true;
        else if (a == "--dvi")
            o.card.rgb = false;
        else if (a == "--no-monitor")
            o.card.monitorAttached = false;
        else if (a == "--console")
            o.console = true;
        else if (a == "--silent")
            o.faults.silent = true;
        else if (a == "--garble")
            o.faults.garble = true;
        else if (a == "--fibres") {
            if (!value(v) || !toInt(v, 1, 2, o.card.fibres)) return usageError("--fibres 1|2");
        } else if (a == "--firmware") {
            const QStringList p = value(v) ? v.split('.') : QStringList();
            if (p.size() != 2 || !toInt(p[0], 0, 255, o.card.firmwareMajor) ||
                !toInt(p[1], 0, 255, o.card.firmwareMinor))
                return usageError("--firmware M.m");
        } else if (a == "--source") {
            if (!value(v)) return usageError("--source WxHxR|none");
            if (v == "none") {
                o.card.source.reset();
            } else {
                o.card.source = parseVideoMode(v);
                if (!o.card.source) return usageError("--source WxHxR|none");
            }
        } else if (a == "--link") {
            if (!value(o.link)) return usageError("--link PATH");
        } else if (a == "--trace") {
            if (!value(o.trace)) return usageError("--trace FILE");
        } else if (a == "--short") {
            if (!value(v) || !toInt(v, 0, 1 << 20, o.faults.shortReply))
                return usageError("--short N");
        } else if (a == "--unplug-after") {
            if (!value(v) || !toInt(v, 1, 1 << 30, o.faults.unplugAfter))
                return usageError("--unplug-after N");
        } else if (a == "--unplug-on") {
            const QStringList p = value(v) ? v.split(':') : QStringList();
            if (p.isEmpty() || p.size() > 2 || p[0].isEmpty() ||
                (p.size() == 2 && !toInt(p[1], 1, 1 << 30, o.faults.unplugOnNth)))
                return usageError("--unplug-on FRAME[:N]");
            o.faults.unplugOn = p[0].toLatin1();
        } else if (a == "--delay") {
            if (!value(v) || !toInt(v, 0, 60000, o.faults.delayMs)) return usageError("--delay MS");
        } else {
            return usageError("unknown option " + a);
        }
    }
    return 0;
}

#ifndef _WIN32
std::atomic<bool> stopRequested{false};

void onSignal(int) {
    stopRequested = true;
}

// Points path at the device; a link left by an earlier run is replaced, a real file is not.
bool makeLink(const QString& path, const QString& target) {
    const QByteArray p = path.toLocal8Bit();
    struct stat st {};
    if (lstat(p.constData(), &st) == 0) {
        if (!S_ISLNK(st.st_mode)) return false;
        unlink(p.constData());
    }
    return symlink(target.toLocal8Bit().constData(), p.constData()) == 0;
}
#endif

} // namespace

int main(int argc, char** argv) {
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    Options o;
    if (const int rc = parse(args, o); rc != 0) {
        if (rc == -1) {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (rc == -2) {
            std::puts("velmorak-cardsim " VELMORAK_VERSION);
            return 0;
        }
        return rc;
    }
#ifdef _WIN32
    std::fputs("velmorak-cardsim: pseudo-terminals are not available on this system\n", stderr);
    return 1;
#else
    VirtualCard card(o.card);
    card.setFaults(o.faults);
    WireTrace trace;
    if (!o.trace.isEmpty() && !trace.writeTo(o.trace)) {
        std::fprintf(stderr, "velmorak-cardsim: cannot write %s\n", qPrintable(o.trace));
        return 1;
    }
    PtyServer server(card, &trace);
    QString error;
    if (!server.start(&error)) {
        std::fprintf(stderr, "velmorak-cardsim: %s\n", qPrintable(error));
        return 1;
    }
    if (!o.link.isEmpty() && !makeLink(o.link, server.slavePath())) {
        std::fprintf(stderr, "velmorak-cardsim: cannot make the link %s\n", qPrintable(o.link));
        return 1;
    }
    struct sigaction sa {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    sigaction(SIGINT, &sa, nullptr);
    sigaction(SIGTERM, &sa, nullptr);
    std::signal(SIGPIPE, SIG_IGN);

    std::printf("%s\n", qPrintable(server.slavePath()));
    std::fflush(stdout);

    if (o.console) {
        server.serve(stopRequested, STDIN_FILENO, [&card](const QString& line) {
            const QString answer = consoleCommand(card, line);
            if (!answer.isEmpty()) std::printf("%s\n", qPrintable(answer));
            std::fflush(stdout);
        });
    } else {
        server.serve(stopRequested);
    }
    server.shutdown();
    if (!o.link.isEmpty()) unlink(o.link.toLocal8Bit().constData());
    if (card.unplugged()) std::fputs("unplugged\n", stderr);
    return 0;
#endif
}
