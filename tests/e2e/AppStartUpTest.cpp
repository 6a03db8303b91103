// The real tool against the virtual card on a pseudo-terminal, in real time.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <gtest/gtest.h>

#include <cstdio>

using velmorak::test::SimProcess;
using App = velmorak::test::AppProcess;

namespace {

QByteArray bytesOf(const QString& traceLine) {
    return QByteArray::fromHex(traceLine.section(' ', 2).toLatin1());
}

QStringList framesToCard(const QStringList& trace) {
    QStringList out;
    for (const QString& l : trace) {
        const int at = l.indexOf(" > ");
        if (at >= 0) out << l.mid(at + 3);
    }
    return out;
}

} // namespace

TEST(AppStartUp, ComesUpConnectedAndFallsBackWhenTheCardGoes) {
    SimProcess sim({"--transmitter", "--rgb", "--firmware", "2.3"});
    ASSERT_TRUE(sim.started());
    App app(sim.link());
    ASSERT_TRUE(app.waitFor("frmStart.cmdConnect\t1\t0\tConnected", 20000))
        << app.state().join('\n').toStdString();
    std::printf("start to connected window: %lld ms\n",
                static_cast<long long>(app.clock.elapsed()));
    const QStringList shown = app.state();
    EXPECT_TRUE(shown.contains("frmStart.txtNameCard\t1\t1\tTransmitter"));
    EXPECT_TRUE(shown.contains("frmStart.txtFwv\t1\t1\t 2.3"));
    EXPECT_TRUE(shown.contains("frmStart.cmdDisconnect\t1\t1\t&Disconnect"));
    EXPECT_TRUE(shown.contains("frmStart.txtCom\t1\t1\t 5"));
    const QStringList frames = framesToCard(sim.trace());
    ASSERT_GE(frames.size(), 2);
    EXPECT_EQ(frames[0], "35 55 53 42");
    EXPECT_EQ(frames[1], "50 41 52 52 00 00");

    // The card goes: the idle probe notices within about fifteen seconds.
    sim.stop();
    EXPECT_TRUE(app.waitFor("frmStart.cmdConnect\t1\t1\tC&onnect", 25000))
        << app.state().join('\n').toStdString();
    EXPECT_TRUE(app.state().contains("frmStart.txtNameCard\t0\t1\tTransmitter"));
    EXPECT_FALSE(app.proc.waitForFinished(200)); // still running
}

// Unlocked by its code, the tool opens the flat panel window, reads the chip, and a changed bit
// of register 05H is loaded into the card; the single-register tool then sends one bit of 01H and
// a slider's value. Every step goes through the widgets.
TEST(AppFlatPanel, ReadChangeAndLoadARegister) {
    SimProcess sim;
    ASSERT_TRUE(sim.started());
    App app(sim.link(),
            {"wait frmStart.cmdConnect 1 0 Connected", "key frmStart Ctrl+Shift+E", "dialog lumen",
             "wait frmStart.mnuPanel 1 1 Flat &Panel Interface", "click frmStart.mnuPanel",
             "wait frmAD9888.cmdRead 1 1 &Read", "click frmAD9888.cmdRead",
             "wait frmAD9888.txtMsg 0 1 Read OK", "bit frmAD9888.ucBitsField1(6) 3",
             "click frmAD9888.cmdLoad", "wait frmAD9888.txtMsg 0 1 OK", "click frmAD9888.mnuLRReg",
             "wait frmRLReg.cmdLoad 1 1 &Load", "click frmRLReg.ChkChange",
             "bit frmRLReg.ucBitsFieldR 7", "slide frmRLReg.HScrlR 85", "click frmRLReg.cmdClose",
             "quit"});
    ASSERT_TRUE(app.proc.waitForFinished(40000));
    EXPECT_EQ(app.proc.exitCode(), 0);
    const QStringList trace = sim.trace();
    int before = -1, pll = -1;
    QByteArray block, readBack;
    QList<QByteArray> single;
    for (int i = 0; i < trace.size(); ++i) {
        const QByteArray bytes = bytesOf(trace[i]);
        if (bytes.startsWith(QByteArray("RDEE\x20\xFF", 6)) && before < 0 && i + 1 < trace.size()) {
            before = static_cast<unsigned char>(bytesOf(trace[i + 1]).at(6 + 5));
            pll = static_cast<unsigned char>(bytesOf(trace[i + 1]).at(6 + 1));
        }
        if (bytes.startsWith(QByteArray("WREE\x20\x01", 6))) single << bytes;
        if (bytes.startsWith(QByteArray("WREE\x20\xFF", 6))) {
            block = bytes;
            if (i + 2 < trace.size()) readBack = bytesOf(trace[i + 2]);
        }
    }
    ASSERT_GE(before, 0);
    ASSERT_EQ(block.size(), 6 + 23);
    const int loaded = static_cast<unsigned char>(block.at(6 + 4));
    EXPECT_EQ(loaded, before ^ 0x08);
    ASSERT_GT(readBack.size(), 6 + 5);
    EXPECT_EQ(static_cast<unsigned char>(readBack.at(6 + 5)), loaded);
    // The single-register tool, load on change: bit 7 of 01H flipped and sent alone, then the
    // slider's value.
    EXPECT_EQ(single, (QList<QByteArray>{QByteArray("WREE\x20\x01", 6) + char(pll ^ 0x80),
                                         QByteArray("WREE\x20\x01", 6) + char(85)}));
}
