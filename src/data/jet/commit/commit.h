// Writing the pages of a step to the file.
#pragma once

#include <span>

#include "commit/change_mark.h"
#include "file/page.h"

namespace quardele::jet {

class Engine;

/// Writes pages, in ascending order of their numbers, so that after a crash at any moment either all or none
/// of them are in the file; everything is on the disk when it returns. The caller holds the writer's lock and
/// the engine's cache the pages as they were. Gives the file's mark as it has left it. On an error the old
/// pages are put back before it is thrown on; should that fail as well, the journal stays for
/// RecoverFromJournal. Throws 3260 when another program keeps one of the pages or is writing, 3197 when it
/// has changed one.
ChangeMark CommitPages(Engine& engine, std::span<const PagePtr> pages);

}  // namespace quardele::jet
