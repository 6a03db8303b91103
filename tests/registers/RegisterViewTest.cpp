#include "MapForm.h"

#include "forms/ui/Binding.h"
#include "registers/Ad9888Map.h"
#include "registers/ui/BitsFieldView.h"
#include "registers/ui/RegisterTabsView.h"
#include "support/SimProcess.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <gtest/gtest.h>

#include <memory>

using namespace velmorak;

namespace {

struct BoundTabs {
    MapForm form{kAd9888Map};
    std::unique_ptr<QTabWidget> tabs{buildRegisterTabs(kAd9888Map)};
    std::unique_ptr<FormBinding> binding{bindForm(form, tabs.get())};

    BitsFieldView* row(int m) const {
        return tabs->findChild<BitsFieldView*>(QStringLiteral("ucBitsField1(%1)").arg(m));
    }
};

TEST(RegisterTabs, EveryRowAndGridBindsByName) {
    BoundTabs t;
    EXPECT_TRUE(t.binding->mismatches().isEmpty())
        << t.binding->mismatches().join('\n').toStdString();
    EXPECT_TRUE(t.binding->unboundControls().isEmpty())
        << t.binding->unboundControls().join('\n').toStdString();
    ASSERT_EQ(t.tabs->count(), 4);
    EXPECT_EQ(t.tabs->tabText(1), QStringLiteral("0EH - OFH"));
    EXPECT_EQ(t.tabs->tabToolTip(1), QStringLiteral("Addresses"));
    auto* grid = t.tabs->findChild<QTableWidget*>(QStringLiteral("FlexGr3"));
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->rowCount(), 16);
    EXPECT_EQ(grid->item(9, 1)->text(), QStringLiteral("Active Hsync "));
    EXPECT_EQ(grid->cellWidget(9, 2), t.row(38)); // rows survive the grid's reshaping
    EXPECT_EQ(t.row(38)->accessibleDescription(), QStringLiteral("ucBitsField1(38)"));
}

TEST(RegisterTabs, CellsMirrorTheModelAndClicksReachIt) {
    BoundTabs t;
    spreadList(t.form.rows(), kAd9888Map, QString::fromLatin1(kAd9888Default.list));
    BitsFieldView* pll = t.row(1);
    ASSERT_TRUE(pll);
    EXPECT_EQ(pll->fsumLabel()->text(), QStringLiteral("105"));
    EXPECT_EQ(pll->hexLabel()->text(), QStringLiteral("69h"));
    EXPECT_EQ(pll->cell(6)->text(), QStringLiteral("1"));

    int clicked = -1;
    t.form.rows()(1).onClickBit += [&] { clicked = t.form.rows()(1).BitIndex(); };
    pll->cell(1)->click();
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(t.form.rows()(1).ReadByte(), 107);
    EXPECT_EQ(pll->hexLabel()->text(), QStringLiteral("6Bh"));

    BitsFieldView* field = t.row(38); // one status bit, the rest hidden
    EXPECT_FALSE(field->fsumLabel()->isVisibleTo(field));
    EXPECT_FALSE(field->cell(6)->isEnabled());
    EXPECT_TRUE(field->cell(6)->styleSheet().contains(QStringLiteral("#ffffc0")));
    EXPECT_EQ(field->cell(5)->text(), QString());
    EXPECT_TRUE(field->cell(5)->styleSheet().contains(QStringLiteral("#808080")));

    t.binding->unbind();
    pll->cell(1)->click(); // let go of the model: nothing reaches it
    EXPECT_EQ(t.form.rows()(1).ReadByte(), 107);
}

// Draws every tab to a PNG in the build folder, for a look by eye.
TEST(RegisterTabs, RendersEachGrid) {
    BoundTabs t;
    spreadList(t.form.rows(), kAd9888Map, QString::fromLatin1(kAd9888Presets[2].list));
    const QString dir = test::buildDir();
    t.tabs->resize(700, 480);
    t.tabs->show();
    for (int i = 0; i < t.tabs->count(); ++i) {
        t.tabs->setCurrentIndex(i);
        QApplication::processEvents();
        const QString file = QDir(dir).filePath(QStringLiteral("registers-tab%1.png").arg(i + 1));
        ASSERT_TRUE(t.tabs->grab().save(file)) << file.toStdString();
    }
    EXPECT_EQ(t.row(1)->fsumLabel()->text(), QStringLiteral("83"));
}

} // namespace
