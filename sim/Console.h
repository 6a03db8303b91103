#pragma once

#include "sim/VirtualCard.h"

#include <QString>

namespace velmorak::sim {

// A command typed at a running virtual card (velmorak-cardsim --console), one a line:
//   silent on|off        short N|off        delay MS        unplug
//   source WxHxR|none    monitor on|off     reg CHIP REG [VALUE]     status     help
// Returns the answer to print; an unknown or malformed line answers with the usage.
QString consoleCommand(VirtualCard& card, const QString& line);

extern const char* const kConsoleHelp;

} // namespace velmorak::sim
