#pragma once

#include <QByteArray>

#include <functional>

namespace velmorak {

class Forms;
struct AppContext;

// The shared progress window, by name: shown, its bar (ProgBar) set, and closed. Each does
// nothing when the window is not built in.
void showWait(Forms& forms);
void waitProgress(Forms& forms, int value, int max = -1);
void closeWait(Forms& forms);

// Writes the first `count` slices of an image into the card's monitor memory: before slice k
// (from 1) `before(k)` runs, then ChipBase takes the start, "WRM2" carries the slice, events are
// pumped and the card gets its pause; `after(k)` then says whether to go on (false when the
// link was lost). Returns false when stopped so.
bool writeMonitorSlices(AppContext& c, const QByteArray& image, int count,
                        const std::function<void(int)>& before,
                        const std::function<bool(int)>& after);

} // namespace velmorak
