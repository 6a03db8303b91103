#include "registers/ui/RegisterTabsView.h"

#include "registers/RegisterMap.h"
#include "registers/ui/BitsFieldView.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmorak {

namespace {

QTableWidget* buildGrid(const RegisterMap& map, const RegisterGrid& g, QWidget* parent) {
    auto* table = new QTableWidget(g.last - g.first + 2, 4, parent);
    table->setObjectName(QString::fromLatin1(g.grid));
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setWordWrap(false);

    const QFontMetrics fm = table->fontMetrics();
    int rowHeight = 0;
    int valueWidth = 0;
    int nameWidth = fm.horizontalAdvance(QStringLiteral("Name"));
    for (int m = g.first; m <= g.last; ++m) {
        const RegisterRow& row = map.rows[size_t(m)];
        const int r = m - g.first + 1;
        auto* name = new QTableWidgetItem;
        if (row.nameColor) name->setForeground(QColor::fromRgb(row.nameColor));
        table->setItem(r, 1, name);
        nameWidth = std::max(nameWidth, fm.horizontalAdvance(QString::fromLatin1(row.name)));
        auto* bits = new BitsFieldView;
        bits->setObjectName(QStringLiteral("%1(%2)").arg(QString::fromLatin1(map.array)).arg(m));
        rowHeight = std::max(rowHeight, bits->sizeHint().height());
        valueWidth = std::max(valueWidth, bits->sizeHint().width());
        table->setCellWidget(r, 2, bits);
    }
    table->verticalHeader()->setDefaultSectionSize(std::max(rowHeight, fm.height() + 6));
    table->setColumnWidth(0, fm.horizontalAdvance(QStringLiteral("Address")) + 16);
    table->setColumnWidth(1, nameWidth + 16);
    table->setColumnWidth(2, valueWidth + 4);
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

} // namespace

QTabWidget* buildRegisterTabs(const RegisterMap& map, QWidget* parent) {
    auto* tabs = new QTabWidget(parent);
    for (const RegisterGrid& g : map.grids) {
        auto* page = new QWidget;
        auto* pageLayout = new QVBoxLayout(page);
        pageLayout->setContentsMargins(4, 4, 4, 4);
        auto* frame = new QGroupBox(page);
        frame->setObjectName(QString::fromLatin1(g.frame));
        frame->setFlat(true);
        auto* frameLayout = new QVBoxLayout(frame);
        frameLayout->setContentsMargins(0, 0, 0, 0);
        frameLayout->addWidget(buildGrid(map, g, frame));
        pageLayout->addWidget(frame);
        const int index = tabs->addTab(page, QString::fromLatin1(g.caption));
        tabs->setTabToolTip(index, QString::fromLatin1(map.tabText));
    }
    return tabs;
}

} // namespace velmorak
