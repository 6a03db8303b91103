// The real tool opens Card Status against a one-fibre Receiver.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <gtest/gtest.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

TEST(AppCardStatus, OneFibreReceiver) {
    SimProcess sim({"--receiver", "--fibres", "1", "--firmware", "2.6"});
    ASSERT_TRUE(sim.started());
    AppProcess app(sim.link(),
                   {"wait frmStart.cmdConnect 1 0 Connected", "click frmStart.mnuParams",
                    "wait frmStatus.lblName 1 1 Receiver", "wait frmStatus.imCard 1 1 RRGB1s.svg",
                    "wait frmStatus.lblFWVersion 1 1 2.06", "wait frmStatus.shpLed(2) 0 1",
                    "wait frmStatus.shpLed(3) 1 1", "click frmStatus.cmdRefresh",
                    "wait frmStatus.cmdRefresh 1 1 &Refresh", "click frmStatus.mnuCloseDigStatus",
                    "quit"});
    EXPECT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
}
