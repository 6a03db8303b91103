// The card pulled out in the middle of each action of the editor windows, and every modal
// window closed from its title bar: the real tool never crashes. It ends by itself where the
// card tool ends (a read of a chip that finds the device gone), or goes back to its no-card
// state, and a script step that cannot be done ends it with code 3.
#include "support/AppProcess.h"
#include "support/SimProcess.h"

#include <gtest/gtest.h>

using velmorak::test::AppProcess;
using velmorak::test::SimProcess;

namespace {

const QStringList kOpenFlatPanel = {
    "wait frmStart.cmdConnect 1 0 Connected", "key frmStart Ctrl+Shift+E", "dialog lumen",
    "wait frmStart.mnuPanel 1 1 Flat &Panel Interface", "click frmStart.mnuPanel"};
const QString kPanelReady = "wait frmAD9888.cmdRead 1 1 &Read";
const QString kNoCard = "wait frmStart.cmdConnect 1 1 C&onnect";

struct Journey {
    const char* name;
    const char* unplugOn; // the frame the card vanishes on (empty: it stays)
    QStringList steps;    // after the flat panel window was asked for
};

} // namespace

TEST(AppUnplug, NoActionOfAnEditorCrashesWhenTheCardGoes) {
    const Journey journeys[] = {
        // The window's own read while it opens: the tool ends, as the card tool does.
        {"opening the flat panel window", "RDEE:1", {kNoCard}},
        {"flat panel Read", "RDEE:3", {kPanelReady, "click frmAD9888.cmdRead", kNoCard}},
        {"flat panel Load", "WREE:1", {kPanelReady, "click frmAD9888.cmdLoad", kNoCard}},
        {"single-register Read",
         "RDEE:3",
         {kPanelReady, "click frmAD9888.mnuLRReg", "wait frmRLReg.cmdRead 1 1 &Read",
          "click frmRLReg.cmdRead", "answer OK", kNoCard}},
        {"opening the name dialog",
         "PARR:2",
         {kPanelReady, "click frmAD9888.cmdSave", "answer OK", kNoCard}},
        {"closing each modal window",
         "",
         {kPanelReady, "click frmAD9888.mnuLRReg", "wait frmRLReg.cmdRead 1 1 &Read",
          "close frmRLReg", kPanelReady, "click frmAD9888.cmdSave",
          "wait frmInputBox.cmdOK 1 1 &OK", "close frmInputBox", kPanelReady, "close frmAD9888",
          "wait frmStart.mnuPanel 1 1 Flat &Panel Interface"}},
    };
    for (const Journey& j : journeys) {
        SCOPED_TRACE(j.name);
        QStringList args;
        if (*j.unplugOn) args << "--unplug-on" << j.unplugOn;
        SimProcess sim(args);
        ASSERT_TRUE(sim.started());
        AppProcess app(sim.link(), kOpenFlatPanel + j.steps + QStringList{"quit"});
        EXPECT_TRUE(app.endsCleanly(45000)) << app.state().join('\n').toStdString();
    }
}
