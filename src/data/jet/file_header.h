// Page 0: what the file is, and whether it may be read.
#pragma once

#include <basic/text.h>

#include "format.h"
#include "os_file.h"

namespace quardele::jet {

/// Checks the header of a file and gives the layout of its version. Throws 3343 for a file that is empty,
/// cut off, of another kind or of a newer version, 3031 when it asks for a password, 3251 when its pages
/// are encrypted or its texts are in a code page other than 1252.
[[nodiscard]] const Format& ReadFileHeader(const OsFile& file);

}  // namespace quardele::jet
