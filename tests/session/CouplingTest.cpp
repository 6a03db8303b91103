// The contrast and brightness masters over the gain and offset registers, and the channel
// sliders under them, as scenarios: each move is followed by the registers, both master
// positions and the writes to the chip it caused.
#include "SessionBench.h"

#include "registers/FrmAD9888.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

using namespace velmorak;
using velmorak::test::SessionBench;

namespace {

using Regs = std::array<int, 6>; // gains 08H-0AH, offsets 0BH-0DH
using Writes = std::vector<std::pair<int, int>>;

struct Move {
    const char* bar;
    char kind; // 's' small steps, 'p' page steps, 'd' drag to, 'j' jump to, 'w' wait ms
    int n;
    Regs regs;
    int contrast, brightness;
    Writes writes; // with load on change
};

struct Scenario {
    const char* name;
    Regs start;
    bool loadOnChange;
    int contrast0, brightness0;
    std::vector<Move> moves;
};

void perform(SessionBench& b, FrmAD9888& f, const Move& m) {
    if (m.kind == 'w') {
        b.link.host.sleep(m.n);
        b.session->forms.pollTimers();
        return;
    }
    ScrollBar& bar = f.control<ScrollBar>(m.bar);
    switch (m.kind) {
    case 's':
        bar.stepSmall(m.n);
        break;
    case 'p':
        bar.stepLarge(m.n);
        break;
    case 'd':
        bar.beginDrag();
        bar.dragTo(m.n);
        bar.endDrag();
        break;
    default:
        bar.userSetValue(m.n);
    }
}

Writes writesOf(const QStringList& sent) {
    Writes w;
    for (const QString& s : sent) {
        const QByteArray f = QByteArray::fromHex(s.toLatin1());
        if (f.startsWith("WREE") && f.size() == 7) w.emplace_back(quint8(f[5]), quint8(f[6]));
    }
    return w;
}

// clang-format off
const Scenario kScenarios[] = {
    {"brightness steps by two, a register at a time",
     {100, 100, 100, 128, 128, 128}, true, 100, 128,
     {{"HScrlBritnes", 's', 1, {100, 100, 100, 130, 130, 130}, 100, 130, {{0x0B, 130}, {0x0C, 130}, {0x0D, 130}}},
      {"HScrlBritnes", 's', -1, {100, 100, 100, 128, 128, 128}, 100, 128, {{0x0B, 128}, {0x0C, 128}, {0x0D, 128}}}}},
    {"an offset at 254 refuses the next step up",
     {50, 50, 50, 252, 100, 100}, false, 50, 100,
     {{"HScrlBritnes", 's', 1, {50, 50, 50, 254, 102, 102}, 50, 252, {}},
      {"HScrlBritnes", 's', 1, {50, 50, 50, 254, 102, 102}, 50, 252, {}}}},
    {"direction changes re-anchor; an offset at 0 refuses the step down",
     {50, 50, 50, 0, 50, 50}, false, 50, 0,
     {{"HScrlBritnes", 's', 1, {50, 50, 50, 2, 52, 52}, 50, 50, {}},
      {"HScrlBritnes", 's', -1, {50, 50, 50, 0, 50, 50}, 50, 2, {}},
      {"HScrlBritnes", 's', -1, {50, 50, 50, 0, 50, 50}, 50, 2, {}}}},
    {"a drag moves as it goes; a jump snaps to the highest of the last check",
     {50, 50, 50, 100, 100, 100}, false, 50, 100,
     {{"HScrlBritnes", 'd', 110, {50, 50, 50, 110, 110, 110}, 50, 110, {}},
      {"HScrlBritnes", 'j', 120, {50, 50, 50, 110, 110, 110}, 50, 100, {}}}},
    {"contrast: a page click snaps; after a step the snap's own change steps back",
     {128, 128, 128, 60, 60, 60}, false, 128, 60,
     {{"HScrlContrast", 'p', 1, {128, 128, 128, 60, 60, 60}, 128, 60, {}},
      {"HScrlContrast", 's', 1, {129, 129, 129, 60, 60, 60}, 129, 60, {}},
      {"HScrlContrast", 'p', 1, {128, 128, 128, 60, 60, 60}, 128, 60, {}}}},
    {"a gain at 255 leaves the slider displaced; a page down snaps to the lowest",
     {254, 100, 100, 60, 60, 60}, false, 100, 60,
     {{"HScrlContrast", 's', 1, {255, 101, 101, 60, 60, 60}, 254, 60, {}},
      {"HScrlContrast", 's', 1, {255, 101, 101, 60, 60, 60}, 255, 60, {}},
      {"HScrlContrast", 'p', -1, {255, 101, 101, 60, 60, 60}, 100, 60, {}}}},
    {"load on change: contrast steps within 100 ms are dropped",
     {128, 128, 128, 60, 60, 60}, true, 128, 60,
     {{"HScrlContrast", 's', 1, {129, 129, 129, 60, 60, 60}, 129, 60, {{0x08, 129}, {0x09, 129}, {0x0A, 129}}},
      {"HScrlContrast", 's', 1, {129, 129, 129, 60, 60, 60}, 130, 60, {}},
      {"", 'w', 150, {129, 129, 129, 60, 60, 60}, 130, 60, {}},
      {"HScrlContrast", 's', -1, {129, 129, 129, 60, 60, 60}, 129, 60, {}},
      {"", 'w', 150, {129, 129, 129, 60, 60, 60}, 129, 60, {}},
      {"HScrlContrast", 's', 1, {130, 130, 130, 60, 60, 60}, 130, 60, {{0x08, 130}, {0x09, 130}, {0x0A, 130}}}}},
    {"an offset channel re-anchors the master, which then moves all three",
     {100, 100, 100, 60, 80, 100}, true, 100, 60,
     {{"HScrlBrG", 's', 1, {100, 100, 100, 60, 82, 100}, 100, 102, {{0x0C, 82}}},
      {"HScrlBritnes", 's', -1, {100, 100, 100, 58, 80, 98}, 100, 60, {{0x0B, 58}, {0x0C, 80}, {0x0D, 98}}}}},
    {"dragged channels: the offset's master follows by the step, the gain's stays",
     {100, 100, 100, 60, 80, 100}, true, 100, 60,
     {{"HScrlBrB", 'd', 110, {100, 100, 100, 60, 80, 110}, 100, 70, {{0x0D, 110}, {0x0D, 110}}},
      {"HScrlCG", 'd', 105, {100, 105, 100, 60, 80, 110}, 100, 70, {{0x09, 105}, {0x09, 105}}}}},
    {"the red gain's change is plain, its scroll re-anchors",
     {100, 120, 140, 60, 60, 60}, false, 100, 60,
     {{"HScrlCR", 's', 1, {101, 120, 140, 60, 60, 60}, 100, 60, {}},
      {"HScrlCG", 's', 1, {101, 121, 140, 60, 60, 60}, 140, 60, {}},
      {"HScrlCR", 'd', 110, {110, 121, 140, 60, 60, 60}, 140, 60, {}},
      // Not ready: this change only re-anchors on the lowest gain.
      {"HScrlContrast", 's', -1, {110, 121, 140, 60, 60, 60}, 110, 60, {}}}},
};
// clang-format on

} // namespace

TEST(Coupling, Scenarios) {
    for (const Scenario& s : kScenarios) {
        SCOPED_TRACE(s.name);
        SessionBench b;
        for (int k = 0; k < 6; ++k)
            b.link.setReg(32, 0x08 + k, s.start[size_t(k)]);
        ASSERT_TRUE(b.start());
        auto& f = dynamic_cast<FrmAD9888&>(b.session->forms.show("frmAD9888"));
        EXPECT_EQ(f.HScrlContrast.value(), s.contrast0);
        EXPECT_EQ(f.HScrlBritnes.value(), s.brightness0);
        if (s.loadOnChange) f.ChkChange.click();
        int step = 0;
        for (const Move& m : s.moves) {
            SCOPED_TRACE(testing::Message()
                         << "move " << ++step << " " << m.bar << " " << m.kind << m.n);
            b.link.clearTrace();
            perform(b, f, m);
            Regs regs{};
            for (int k = 0; k < 6; ++k)
                regs[size_t(k)] = f.byteOf(9 + k);
            EXPECT_EQ(regs, m.regs);
            EXPECT_EQ(f.HScrlContrast.value(), m.contrast);
            EXPECT_EQ(f.HScrlBritnes.value(), m.brightness);
            EXPECT_EQ(writesOf(b.link.sent()), m.writes);
            // Channel sliders and texts follow their registers.
            ScrollBar* bars[] = {&f.HScrlCR,  &f.HScrlCG,  &f.HScrlCB,
                                 &f.HScrlBrR, &f.HScrlBrG, &f.HScrlBrB};
            for (int k = 0; k < 6; ++k)
                EXPECT_EQ(bars[k]->value(), regs[size_t(k)]) << "channel " << k;
        }
        EXPECT_EQ(f.txtRed.text(), QString::number(f.byteOf(12) / 2));
        EXPECT_EQ(f.txtBlueC.text(), QString::number(f.byteOf(11)));
    }
}
