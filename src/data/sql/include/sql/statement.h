// Action statements of the Access dialect: INSERT INTO, UPDATE, DELETE, CREATE TABLE, CREATE INDEX, ALTER
// TABLE and DROP TABLE, alone or many in a script. One thread.
//
// Errors are basic::RuntimeError with the engine's numbers and a French text that names the place: 3134
// syntax of INSERT INTO, 3144 UPDATE, 3128 DELETE, 3290 CREATE TABLE, 3289 a constraint, 3292 a column's
// definition, 3291 CREATE INDEX, 3293 ALTER TABLE, 3295 DROP and the like, 3129 no action at all, 3065 a
// SELECT, 3127 unknown field of INSERT INTO, 3346 more or fewer values than fields, 3063 a field given twice,
// 3073 rows that cannot be changed, 3061 unknown names in expressions, 3078 unknown table, 3251 what is known
// but not made; those of query.h for the queries within, and those of jet::Table and jet::Database for the
// changes.
#pragma once

#include <cstddef>
#include <vector>

#include <jet/database.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;

struct ExecuteResult {
    /// Rows that were added, changed or deleted; 0 for a change of structure.
    std::size_t rows = 0;
};

/// Runs one action statement; a trailing ";" is allowed. It is one atomic step, on disk when the call
/// returns, or a part of the step that is open (jet::Database::Begin): on an error nothing of it has
/// happened. What a change could alter is read before the first row is changed. The database must be held by
/// a shared pointer.
///
/// A linked table lies in a file that the step of this one does not reach: changing it within an open step
/// throws 3251. One UPDATE of tables of several files is a step in each of them, written one after the other.
ExecuteResult Execute(jet::Database& database, TextView statement);

/// A statement of a script.
struct ScriptStatement {
    TextView text;         ///< within the script, without blanks around and without its ";"
    std::size_t line = 1;  ///< where it starts, counted from 1
};

/// Cuts a script at each ";" that stands outside texts, names in brackets and dates; empty statements are
/// left out, and comments: in front of a statement, from two hyphens to the end of the line. The script must
/// outlive the result. Never fails: what is no statement fails when it is run.
[[nodiscard]] std::vector<ScriptStatement> SplitScript(TextView script);

}  // namespace quardele::sql
