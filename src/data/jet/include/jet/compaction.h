// Rewriting a data file without what has become useless in it.
#pragma once

#include <filesystem>
#include <functional>

namespace quardele::jet {

/// Called now and then with the part of the work that is done, from 0 to 1.
using CompactionProgress = std::function<void(double done)>;

/// Copies an Access 2000-2003 file into a new one, which appears under its name when it is complete. `source`
/// is opened exclusively and not changed.
///
/// Kept exactly: every table, those of Access itself included, with its columns, rules, other properties,
/// indexes, relationships and the state of its AutoNumbers; every row with the bytes of its values; links to
/// other files, queries, accounts and rights; the header, so that the file keeps its date and collation. Rows
/// come in the order in which they lay. Gone are deleted rows, free pages, and pages that belonged to
/// nothing; indexes are built anew. Forms, reports and macros of Access are rows of its own tables and come
/// along; but what those rows say of other tables by number (groups of the navigation pane) is not
/// translated, and tables get new numbers.
///
/// Throws 3204 when something of the target's name exists (the source itself, for one) or a journal of it,
/// 3045 or 3356 when somebody has the source open, 3027 for an Access 97 file or a target that cannot be
/// written, 3044, 3024, 3026, 3343 when the source is damaged. On an error there is no target.
void Compact(const std::filesystem::path& source, const std::filesystem::path& target,
             const CompactionProgress& progress = {});

}  // namespace quardele::jet
