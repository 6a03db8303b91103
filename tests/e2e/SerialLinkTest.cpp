// The real serial stack against the virtual card on a pseudo-terminal, in real time.
#include "forms/Dialogs.h"
#include "link/CardState.h"
#include "link/ModFunctions.h"
#include "link/ParamBlock.h"
#include "link/SerialTransport.h"
#include "platform/Host.h"
#include "platform/Settings.h"
#include "support/RecordingReactions.h"
#include "support/SimProcess.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace velmorak;

namespace {

struct RealLink {
    explicit RealLink(const QString& device)
        : settings(dir.filePath("Velmorak.conf")), port(settings),
          fn(state, host, port, dialogs, reactions) {
        settings.save("Ports", "COM7", device);
        port.setCommPort(7);
    }
    QTemporaryDir dir;
    QtSettingsStore settings;
    SerialTransport port;
    RealHost host;
    CardState state;
    ScriptedDialogs dialogs;
    test::RecordingReactions reactions;
    ModFunctions fn;
};

// Lines of the trace that carry a frame in the given direction.
QStringList frames(const QStringList& trace, const QString& dir) {
    QStringList out;
    for (const QString& l : trace) {
        const QStringList parts = l.split(' ');
        if (parts.size() > 2 && parts[1] == dir) out << parts.mid(2).join(' ');
    }
    return out;
}

} // namespace

TEST(SerialLink, ProbeAndParameterBlockOverPty) {
    test::SimProcess sim({"--receiver", "--dvi", "--fibres", "1", "--firmware", "2.7"});
    ASSERT_TRUE(sim.started());
    RealLink link(sim.link());

    ASSERT_TRUE(link.fn.CardPresent());
    const QByteArray block = link.fn.ReadParams(24);
    ASSERT_GE(block.size(), 26);
    EXPECT_TRUE(ParamBlock::isReceiver(ParamBlock::cardWord(block)));
    EXPECT_FALSE(ParamBlock::isRgb(block));
    EXPECT_EQ(ParamBlock::fibres(block), 1);
    EXPECT_EQ(ParamBlock::firmwareText(block), " 2.7");
    EXPECT_FALSE(link.port.isOpen());
    EXPECT_TRUE(link.reactions.calls.isEmpty());
    EXPECT_TRUE(link.dialogs.asked().empty());

    const QStringList sent = frames(sim.trace(), ">");
    ASSERT_GE(sent.size(), 2);
    EXPECT_EQ(sent[0], "35 55 53 42");       // "5USB"
    EXPECT_EQ(sent[1], "50 41 52 52 00 00"); // "PARR", 0, 0
    const QStringList got = frames(sim.trace(), "<");
    ASSERT_GE(got.size(), 2);
    EXPECT_TRUE(got[0].startsWith("35 44 56 49")); // "5DVI"
}

TEST(SerialLink, RegisterWriteReadsBackThroughPty) {
    test::SimProcess sim;
    ASSERT_TRUE(sim.started());
    RealLink link(sim.link());
    link.fn.WriteEE(32, 5, QByteArray(1, char(0xA5)));
    const QByteArray image = link.fn.ReadEE(32, 62);
    ASSERT_GE(image.size(), 26);
    EXPECT_EQ(static_cast<unsigned char>(image.at(5)), 0xA5);
}

TEST(SerialLink, SecondOpenerFindsThePortLocked) {
    test::SimProcess sim;
    ASSERT_TRUE(sim.started());
    RealLink first(sim.link());
    RealLink second(sim.link());
    first.port.open();
    try {
        second.port.open();
        FAIL() << "second open succeeded";
    } catch (const PortError& e) {
        EXPECT_EQ(e.fault, PortFault::AlreadyOpen);
    }
    first.port.close();
    EXPECT_NO_THROW(second.port.open());
    second.port.close();
}

TEST(SerialLink, CardUnpluggedDuringReadParamsLeavesTheToolUp) {
    // The probe is frame 1; the card vanishes while answering frame 2.
    test::SimProcess sim({"--unplug-after", "2"});
    ASSERT_TRUE(sim.started());
    RealLink link(sim.link());
    ASSERT_TRUE(link.fn.CardPresent());
    link.state.Connected = -1;
    const QByteArray block = link.fn.ReadParams(24);
    EXPECT_EQ(block, QByteArray(1, '\0'));
    EXPECT_EQ(link.dialogs.messages(), QStringList{"No USB connection. "});
    EXPECT_EQ(link.reactions.calls,
              (QStringList{"unloadOthers", "unloadOthers", "lostCard+editors"}));
    EXPECT_EQ(link.state.Connected, 0);
    EXPECT_FALSE(link.port.isOpen());
}

TEST(SerialLink, CardGoneWhileIdleIsAQuietNo) {
    test::SimProcess sim;
    ASSERT_TRUE(sim.started());
    RealLink link(sim.link());
    ASSERT_TRUE(link.fn.CardPresent());
    sim.stop();
    EXPECT_FALSE(link.fn.CardPresent());
    EXPECT_TRUE(link.dialogs.asked().empty());
    EXPECT_TRUE(link.reactions.calls.isEmpty());
}

// Each cause this machine can produce for real, and the words the main window shows for it.
TEST(SerialLink, EachFailureHasItsCauseInPlainWords) {
    struct Case {
        const char* name;
        QStringList simArgs; // empty name: no card at all
        bool holdPort;
        LinkCause cause;
        const char* words;
    };
    const Case cases[] = {
        {"no device", {}, false, LinkCause::NoSuchDevice, "No device at "},
        {"port held", {"--silent"}, true, LinkCause::HeldElsewhere, "is held by another program"},
        {"silent card", {"--silent"}, false, LinkCause::CardSilent, "no card answered"},
        {"another device",
         {"--garble"},
         false,
         LinkCause::UnexpectedAnswer,
         "not as the card does"},
        {"card present", {}, false, LinkCause::None, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const bool noCard = c.cause == LinkCause::NoSuchDevice;
        test::SimProcess sim(c.simArgs);
        ASSERT_TRUE(sim.started());
        const QString device = noCard ? sim.dir() + "/nothing-here" : sim.link();
        RealLink link(device);
        SerialTransport holder(link.settings);
        holder.setCommPort(7);
        if (c.holdPort) holder.open();

        EXPECT_EQ(link.fn.CardPresent(), c.cause == LinkCause::None);
        const LinkFailure& f = link.fn.lastFailure();
        EXPECT_EQ(f.cause, c.cause);
        const QString words = describe(f, probeDevice(f.device));
        if (*c.words) {
            EXPECT_TRUE(words.contains(c.words)) << words.toStdString();
            EXPECT_TRUE(words.contains(device)) << words.toStdString();
        } else {
            EXPECT_EQ(words, "");
        }
    }
}
