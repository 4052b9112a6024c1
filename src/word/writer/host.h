// What the program offers to the plug-in.
#pragma once

#include <filesystem>

#include <automation/bridge_abi.h>
#include <basic/text.h>

namespace quardele::word::writer {

void SetHost(const automation::abi::Host* host);

/// The machine's path of a Windows path, by the program's own drives. Throws RuntimeError 76.
[[nodiscard]] std::filesystem::path NativePath(basic::TextView windowsPath);

}  // namespace quardele::word::writer
