// Running INSERT INTO, UPDATE and DELETE.
#pragma once

#include <cstddef>

#include <jet/database.h>

#include "syntax/action.h"

namespace quardele::sql {

// Each finds all rows and values before it changes the first row, and returns the number of rows changed. To
// be called within a step: an error may come when some rows are changed already. Trees are used up.

/// Where an action runs.
struct ActionPlace {
    jet::Database& database;
    bool isPart = false;  ///< of a larger step, which the action must not leave: 3251 for linked tables
};

[[nodiscard]] std::size_t RunInsert(const ActionPlace& place, InsertAction insert);
/// Rows of a join are changed in those tables whose rows stand once at most in it; 3073 for others.
[[nodiscard]] std::size_t RunUpdate(const ActionPlace& place, UpdateAction update);
[[nodiscard]] std::size_t RunDelete(const ActionPlace& place, DeleteAction remove);

}  // namespace quardele::sql
