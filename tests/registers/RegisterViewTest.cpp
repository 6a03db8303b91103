#include "MapForm.h"

#include "forms/ui/Binding.h"
#include "registers/Ad9888Map.h"
#include "registers/ui/BitsFieldView.h"
#include "registers/ui/RegisterGridView.h"
#include "registers/ui/RegisterTabsView.h"

#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

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

TEST(RegisterTabs, RowsBindByNameBothWays) {
    BoundTabs t;
    EXPECT_TRUE(t.binding->unboundControls().isEmpty())
        << t.binding->unboundControls().join('\n').toStdString();
    EXPECT_EQ(t.tabs->tabText(1), QStringLiteral("0EH - OFH"));
    auto* grid = t.tabs->findChild<RegisterGridView*>(QStringLiteral("FlexGr3"));
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->cellText(0, 3), QStringLiteral("Control"));
    EXPECT_EQ(grid->cellText(9, 0), QStringLiteral(" "));
    EXPECT_EQ(grid->cellText(9, 1), QStringLiteral("Active Hsync "));
    EXPECT_EQ(grid->bitsRow(9), t.row(38));
    EXPECT_EQ(t.row(38)->accessibleName(), QStringLiteral("Active Hsync"));
    EXPECT_EQ(t.row(38)->cell(6)->accessibleName(), QStringLiteral("Active Hsync, bit 6"));

    spreadList(t.form.rows(), kAd9888Map, QString::fromLatin1(kAd9888Default.list));
    BitsFieldView* pll = t.row(1);
    EXPECT_EQ(pll->hexLabel()->text(), QStringLiteral("69h"));
    int clicked = -1;
    t.form.rows()(1).onClickBit += [&] { clicked = t.form.rows()(1).BitIndex(); };
    pll->cell(1)->click();
    EXPECT_EQ(clicked, 1);
    EXPECT_EQ(pll->fsumLabel()->text(), QStringLiteral("107"));

    BitsFieldView* status = t.row(38); // one read-back bit, the rest hidden
    EXPECT_FALSE(status->fsumLabel()->isVisibleTo(status));
    EXPECT_FALSE(status->cell(6)->isEnabled());
    EXPECT_TRUE(status->cell(6)->styleSheet().contains(QStringLiteral("#ffffc0")));
    EXPECT_TRUE(status->cell(5)->styleSheet().contains(QStringLiteral("#808080")));
}

} // namespace
