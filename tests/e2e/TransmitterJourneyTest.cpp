// The real tool, unlocked, edits a transmitter register and loads it into the virtual card.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <gtest/gtest.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

TEST(AppTransmitter, ChangesAFieldAndLoadsIt) {
    SimProcess sim;
    ASSERT_TRUE(sim.started());
    // DE_TOP (34H) is 0 on the card; bit 2 of its row makes it 4.
    AppProcess app(
        sim.link(),
        {"wait frmStart.cmdConnect 1 0 Connected", "key frmStart Ctrl+Shift+E", "dialog lumen",
         "click frmStart.mnuTransmitter", "wait frmTransmitter.cmdRead 1 1 &Read",
         "tab frmTransmitter.TabStrip1 32H -3DH", "bit frmTransmitter.ucBitsField1(33) 2",
         "click frmTransmitter.cmdLoad", "wait frmTransmitter.txtMsg 0 1 Load OK", "quit"});
    ASSERT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
    sim.stop();
    // The block sent, and the card's answer to the read that follows it: 32H, 33H, 34H.
    const QStringList trace = sim.trace();
    int block = -1;
    for (int i = 0; i < trace.size(); ++i)
        if (trace[i].contains("> 57 52 45 45 60 FF")) block = i;
    ASSERT_GE(block, 0) << trace.join('\n').toStdString();
    EXPECT_TRUE(trace[block].endsWith("> 57 52 45 45 60 FF BE 00 80 00 00 04 00 00 00 00 00"))
        << trace[block].toStdString();
    QString reply;
    for (int i = block + 1; i < trace.size() && reply.isEmpty(); ++i)
        if (trace[i].contains("< 52 44 45 45 60 FE")) reply = trace[i];
    EXPECT_TRUE(reply.contains("< 52 44 45 45 60 FE 00 00 04")) << reply.toStdString();
}
