// What the columns of a new row start with.
#pragma once

#include <vector>

#include <basic/variant.h>
#include <jet/database.h>
#include <jet/table.h>

namespace quardele::sql {

/// The value of a default expression (jet::Column::defaultValue) now, Null when it is empty. Throws the
/// errors of the expression. The database must be held by a shared pointer.
[[nodiscard]] basic::Variant DefaultValue(jet::Database& database, basic::TextView expression);

/// Adds to the values of a new row of a table the default of every column that has no value there. Throws
/// like DefaultValue.
void AddDefaults(jet::Database& database, const jet::Table& table, std::vector<jet::ColumnChange>& row);

}  // namespace quardele::sql
