// The main window's laser menu opens the editor that fits the card's firmware.
#include "LaserBench.h"

#include "forms/Dialogs.h"
#include "link/CardState.h"

#include <gtest/gtest.h>

using namespace velmorak;
using namespace velmorak::test;

TEST(MenuLaser, FirmwareChoosesTheWindow) {
    struct Case {
        int major;
        bool card;
        MsgResult answer; // when asked
        bool asked;
        const char* window;
    };
    const Case cases[] = {
        {2, true, MsgResult::Yes, false, "frmLaser"},
        {9, true, MsgResult::Yes, false, "frmLaser"},
        {10, true, MsgResult::No, false, "frmLaserOmron"},
        {20, true, MsgResult::No, false, "frmLaserOmron"},
        {21, true, MsgResult::Yes, true, "frmLaserOmron"},
        {21, true, MsgResult::No, true, "frmLaser"},
        {2, false, MsgResult::Yes, true, "frmLaserOmron"},
        {12, false, MsgResult::No, true, "frmLaser"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.major) + (c.card ? " card" : " no card"));
        SimLink::Card card;
        card.major = c.major;
        SessionBench b(card, c.card ? QString("5") : QString());
        ASSERT_TRUE(b.start());
        FrmStart& s = b.frm();
        s.mnuLaser.setVisible(true);
        s.mnuLaser.setEnabled(true);
        b.session->forms.show("frmAD9888");
        // A stored block too short to hold the firmware is read again.
        b.st().CardParams = "x";
        b.link.clearTrace();
        b.link.dialogs.answer(c.answer);
        s.mnuLaser.click();
        EXPECT_EQ(b.sentCount("50 41 52 52"), c.card ? 1 : 0);
        EXPECT_FALSE(b.session->forms.isLoaded("frmAD9888"));
        EXPECT_TRUE(b.session->forms.isLoaded(c.window));
        const bool other = b.session->forms.isLoaded(
            QString(c.window) == "frmLaser" ? "frmLaserOmron" : "frmLaser");
        EXPECT_FALSE(other);
        const auto& asked = b.link.dialogs.asked();
        ASSERT_EQ(asked.size(), c.asked ? 1u : 0u);
        if (c.asked) {
            EXPECT_EQ(asked[0].text,
                      "For NEW(Omron) Laser click 'YES', for OLD laser click 'NO'  ");
            EXPECT_EQ(asked[0].title, "Choose the LASER");
            EXPECT_EQ(asked[0].buttons, MsgButtons::YesNo);
        }
    }
}
