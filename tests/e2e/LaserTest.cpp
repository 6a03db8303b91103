// The real tool opens the laser editor that fits the card's firmware, and a load reaches the
// virtual card's laser block.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <QProcess>

#include <gtest/gtest.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

namespace {

// The frames of one direction, as upper-case hex.
QStringList frames(const QStringList& trace, const QString& dir) {
    QStringList out;
    for (const QString& l : trace) {
        const QStringList parts = l.split(' ');
        if (parts.size() > 2 && parts[1] == dir) out << parts.mid(2).join(' ');
    }
    return out;
}

const QStringList kUnlock = {"wait frmStart.cmdConnect 1 0 Connected", "key frmStart Ctrl+Shift+E",
                             "dialog lumen", "wait frmStart.mnuPanel 1 1 Flat &Panel Interface",
                             "click frmStart.mnuLaser"};

} // namespace

TEST(AppLaser, FirmwareOpensItsEditorAndALoadReachesTheCard) {
    struct Journey {
        const char* firmware;
        QStringList steps;
        const char* image; // the laser bytes the card must hold after the load
    };
    const Journey journeys[] = {
        {"2.3",
         {"wait frmLaser.cmdLoad 1 1 &Load", "slide frmLaser.HScrl1 40",
          "wait frmLaser.txt1 1 1 5.85", "click frmLaser.cmdLoad",
          "wait frmLaser.cmdRead 1 1 &Read", "click frmLaser.mnuClose",
          "wait frmStart.mnuPanel 1 1 Flat &Panel Interface"},
         // Register 1 at 40; "Test" and "Enable Laser" read 1 on the card.
         "28 0D 18 0F 90 FF 0F 9F"},
        {"12.1",
         {"wait frmLaserOmron.cmdLoad 1 1 &Load", "bit frmLaserOmron.ucBitsField1(10) 0",
          "click frmLaserOmron.cmdLoad", "answer OK", "wait frmLaserOmron.cmdRead 1 1 &Read",
          "click frmLaserOmron.mnuClose", "wait frmStart.mnuPanel 1 1 Flat &Panel Interface"},
         // DATA_INVERT cleared: byte 2 from 101 to 100.
         "A5 3D 64 45 40 56 04 64 45 40 56 04 00"},
    };
    for (const Journey& j : journeys) {
        SCOPED_TRACE(j.firmware);
        SimProcess sim({"--firmware", j.firmware});
        ASSERT_TRUE(sim.started());
        AppProcess app(sim.link(), kUnlock + j.steps + QStringList{"quit"});
        ASSERT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
        const QString image = QString::fromLatin1(j.image);
        const QStringList sent = frames(sim.trace(), ">");
        const QStringList got = frames(sim.trace(), "<");
        const QString write = "57 52 45 45 40 FF " + image;
        EXPECT_TRUE(sent.contains(write)) << sent.join('\n').toStdString();
        // The read-back after the load shows the card's block holding the image.
        bool readBack = false;
        for (const QString& reply : got)
            readBack = readBack || reply.startsWith("52 44 45 45 40 FF " + image);
        EXPECT_TRUE(readBack) << got.join('\n').toStdString();
    }
}

// The card pulled out while a laser window reads or loads: the tool never crashes and ends as
// it does for the other editors, or goes back to its no-card state.
TEST(AppLaser, CardGoneDuringALaserActionIsNoCrash) {
    struct Journey {
        const char* firmware;
        const char* unplugOn;
        QStringList steps;
    };
    const QString noCard = "wait frmStart.cmdConnect 1 1 C&onnect";
    const Journey journeys[] = {
        {"2.3", "RDEE:1", {noCard}},
        {"2.3", "WREE:1", {"wait frmLaser.cmdLoad 1 1 &Load", "click frmLaser.cmdLoad", noCard}},
        {"2.3", "WREE:1", {"wait frmLaser.cmdLoad 1 1 &Load", "click frmLaser.mnuSaveN", noCard}},
        {"12.1",
         "RDEE:3",
         {"wait frmLaserOmron.cmdRead 1 1 &Read", "click frmLaserOmron.cmdRead", noCard}},
    };
    for (const Journey& j : journeys) {
        SCOPED_TRACE(std::string(j.firmware) + " " + j.unplugOn);
        SimProcess sim({"--firmware", j.firmware, "--unplug-on", j.unplugOn});
        ASSERT_TRUE(sim.started());
        AppProcess app(sim.link(), kUnlock + j.steps + QStringList{"quit"});
        EXPECT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
    }
}

TEST(AppLaser, CardsimTakesOnlyTheTwoKinds) {
    for (const char* kind : {"old", "new", "both"}) {
        SCOPED_TRACE(kind);
        QProcess p;
        p.start(velmorak::test::buildDir() + "/velmorak-cardsim", {"--laser", kind, "--help"});
        ASSERT_TRUE(p.waitForFinished(10000));
        // A good option leaves --help to answer; a bad one is a usage error.
        const bool good = QString(kind) != "both";
        EXPECT_EQ(p.exitCode(), good ? 0 : 2);
        if (!good) {
            EXPECT_TRUE(p.readAllStandardError().contains("--laser old|new"));
        }
    }
}
