// The service menus of the main window and their access codes.
#include "SessionBench.h"

#include <gtest/gtest.h>

#include <optional>

using namespace velmorak;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

const Qt::KeyboardModifiers kCtrlShift = Qt::ControlModifier | Qt::ShiftModifier;

void press(FrmStart& f, int key, Qt::KeyboardModifiers mods) {
    f.previewKey(key, mods);
}

QStringList visibleServiceMenus(FrmStart& f) {
    QStringList out;
    for (MenuItem* m :
         {&f.mnuPanel, &f.mnuLaser, &f.mnuTransmitter, &f.mnuAutoPresets, &f.mnuFile2Mem,
          &f.mnuReadAutopresets, &f.mnuImport, &f.mnuExport, &f.mnuCardMemory})
        if (m->visible()) out << m->name() + (m->enabled() ? "" : " (off)");
    return out;
}

} // namespace

TEST(Unlock, CodesShowTheirMenus) {
    const QStringList firstCode{"mnuPanel", "mnuLaser", "mnuTransmitter", "mnuAutoPresets",
                                "mnuFile2Mem"};
    struct Row {
        std::optional<QString> answer;
        QStringList menus;
    };
    const Row table[] = {
        {QString("LUMEN"), firstCode},
        {QString("lumen"), firstCode},
        {QString("VoLtAr"), firstCode + QStringList{"mnuReadAutopresets"}},
        {QString("LUMENS"), {"mnuFile2Mem"}},
        {QString(""), {"mnuFile2Mem"}},
        {std::nullopt, {"mnuFile2Mem"}},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.answer.value_or("(cancel)").toStdString());
        SessionBench b({}, QString());
        ASSERT_TRUE(b.start());
        b.link.dialogs.answerText(row.answer);
        press(b.frm(), Qt::Key_E, kCtrlShift);
        ASSERT_EQ(b.link.dialogs.asked().size(), 1u);
        EXPECT_EQ(b.link.dialogs.asked()[0].text, "Enter your password :");
        EXPECT_EQ(b.link.dialogs.asked()[0].title, "Velmorak");
        EXPECT_EQ(visibleServiceMenus(b.frm()), row.menus);
        EXPECT_TRUE(b.link.dialogs.messages().isEmpty()); // a wrong code is silent
    }
}

TEST(Unlock, OtherKeysDoNothingAndAuthorshipIsAMessage) {
    SessionBench b({}, QString());
    ASSERT_TRUE(b.start());
    press(b.frm(), Qt::Key_E, Qt::ControlModifier);
    press(b.frm(), Qt::Key_E, Qt::ShiftModifier);
    press(b.frm(), Qt::Key_X, kCtrlShift);
    EXPECT_TRUE(b.link.dialogs.asked().empty());
    press(b.frm(), Qt::Key_A, kCtrlShift | Qt::AltModifier);
    ASSERT_EQ(b.link.dialogs.messages().size(), 1);
    EXPECT_EQ(visibleServiceMenus(b.frm()), QStringList{"mnuFile2Mem"});
    // A wrong code may be retried at once.
    b.link.dialogs.answerText(QString("nope"));
    b.link.dialogs.answerText(QString("lumen"));
    press(b.frm(), Qt::Key_E, kCtrlShift);
    press(b.frm(), Qt::Key_E, kCtrlShift);
    EXPECT_TRUE(b.frm().mnuPanel.visible());
}

// A Receiver hides mnuFile2Mem at connect; the unlock shows it again, and a later connect
// applies the card's rules over the unlocked menus.
TEST(Unlock, ReceiverAndALaterConnect) {
    SimLink::Card rx;
    rx.receiver = true;
    SessionBench b(rx);
    ASSERT_TRUE(b.start());
    FrmStart& f = b.frm();
    EXPECT_FALSE(f.mnuFile2Mem.visible());
    b.link.dialogs.answerText(QString("VOLTAR"));
    press(f, Qt::Key_E, kCtrlShift);
    EXPECT_TRUE(f.mnuFile2Mem.visible());
    EXPECT_TRUE(f.mnuReadAutopresets.visible());
    f.cmdDisconnect.click();
    f.cmdConnect.click();
    EXPECT_FALSE(f.mnuFile2Mem.visible());
    EXPECT_FALSE(f.mnuDisplayAdj.visible());
    EXPECT_TRUE(f.mnuPanel.visible() && f.mnuPanel.enabled());
    EXPECT_TRUE(f.mnuReadAutopresets.visible());
}
