// Running INSERT INTO, UPDATE and DELETE.
#pragma once

#include <cstddef>

#include <jet/database.h>

#include "syntax/action.h"

namespace quardele::sql {

// Each finds all rows and values before it changes the first row, and returns the number of rows changed. To
// be called within a step: an error may come when some rows are changed already. Trees are used up.

[[nodiscard]] std::size_t RunInsert(jet::Database& database, InsertAction insert);
/// Rows of a join are changed in those tables whose rows stand once at most in it; 3073 for others.
[[nodiscard]] std::size_t RunUpdate(jet::Database& database, UpdateAction update);
[[nodiscard]] std::size_t RunDelete(jet::Database& database, DeleteAction remove);

}  // namespace quardele::sql
