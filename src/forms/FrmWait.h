#pragma once

#include "forms/Form.h"

namespace velmorak {

class Forms;

// A small window with a progress bar, shown while a long job keeps the thread busy. It holds
// no logic: the job sets the bar and asks for a repaint before each pause.
class FrmWait : public Form {
  public:
    static constexpr const char* kName = "frmWait";
    FrmWait();

    ProgressBar& ProgBar = add<ProgressBar>("ProgBar");

    // Sets the bar (held within its range) and repaints the window at once.
    void progress(int value);

    // Shows the progress window centred over the window the job belongs to.
    static FrmWait& showOver(Forms& forms, const Form& owner);
    // The open progress window; nullptr when none is open.
    static FrmWait* find(Forms& forms);
};

} // namespace velmorak
