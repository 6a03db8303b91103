// The resolution name dialog over the seed database and the virtual card.
#include "SessionBench.h"

#include "resdb/Database.h"
#include "resdb/FrmInputBox.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;
using velmorak::test::SimLink;

namespace {

FrmInputBox& openBox(SessionBench& b) {
    b.st().InputBoxX = 210;
    b.st().InputBoxY = 140;
    return dynamic_cast<FrmInputBox&>(b.session->forms.show("frmInputBox", true));
}

} // namespace

TEST(InputBox, PreselectsWhatTheCardMeasures) {
    struct Row {
        const char* name;
        const char* source; // empty: no source
        int shortReply;     // 0: whole replies
        const char* selected;
        const char* description;
    };
    const Row table[] = {
        {"known source", "1024x768x75", 0, "1024x768x75", "XGA 1024x768, 75 Hz"},
        {"no source", "", 0, "640x480x60", "VGA 640x480, 60 Hz"},
        {"short block", "1024x768x75", 20, "640x480x60", "VGA 640x480, 60 Hz"},
    };
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SimLink::Card c;
        c.source = row.source;
        SessionBench b(c);
        ASSERT_TRUE(b.start());
        b.link.shortReplies(row.shortReply);
        b.link.clearTrace();
        FrmInputBox& box = openBox(b);
        EXPECT_EQ(box.caption(), "Enter the Name");
        EXPECT_EQ(box.left(), 210);
        EXPECT_EQ(box.top(), 140);
        EXPECT_EQ(b.link.sent(), QStringList{"50 41 52 52 00 00"});
        EXPECT_EQ(box.cboPresets.text().toStdString(), row.selected);
        EXPECT_EQ(box.txtInput.text().toStdString(), row.description);
        EXPECT_EQ(b.st().SelRezName.toStdString(), row.selected);
    }
}

TEST(InputBox, ListsDeletedRowsAndLooksUpWhatIsTyped) {
    SessionBench b({}, QString());
    {
        auto db = Database::OpenDatabase(b.dbPath(), kDbConnect);
        db->Execute("UPDATE tblDefValues SET Mark = 'D' WHERE Name = '800x600x56';"
                    "UPDATE tblDefValues SET Description = NULL WHERE Name = '800x600x60'");
    }
    ASSERT_TRUE(b.start());
    EXPECT_EQ(b.frm().cboPresets.indexOf("800x600x56"), -1);
    FrmInputBox& box = openBox(b);
    // Without a link nothing is asked of the card and nothing is picked.
    EXPECT_TRUE(b.link.sent().isEmpty());
    EXPECT_EQ(box.cboPresets.listIndex(), -1);
    EXPECT_EQ(box.txtInput.text(), "");
    EXPECT_GE(box.cboPresets.indexOf("800x600x56"), 0);
    struct Step {
        const char* typed;
        const char* description;
    };
    const Step steps[] = {{"640x480x72", "VGA 640x480, 72 Hz"},
                          {"My panel 1366", ""},
                          {"640x480x75", "VGA 640x480, 75 Hz"},
                          {"800x600x60", ""}};
    for (const Step& s : steps) {
        box.cboPresets.userEdit(s.typed);
        EXPECT_EQ(box.txtInput.text().toStdString(), s.description) << s.typed;
        EXPECT_EQ(b.st().SelRezName.toStdString(), s.typed);
    }
}

// OK and the window frame hand back the name and description; Cancel hands back nothing.
TEST(InputBox, HowTheDialogEnds) {
    struct Row {
        const char* name;
        int ending; // 0 OK, 1 Cancel, 2 the window frame
        const char* selName;
        const char* selDescription;
    };
    const Row table[] = {
        {"OK", 0, "Studio", "my own"}, {"Cancel", 1, "", ""}, {"frame", 2, "Studio", "my own"}};
    for (const Row& row : table) {
        SCOPED_TRACE(row.name);
        SessionBench b({}, QString());
        ASSERT_TRUE(b.start());
        FrmInputBox& box = openBox(b);
        box.cboPresets.userEdit("Studio");
        box.txtInput.userEdit("my own");
        if (row.ending == 0) box.cmdOK.click();
        if (row.ending == 1) box.cmdCancel.click();
        if (row.ending == 2) b.session->forms.unload("frmInputBox");
        EXPECT_FALSE(b.session->forms.isLoaded("frmInputBox"));
        EXPECT_EQ(b.st().SelRezName.toStdString(), row.selName);
        EXPECT_EQ(b.st().SelRezDescription.toStdString(), row.selDescription);
    }
}
