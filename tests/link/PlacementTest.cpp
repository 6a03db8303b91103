// Where an editor window opens from its saved "x,y".
#include "link/Placement.h"
#include "forms/Form.h"
#include "platform/Settings.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace velmorak;

TEST(Placement, SavedPositionKeptOnTheScreen) {
    struct Row {
        const char* saved;
        int left, top;
    };
    // Screen 0,0 to 1023,767; window 400 x 300 starting at 7,9.
    for (const Row& r : {Row{"", 7, 9}, Row{"120", 7, 9}, Row{"100,200", 100, 200},
                         Row{"-50,10", 0, 10}, Row{"5000,5000", 823, 617}, Row{"12.7,x", 13, 0},
                         Row{"1e12,-1e12", 823, 0}, Row{"-1e12,99999999999", 0, 617}}) {
        SCOPED_TRACE(r.saved);
        QTemporaryDir dir;
        QtSettingsStore settings(dir.filePath("s.ini"));
        settings.save("frmX", "Layout", r.saved);
        Form f("frmX");
        f.move(7, 9, 400, 300);
        placeFromLayout(f, settings, QRect(0, 0, 1024, 768), "frmX");
        EXPECT_EQ(f.left(), r.left);
        EXPECT_EQ(f.top(), r.top);
    }
}
