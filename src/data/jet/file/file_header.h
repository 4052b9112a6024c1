// Page 0: what the file is, and whether it may be read.
#pragma once

#include <basic/text.h>

#include "bytes.h"
#include "file/os_file.h"
#include "format.h"

namespace quardele::jet {

/// The layout of the file's version. Throws 3343 for a file that is empty, of another kind or of a newer
/// version.
[[nodiscard]] const Format& IdentifyFormat(const OsFile& file);

/// Whether the file may be read. Throws 3343 when it is cut off, 3031 when it asks for a password, 3251 when
/// its pages are encrypted or its texts are in a code page other than 1252.
void CheckHeader(const OsFile& file, const Format& format);

/// The header page of a new Access 2000-2003 file.
[[nodiscard]] ByteString NewHeaderPage();
/// Sets the commit slots of such a page to those of a new file.
void StartSlotsAnew(ByteString& page);

}  // namespace quardele::jet
