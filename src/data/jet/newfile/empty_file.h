// A data file from nothing: its header, its map of free pages, and the system tables.
#pragma once

#include "file/os_file.h"

namespace quardele::jet {

/// Writes a data file without tables into a file that is empty. The identities of accounts in a catalogue are
/// hidden behind a mask that follows, in an unknown way, from the file's date of creation; so all files share
/// one known date, and the identities that belong to it.
void WriteEmptyFile(OsFile& file);

}  // namespace quardele::jet
