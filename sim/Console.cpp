#include "sim/Console.h"

#include <QStringList>

namespace velmorak::sim {

const char* const kConsoleHelp =
    "commands: silent on|off, garble on|off, short N|off, delay MS, unplug [on FRAME "
    "[N]|off], source WxHxR|none,\n"
    "          monitor on|off, reg CHIP REG [VALUE], status, help";

namespace {

bool toInt(const QString& s, int min, int max, int& out) {
    bool ok = false;
    // 0x20 and 32 alike.
    const int v = s.toInt(&ok, 0);
    if (!ok || v < min || v > max) return false;
    out = v;
    return true;
}

bool onOff(const QString& s, bool& out) {
    if (s != "on" && s != "off") return false;
    out = s == "on";
    return true;
}

QString status(const VirtualCard& card) {
    const Faults& f = card.faults();
    const CardConfig& c = card.config();
    return QStringLiteral("silent %1, short %2, delay %3 ms, unplug on %6, source %4, monitor %5, "
                          "garble %7")
        .arg(f.silent ? "on" : "off")
        .arg(f.shortReply < 0 ? QStringLiteral("off") : QString::number(f.shortReply))
        .arg(f.delayMs)
        .arg(c.source ? videoModeName(*c.source) : QStringLiteral("none"))
        .arg(c.monitorAttached ? "on" : "off")
        .arg(f.unplugOn.isEmpty() ? QStringLiteral("off") : QString::fromLatin1(f.unplugOn))
        .arg(f.garble ? "on" : "off");
}

} // namespace

QString consoleCommand(VirtualCard& card, const QString& line) {
    const QStringList raw = line.trimmed().split(u' ', Qt::SkipEmptyParts);
    const QStringList w = line.trimmed().toLower().split(u' ', Qt::SkipEmptyParts);
    if (w.isEmpty()) return {};
    const QString& verb = w[0];
    Faults f = card.faults();
    const QString usage = QString::fromLatin1(kConsoleHelp);
    if (verb == "help") return usage;
    if (verb == "status" && w.size() == 1) return status(card);
    if (verb == "unplug" && w.size() == 1) {
        card.unplug();
        return QStringLiteral("unplugged");
    }
    if (w.size() < 2) return usage;
    if (verb == "unplug" && (w.size() == 3 || w.size() == 4) && w[1] == "on") {
        f.unplugOn = raw[2].toLatin1(); // frames are upper case: "unplug on RDEE"
        f.unplugOnNth = 1;
        if (w.size() == 4 && !toInt(w[3], 1, 1 << 30, f.unplugOnNth)) return usage;
    } else if (verb == "unplug" && w.size() == 2 && w[1] == "off") {
        f.unplugOn.clear();
    } else if (verb == "silent" && w.size() == 2) {
        if (!onOff(w[1], f.silent)) return usage;
    } else if (verb == "garble" && w.size() == 2) {
        if (!onOff(w[1], f.garble)) return usage;
    } else if (verb == "short" && w.size() == 2) {
        if (w[1] == "off")
            f.shortReply = -1;
        else if (!toInt(w[1], 0, 1 << 20, f.shortReply))
            return usage;
    } else if (verb == "delay" && w.size() == 2) {
        if (!toInt(w[1], 0, 60000, f.delayMs)) return usage;
    } else if (verb == "source" && w.size() == 2) {
        if (w[1] == "none") {
            card.setSource(std::nullopt);
        } else {
            const auto mode = parseVideoMode(w[1]);
            if (!mode) return usage;
            card.setSource(mode);
        }
    } else if (verb == "monitor" && w.size() == 2) {
        bool on = false;
        if (!onOff(w[1], on)) return usage;
        card.setMonitorAttached(on);
    } else if (verb == "reg" && (w.size() == 3 || w.size() == 4)) {
        int chip = 0, reg = 0, value = 0;
        if (!toInt(w[1], 0, 255, chip) || !toInt(w[2], 0, 255, reg)) return usage;
        if (w.size() == 4) {
            if (!toInt(w[3], 0, 255, value)) return usage;
            card.setRegister(chip, reg, value);
        }
        return QStringLiteral("reg %1 %2 = %3")
            .arg(chip)
            .arg(reg)
            .arg(card.registerValue(chip, reg));
    } else {
        return usage;
    }
    card.setFaults(f);
    return status(card);
}

} // namespace velmorak::sim
