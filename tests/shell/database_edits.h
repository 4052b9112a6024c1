// Changes that tests make to the files of an installation before the program starts.
#pragma once

#include <filesystem>

#include <basic/variant.h>

namespace quardele::tests {

/// Sets a field of the row of a table where another field has a value; the file is given by its Windows path.
/// Fails by an exception when there is no such row.
void SetField(basic::TextView file, basic::TextView table, basic::TextView condition, basic::TextView field,
              const basic::Variant& value);

/// Replaces every occurrence of a text of the same length inside a file (names stand there in UTF-16).
void ReplaceInFile(const std::filesystem::path& file, basic::TextView what, basic::TextView with);

enum class Damage { Empty, Truncated, Foreign, PasswordProtected };
/// Puts something else in the place of a database file.
void SpoilFile(const std::filesystem::path& file, Damage damage);

}  // namespace quardele::tests
