#pragma once

namespace velmorak {

class TextBox;
struct AppContext;

// Import Monitor File: a file of 128 or 256 bytes into the card's monitor memory, in slices,
// with progress on the shared progress window and txtMsg of the main window. No read-back.
void importMonitorFile(AppContext& c, TextBox& txtMsg);

} // namespace velmorak
