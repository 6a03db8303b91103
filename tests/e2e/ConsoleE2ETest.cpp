// The real tool trims the phase on the virtual card from the Display Adjustment window.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <gtest/gtest.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

TEST(AppConsole, OneStepOfThePhaseReachesTheCard) {
    SimProcess sim({"--console"});
    ASSERT_TRUE(sim.started());
    // Phase register 88: the stepper at 11; one step right is 12, written as 96.
    ASSERT_EQ(sim.command("reg 32 4 88"), "reg 32 4 = 88");
    AppProcess app(sim.link(),
                   {"wait frmStart.cmdConnect 1 0 Connected", "click frmStart.mnuDisplayAdj",
                    "wait frmConsole.lblRez 1 1 1024x768x75", "wait frmConsole.cmdSave 1 1 &Save",
                    "arrow frmConsole.ucScrlPhase right", "idle 800", "quit"});
    ASSERT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
    EXPECT_EQ(sim.command("reg 32 4"), "reg 32 4 = 96");
    sim.stop();
    const QStringList trace = sim.trace();
    int writes = 0;
    for (const QString& l : trace)
        if (l.contains("> 57 52 45 45 20 04")) ++writes;
    EXPECT_EQ(writes, 1) << trace.join('\n').toStdString();
}
