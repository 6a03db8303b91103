#include "forms/Form.h"

#include <gtest/gtest.h>

#include <functional>

using namespace velmorak;

namespace {

struct WriteCase {
    const char* name;
    // Adds the control and counts its event in `fired`; returns a write that changes the value
    // the first time and repeats it the second.
    std::function<std::function<void()>(Form&, int& fired)> arm;
};

template <class T> WriteCase fires(const char* name, Event<> T::*ev, void (*write)(T&)) {
    return {name, [ev, write](Form& f, int& n) -> std::function<void()> {
                T& c = f.add<T>("c");
                if constexpr (requires { c.addItem("a"); }) c.addItem("a");
                (c.*ev).connect([&n] { ++n; });
                return [&c, write] { write(c); };
            }};
}

template <class T> WriteCase notifies(const char* name, void (*write)(T&)) {
    return {name, [write](Form& f, int& n) -> std::function<void()> {
                T& c = f.add<T>("c");
                c.onPropertyChanged.connect([&n](Prop) { ++n; });
                return [&c, write] { write(c); };
            }};
}

const WriteCase writeCases[] = {
    fires<TextBox>("TextBox.Text", &TextBox::onChange, [](TextBox& c) { c.setText("abc"); }),
    fires<CheckBox>("CheckBox.Value", &CheckBox::onClick, [](CheckBox& c) { c.setValue(1); }),
    fires<OptionButton>("OptionButton.Value", &OptionButton::onClick,
                        [](OptionButton& c) { c.setValue(true); }),
    fires<ScrollBar>("ScrollBar.Value", &ScrollBar::onChange, [](ScrollBar& c) { c.setValue(7); }),
    fires<ComboBox>("ComboBox.ListIndex", &ComboBox::onClick,
                    [](ComboBox& c) { c.setListIndex(0); }),
    fires<ComboBox>("ComboBox.Text", &ComboBox::onChange, [](ComboBox& c) { c.setText("typed"); }),
    fires<ListBox>("ListBox.ListIndex", &ListBox::onClick, [](ListBox& c) { c.setListIndex(0); }),
    notifies<Label>("Label.Caption", [](Label& c) { c.setCaption("x"); }),
    notifies<Button>("Button.Caption", [](Button& c) { c.setCaption("&Go"); }),
    notifies<MenuItem>("MenuItem.Checked", [](MenuItem& c) { c.setChecked(true); }),
    notifies<Grid>("Grid.TextMatrix", [](Grid& c) { c.setTextMatrix(1, 1, "x"); }),
    notifies<ProgressBar>("ProgressBar.Value", [](ProgressBar& c) { c.setValue(40); }),
    notifies<StatusBar>("StatusBar panel", [](StatusBar& c) { c.setPanelText(2, "Ready"); }),
    notifies<Frame>("Control.Enabled", [](Frame& c) { c.setEnabled(false); }),
    notifies<PictureBox>("PictureBox.Picture", [](PictureBox& c) { c.setPicture("/x.bmp"); }),
};

} // namespace

TEST(ControlEvents, FireOncePerChangeAndNotOnEqualWrites) {
    for (const auto& tc : writeCases) {
        SCOPED_TRACE(tc.name);
        Form f("frmT");
        int fired = 0;
        const auto write = tc.arm(f, fired);
        write();
        EXPECT_EQ(fired, 1);
        write();
        EXPECT_EQ(fired, 1);
    }
}

TEST(ControlEvents, NestedHandlersRunInsideTheWriteInOrder) {
    Form f("frmT");
    auto& master = f.add<ScrollBar>("HScrlMaster");
    auto& channel = f.add<ScrollBar>("HScrlChannel");
    auto& txt = f.add<TextBox>("txtRed");
    QStringList log;
    master.onChange.connect([&] {
        log << "master in";
        channel.setValue(master.value() * 2);
        master.setValue(master.value()); // an equal write fires nothing
        log << "master out";
    });
    channel.onChange.connect([&] {
        log << QStringLiteral("channel %1").arg(channel.value());
        txt.setText(QString::number(channel.value() / 2));
    });
    txt.onChange.connect([&] { log << "txt " + txt.text(); });
    channel.onPropertyChanged.connect([&](Prop p) {
        if (p == Prop::Value) log << "channel shown";
    });

    master.setValue(10);
    EXPECT_EQ(log,
              QStringList({"master in", "channel shown", "channel 20", "txt 10", "master out"}));
}

TEST(ScrollBarRange, ValueOutsideRangeThrows380AndKeepsValue) {
    struct Case {
        int min, max, value;
        bool ok;
    };
    const Case cases[] = {
        {0, 255, 0, true},     {0, 255, 255, true}, {0, 255, 256, false}, {0, 255, -1, false},
        {255, 0, 128, true},   {255, 0, 255, true}, {255, 0, 0, true},    {255, 0, 256, false},
        {255, 0, -1, false},   {5, 5, 5, true},     {5, 5, 4, false},     {-10, -20, -15, true},
        {-10, -20, -9, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(
            QStringLiteral("%1..%2 = %3").arg(c.min).arg(c.max).arg(c.value).toStdString());
        ScrollBar s("HScrl");
        s.setMin(c.min);
        s.setMax(c.max);
        int before = s.value();
        int changes = 0;
        s.onChange.connect([&] { ++changes; });
        if (c.ok) {
            EXPECT_NO_THROW(s.setValue(c.value));
            EXPECT_EQ(s.value(), c.value);
        } else {
            try {
                s.setValue(c.value);
                ADD_FAILURE() << "no error";
            } catch (const InvalidPropertyValue& e) {
                EXPECT_EQ(e.number(), 380);
            }
            EXPECT_EQ(s.value(), before);
            EXPECT_EQ(changes, 0);
        }
    }
}

TEST(ScrollBarRange, NarrowingTheRangePullsTheValueInAndFiresChange) {
    ScrollBar s("HScrl");
    s.setMax(100);
    s.setValue(80);
    int changes = 0;
    s.onChange.connect([&] { ++changes; });
    s.setMax(50);
    EXPECT_EQ(s.value(), 50);
    EXPECT_EQ(changes, 1);
    s.setMin(60); // reversed bar 60..50, value stays inside
    EXPECT_EQ(s.value(), 50);
    EXPECT_EQ(changes, 1);
}

TEST(ScrollBarUser, StepsGoTowardsMaxAndClamp) {
    struct Case {
        int min, max, start, steps, small, expected;
    };
    const Case cases[] = {
        {0, 10, 5, 1, 2, 7}, {0, 10, 5, 3, 2, 10}, {0, 10, 5, -4, 2, 0},
        {10, 0, 5, 1, 2, 3}, {10, 0, 5, -1, 2, 7}, {10, 0, 5, 9, 1, 0},
    };
    for (const auto& c : cases) {
        ScrollBar s("HScrl");
        s.setMin(c.min);
        s.setMax(c.max);
        s.setValue(c.start);
        s.setSmallChange(c.small);
        s.stepSmall(c.steps);
        EXPECT_EQ(s.value(), c.expected) << c.min << ".." << c.max << " steps " << c.steps;
    }
}

TEST(ScrollBarUser, DragFiresScrollThenOneChangeAtTheEnd) {
    ScrollBar s("HScrl");
    s.setMax(100);
    QStringList log;
    s.onScroll.connect([&] { log << QStringLiteral("scroll %1").arg(s.value()); });
    s.onChange.connect([&] { log << QStringLiteral("change %1").arg(s.value()); });
    s.beginDrag();
    s.dragTo(3);
    s.dragTo(3);
    s.dragTo(500); // clamped
    s.endDrag();
    EXPECT_EQ(log, QStringList({"scroll 3", "scroll 100", "change 100"}));

    log.clear();
    s.beginDrag();
    s.dragTo(50);
    s.dragTo(100);
    s.endDrag();
    EXPECT_EQ(log, QStringList({"scroll 50", "scroll 100"})) << "back where it began: no Change";
}

TEST(TextBoxKeys, KeyPressCanSwallowTransformAndLimitTyping) {
    struct Case {
        const char* name;
        bool digitsOnly, upper, locked;
        int maxLength;
        QString keys;
        QString text;
        int changes;
    };
    const Case cases[] = {
        {"plain", false, false, false, 0, "ab", "ab", 2},
        {"digits and backspace", true, false, false, 0, "1a2\b3", "13", 4},
        {"transformed", false, true, false, 0, "ab", "AB", 2},
        {"max length", false, false, false, 2, "abc", "ab", 2},
        {"locked", false, false, true, 0, "ab", "", 0},
        {"return types nothing", false, false, false, 0, "a\r", "a", 1},
        {"backspace on empty", false, false, false, 0, "\b", "", 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TextBox t("txtAddr");
        t.setLocked(c.locked);
        t.setMaxLength(c.maxLength);
        int presses = 0, changes = 0;
        t.onKeyPress.connect([&](int& k) {
            ++presses;
            if (c.digitsOnly && !(k >= '0' && k <= '9') && k != 8) k = 0;
            if (c.upper && k >= 'a' && k <= 'z') k -= 32;
        });
        t.onChange.connect([&] { ++changes; });
        t.type(c.keys);
        EXPECT_EQ(t.text(), c.text);
        EXPECT_EQ(presses, c.keys.size());
        EXPECT_EQ(changes, c.changes);
    }
}

TEST(TextBoxKeys, TypingReplacesTheSelection) {
    TextBox t("txt");
    t.setText("hello");
    t.setSelStart(1);
    t.setSelLength(3);
    EXPECT_EQ(t.selText(), "ell");
    t.type("a");
    EXPECT_EQ(t.text(), "hao");
    EXPECT_EQ(t.selStart(), 2);
    int k = 8;
    t.keyPress(k);
    EXPECT_EQ(t.text(), "ho");
}

TEST(ListControls, ComboBoxIndexTextAndClick) {
    ComboBox c("cboPresets");
    c.setStyle(ComboBox::Style::DropdownList);
    int clicks = 0, changes = 0;
    c.onClick.connect([&] { ++clicks; });
    c.onChange.connect([&] { ++changes; });
    c.addItem("b");
    c.addItem("c");
    c.setListIndex(1);
    EXPECT_EQ(c.text(), "c");
    c.addItem("a", 0); // the current item moves along
    EXPECT_EQ(c.listIndex(), 2);
    EXPECT_EQ(c.text(), "c");
    EXPECT_EQ(clicks, 1);
    c.setText("b");
    EXPECT_EQ(c.listIndex(), 1);
    EXPECT_EQ(clicks, 2);
    try {
        c.setText("nothing");
        ADD_FAILURE();
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.number(), 383);
    }
    EXPECT_THROW(c.setListIndex(3), InvalidPropertyValue);
    EXPECT_THROW(c.list(3), RunTimeError);
    c.removeItem(1);
    EXPECT_EQ(c.listIndex(), -1);
    EXPECT_EQ(c.text(), "");
    EXPECT_EQ(c.listCount(), 2);
    EXPECT_EQ(changes, 0);

    ComboBox e("cboEdit");
    e.addItem("x");
    e.onClick.connect([&] { ++clicks; });
    e.setText("x"); // an editable box points at the equal item without Click
    EXPECT_EQ(e.listIndex(), 0);
    e.userEdit("xy");
    EXPECT_EQ(e.listIndex(), -1);
    EXPECT_EQ(clicks, 2);
    e.clear();
    EXPECT_EQ(e.text(), "");
    EXPECT_EQ(e.listCount(), 0);
}

TEST(ListControls, ListBoxSelectionFollowsIndex) {
    ListBox l("lstPorts");
    int clicks = 0;
    l.onClick.connect([&] { ++clicks; });
    for (auto s : {"COM1", "COM3", "COM4"})
        l.addItem(s);
    l.setSelected(1, true);
    EXPECT_TRUE(l.selected(1));
    EXPECT_FALSE(l.selected(0));
    EXPECT_EQ(l.text(), "COM3");
    l.removeItem(0);
    EXPECT_EQ(l.listIndex(), 0);
    l.setSelected(0, false);
    EXPECT_EQ(l.listIndex(), -1);
    EXPECT_EQ(clicks, 2);
    l.setItemData(1, 42);
    EXPECT_EQ(l.itemData(1), 42);
}

TEST(ControlArrays, SparseIndexesLoadUnloadAndOrder) {
    Form f("frmT");
    int added = 0;
    f.onControlAdded.connect([&](Control&) { ++added; });
    auto& bits = f.addArray<TextBox>("txtBit", {7, 1, 3});
    std::vector<int> seen;
    for (auto& t : bits)
        seen.push_back(t.index());
    EXPECT_EQ(seen, (std::vector<int>{1, 3, 7}));
    EXPECT_EQ(bits.lbound(), 1);
    EXPECT_EQ(bits.ubound(), 7);
    EXPECT_EQ(added, 3);
    try {
        bits(2);
        ADD_FAILURE();
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.number(), 340);
    }
    bits.load(2).setText("two");
    EXPECT_EQ(f.control<TextBox>("txtBit(2)").text(), "two");
    EXPECT_EQ(bits(2).fullName(), "txtBit(2)");
    EXPECT_THROW(bits.load(3), RunTimeError);
    bits.unload(3);
    EXPECT_EQ(bits.indexes(), (std::vector<int>{1, 2, 7}));
    EXPECT_EQ(f.find("txtBit(3)"), nullptr);
    EXPECT_EQ(f.controls().size(), 3u);
    EXPECT_THROW(f.control<Label>("txtBit(2)"), RunTimeError);
}

TEST(Buttons, UserClicksOnlyWhenEnabledAndVisible) {
    struct Case {
        bool enabled, visible;
        int expected;
    };
    for (auto c : {Case{true, true, 1}, Case{false, true, 0}, Case{true, false, 0}}) {
        Button b("cmdGo");
        MenuItem parent("mnuFile"), item("mnuOpen");
        parent.addChild(item);
        CheckBox chk("chk");
        int clicks = 0;
        b.onClick.connect([&] { ++clicks; });
        item.onClick.connect([&] { ++clicks; });
        b.setEnabled(c.enabled);
        b.setVisible(c.visible);
        parent.setEnabled(c.enabled);
        parent.setVisible(c.visible);
        chk.setEnabled(c.enabled);
        chk.setVisible(c.visible);
        b.click();
        item.click();
        chk.click();
        EXPECT_EQ(clicks, 2 * c.expected);
        EXPECT_EQ(chk.value(), c.expected);
        b.fireClick();
        EXPECT_EQ(clicks, 2 * c.expected + 1);
    }
}

TEST(Buttons, OptionButtonsAreExclusiveWithinTheirContainer) {
    Form f("frmT");
    auto& a = f.add<OptionButton>("optA");
    auto& b = f.add<OptionButton>("optB");
    auto& other = f.add<OptionButton>("optOther");
    other.container = "fraOther";
    int clicks = 0;
    for (auto* o : {&a, &b, &other})
        o->onClick.connect([&] { ++clicks; });
    a.setValue(true);
    other.setValue(true);
    b.click();
    EXPECT_FALSE(a.value());
    EXPECT_TRUE(b.value());
    EXPECT_TRUE(other.value());
    EXPECT_EQ(clicks, 3);
}

TEST(Buttons, MenuCaptionWithoutAccelerator) {
    const std::pair<QString, QString> cases[] = {
        {"&File", "File"}, {"Save &As...", "Save As..."}, {"R&&D", "R&D"}, {"Plain", "Plain"}};
    for (const auto& [caption, plain] : cases) {
        MenuItem m("mnu");
        m.setCaption(caption);
        EXPECT_EQ(m.plainCaption(), plain);
    }
}

TEST(GridModel, CellsBoundsAndClick) {
    Grid g("FlexGr");
    g.setRows(3);
    g.setCols(4);
    g.setTextMatrix(2, 3, "x");
    EXPECT_EQ(g.textMatrix(2, 3), "x");
    EXPECT_THROW(g.textMatrix(3, 0), RunTimeError);
    EXPECT_THROW(g.setCol(4), RunTimeError);
    int clicks = 0;
    g.onClick.connect([&] {
        ++clicks;
        EXPECT_EQ(g.text(), "x");
    });
    g.userClick(2, 3);
    EXPECT_EQ(clicks, 1);
    g.setRows(2); // shrinking moves the current cell in
    EXPECT_EQ(g.row(), 1);
    g.setRows(3);
    EXPECT_EQ(g.textMatrix(2, 3), "") << "dropped rows come back empty";
}
