#pragma once

#include <QByteArray>

namespace velmorak {

class FrmStart;
class Session;

// The card's own table of resolutions in its data memory: loading it from the database, reading
// its version, and opening the memory viewer. The main window's menu items run these.
class AutoPresets {
  public:
    static constexpr int kDevice = 166;
    static constexpr int kCount = 66;
    static constexpr int kFirstHigh = 32; // group i starts at (32 + 2i) * 256
    static constexpr int kSlotSize = 32;
    static constexpr int kVersionHigh = 24;
    static constexpr int kVersionLow = 224;
    static constexpr int kMaxSlotIndex = 15;
    static const char* const kVersionRecord; // "UVersion 2.06 01/23/2009"

    AutoPresets(Session& s, FrmStart& f) : s_(s), f_(f) {}

    // mnuAutoPresets: writes every row of tblDefPresetsQ to its slot, then the version record.
    void load();
    // mnuDBversion
    void showVersion();
    // mnuReadAutopresets: asks for the page and opens the viewer.
    void readMemory();

  private:
    enum class Outcome { Loaded, Incompatible, NotWritten, Gone };
    Outcome writeTable();
    Outcome writeGroup(int i);
    Outcome readBack(int nHigh, int nLow, const QByteArray& s, int compared);
    void progress(int value);
    void enableAgain();
    void message(const char* text);

    Session& s_;
    FrmStart& f_;
};

} // namespace velmorak
