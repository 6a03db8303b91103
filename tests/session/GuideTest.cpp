// The Help menu's guide: the first folder holding it wins; none gives a message and no window.
#include "SessionBench.h"
#include "forms/Dialogs.h"
#include "session/FrmGuide.h"
#include "support/SimProcess.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

TEST(UserGuide, FoundBesideTheProgramOrSaidMissing) {
    QTemporaryDir empty, own;
    QFile mine(QDir(own.path()).filePath(FrmGuide::kFile));
    ASSERT_TRUE(mine.open(QIODevice::WriteOnly));
    mine.write("# Mine\n");
    mine.close();
    const QString built = velmorak::test::buildDir();
    struct Case {
        const char* name;
        QStringList folders;
        const char* starts; // nullptr: not found
    };
    const Case cases[] = {
        {"the build's copy", {empty.path(), built}, "# Velmorak user guide"},
        {"first found wins", {own.path(), built}, "# Mine"},
        {"nowhere", {empty.path()}, nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        ScriptedDialogs dialogs;
        FrmGuide guide(dialogs, c.folders);
        guide.load();
        if (c.starts) {
            EXPECT_TRUE(guide.text().startsWith(c.starts)) << guide.text().left(40).toStdString();
            EXPECT_TRUE(dialogs.messages().isEmpty());
        } else {
            EXPECT_TRUE(guide.text().isEmpty());
            ASSERT_EQ(dialogs.messages().size(), 1);
            EXPECT_TRUE(dialogs.messages()[0].startsWith("The user guide (user-guide.md) was not "
                                                         "found in:"));
        }
    }
}

TEST(UserGuide, HelpMenuOpensIt) {
    SessionBench b;
    ASSERT_TRUE(QFile::copy(velmorak::test::buildDir() + "/user-guide.md",
                            b.dir.filePath("user-guide.md")));
    ASSERT_TRUE(b.start());
    b.frm().mnuGuide.click();
    ASSERT_TRUE(b.session->forms.isLoaded("frmGuide"));
    EXPECT_EQ(dynamic_cast<FrmGuide*>(b.session->forms.get("frmGuide"))->path(),
              b.dir.filePath("user-guide.md"));
}
