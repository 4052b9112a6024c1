// What every command gets, and how it comes to its file.
#pragma once

#include <memory>

#include <jet/database.h>

#include "language.h"
#include "options.h"
#include "output.h"

namespace quardele::mdb {

struct Session {
    Language language;
    Output& out;
};

/// The option of all commands that write to a file that others may have open.
inline constexpr const char* kExclusive = "--exclusive";

/// Opens the data file that the first operand names.
[[nodiscard]] std::shared_ptr<jet::Database> OpenFile(const Arguments& arguments,
                                                      jet::OpenMode mode = jet::OpenMode::ReadOnly);
/// How a command that writes opens its file.
[[nodiscard]] jet::OpenMode WritingMode(const Arguments& arguments);
/// Opens the table that the second operand names.
[[nodiscard]] std::shared_ptr<jet::Table> OpenTable(jet::Database& database, const Arguments& arguments);

}  // namespace quardele::mdb
