// The memory viewer opened from the main window: 32 rows of 32 bytes from a page of the card's
// data memory, hexadecimal headers and addresses, decimal cells.
#include "SessionBench.h"

#include "forms/FrmWait.h"
#include "monitor/FrmReadEEPresets.h"
#include "sim/VirtualCard.h"

#include <gtest/gtest.h>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

const char* const kPrompt = "Enter EE Address you want to read from (&H00 - &H3E) :";

// A memory whose every byte tells where it is: (address * 7 + address / 256) mod 256.
int pattern(int a) {
    return (a * 7 + a / 256) & 0xFF;
}

struct Viewer {
    SessionBench b;
    QList<int> progress;
    bool startEnabledDuringRead = false;
    std::vector<ScopedConnection> links;

    Viewer() {
        EXPECT_TRUE(b.start());
        QByteArray mem;
        for (int a = 0; a < 0x10000; ++a)
            mem += char(pattern(a));
        b.link.card().setDataMemory(0, mem);
        b.link.dialogs.answerText(QString("voltar"));
        b.frm().previewKey(Qt::Key_E, Qt::ControlModifier | Qt::ShiftModifier);
        b.link.dialogs.clear();
        b.link.clearTrace();
        links.emplace_back(b.session->forms.onLoaded.connect([this](Form& f) {
            if (auto* w = dynamic_cast<FrmWait*>(&f))
                links.emplace_back(w->ProgBar.onPropertyChanged.connect([this, w](Prop p) {
                    if (p == Prop::Value) progress << w->ProgBar.value();
                }));
        }));
        b.link.host.onPump([this] {
            if (b.frm().enabled()) startEnabledDuringRead = true;
        });
    }
    // Answers the input box and opens the viewer.
    FrmReadEEPresets* open(std::optional<QString> answer) {
        b.link.dialogs.answerText(answer);
        b.frm().mnuReadAutopresets.click();
        return b.session->forms.get<FrmReadEEPresets>("frmReadEEPresets");
    }
};

// The frames of a dump from address `start`: two reads of 66 a row, 16 bytes apart.
QStringList dumpFrames(int start) {
    QStringList out;
    for (int a = start; a < start + 1024; a += 16)
        out << QString("52 44 44 42 A6 42 %1 %2")
                   .arg((a >> 8) & 0xFF, 2, 16, QChar('0'))
                   .arg(a & 0xFF, 2, 16, QChar('0'))
                   .toUpper();
    return out;
}

} // namespace

TEST(ReadEEPresets, PagesOfTheDataMemory) {
    const struct {
        const char* answer;
        int start;
        const char* firstRow;
        const char* lastRow;
    } table[] = {{"&H20", 0x2000, "2000", "23E0"},
                 {"&H3E", 0x3E00, "3E00", "41E0"},
                 {"&h0", 0x0000, "0", "3E0"}};
    for (const auto& row : table) {
        SCOPED_TRACE(row.answer);
        Viewer v;
        FrmReadEEPresets* f = v.open(QString(row.answer));
        ASSERT_NE(f, nullptr);
        const auto& asked = v.b.link.dialogs.asked();
        ASSERT_EQ(asked.size(), 1u);
        EXPECT_EQ(asked[0].text, kPrompt);
        EXPECT_EQ(asked[0].title, "Read EE Memory");
        EXPECT_EQ(v.b.st().EEStartAddr, row.answer);
        EXPECT_EQ(v.b.link.sent(), dumpFrames(row.start));

        Grid& g = f->grTable;
        ASSERT_EQ(g.rows(), 33);
        ASSERT_EQ(g.cols(), 33);
        EXPECT_EQ(g.textMatrix(0, 0), "Address");
        EXPECT_EQ(g.textMatrix(0, 1), "00");
        EXPECT_EQ(g.textMatrix(0, 11), "0A");
        EXPECT_EQ(g.textMatrix(0, 32), "1F");
        EXPECT_EQ(g.textMatrix(1, 0), row.firstRow);
        EXPECT_EQ(g.textMatrix(32, 0), row.lastRow);
        for (int r = 1; r <= 32; ++r)
            for (int c = 1; c <= 32; ++c)
                ASSERT_EQ(g.textMatrix(r, c),
                          QString::number(pattern(row.start + (r - 1) * 32 + c - 1)))
                    << r << "," << c;

        QList<int> rows;
        for (int r = 1; r <= 32; ++r)
            rows << r;
        EXPECT_EQ(v.progress, rows);
        EXPECT_FALSE(v.startEnabledDuringRead);
        EXPECT_FALSE(v.b.session->forms.isLoaded("frmWait"));
        EXPECT_TRUE(f->visible());
        EXPECT_TRUE(v.b.frm().enabled());
        EXPECT_FALSE(v.b.frm().mnuReadAutopresets.enabled());
        f->unload();
        EXPECT_TRUE(v.b.frm().mnuReadAutopresets.enabled());
    }
}

// The first 16 characters of each reply fill half a row; a short reply leaves cells empty.
TEST(ReadEEPresets, ShortReplies) {
    auto at = [](int a) { return QString::number(pattern(a)); };
    const struct {
        int replyBytes;
        QString col1, col3, col17; // cells of the first row
    } table[] = {{6, "0", "", "0"}, {9, at(0x2000), at(0x2002), at(0x2010)}};
    for (const auto& row : table) {
        SCOPED_TRACE(row.replyBytes);
        Viewer v;
        v.b.link.shortReplies(row.replyBytes);
        FrmReadEEPresets* f = v.open(QString("&H20"));
        ASSERT_NE(f, nullptr);
        Grid& g = f->grTable;
        ASSERT_EQ(g.rows(), 33);
        EXPECT_EQ(g.textMatrix(1, 0), "2000");
        EXPECT_EQ(g.textMatrix(1, 1), row.col1);
        EXPECT_EQ(g.textMatrix(1, 3), row.col3);
        EXPECT_EQ(g.textMatrix(1, 17), row.col17);
        for (int c : {4, 16, 20, 32})
            EXPECT_EQ(g.textMatrix(1, c), "") << c;
        EXPECT_EQ(g.textMatrix(32, 0), "23E0");
        EXPECT_EQ(v.b.link.sent().size(), 64);
        EXPECT_TRUE(v.b.link.dialogs.messages().isEmpty());
    }
}

// Nothing to read: no card, no answer, or no page of the memory.
TEST(ReadEEPresets, NothingRead) {
    const struct {
        const char* name;
        std::optional<QString> answer;
        bool connected;
        bool opens;
        QStringList messages;
    } table[] = {
        {"no card", QString("&H20"), false, true, {}},
        {"cancel", std::nullopt, true, false, {}},
        {"empty", QString(""), true, false, {}},
        {"beyond the memory", QString("&H100"), true, false, {"Enter a page from &H00 to &HFF."}},
        {"negative", QString("-1"), true, false, {"Enter a page from &H00 to &HFF."}},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        Viewer v;
        if (!row.connected) v.b.frm().cmdDisconnect.click();
        FrmReadEEPresets* f = v.open(row.answer);
        EXPECT_TRUE(v.b.link.sent().isEmpty());
        EXPECT_EQ(v.b.link.dialogs.messages(), row.messages);
        EXPECT_EQ(f != nullptr, row.opens);
        if (f) {
            EXPECT_EQ(f->grTable.rows(), 1);
            EXPECT_EQ(f->grTable.textMatrix(0, 32), "1F");
        }
        EXPECT_TRUE(v.b.frm().enabled());
        EXPECT_EQ(v.b.frm().mnuReadAutopresets.enabled(), !row.opens);
    }
}

// The designed widths, 750 and 400 twips (50 and 26.7 pixels), grow with the window beyond the
// 903 pixels they fill, less 40 of frame and scroll bar.
TEST(ReadEEPresets, ColumnsFollowTheWindowWidth) {
    const struct {
        int width, address, cell;
    } table[] = {{600, 50, 27}, {943, 50, 27}, {1100, 59, 31}, {1847, 100, 53}};
    Viewer v;
    FrmReadEEPresets* f = v.open(QString("&H20"));
    ASSERT_NE(f, nullptr);
    for (const auto& row : table) {
        SCOPED_TRACE(row.width);
        f->setWidth(row.width);
        EXPECT_EQ(f->grTable.colWidth(0), row.address);
        for (int c : {1, 17, 32})
            EXPECT_EQ(f->grTable.colWidth(c), row.cell);
    }
}
