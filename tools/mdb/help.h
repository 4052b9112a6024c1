// The program's description of itself.
#pragma once

#include "command.h"

namespace quardele::mdb {

void ShowHelp(Session& session);
void ShowHelp(const Command& command, Session& session);
/// "Usage: mdb dump FILE TABLE"
[[nodiscard]] std::string UsageLine(const Command& command, Language language);

}  // namespace quardele::mdb
