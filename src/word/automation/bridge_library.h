// Finding and loading the bridge plug-in.
#pragma once

#include <automation/bridge_abi.h>

namespace quardele::automation {

/// The plug-in, loaded at the first call and kept to the end of the process. Looked for where the environment
/// variable QUARDELE_WRITER_BRIDGE says, else beside the program and in the folder ../lib of it. Throws
/// RuntimeError 429 when it is not there, cannot be loaded or speaks another version; a later call tries
/// again.
[[nodiscard]] const abi::Bridge& LoadBridge();

}  // namespace quardele::automation
