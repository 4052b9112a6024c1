// What the bytes of a bookmark mean.
#pragma once

#include <cstddef>
#include <cstdint>

#include <dao/recordset.h>
#include <jet/types.h>

namespace quardele::dao {

/// A number for a recordset on a table or for the rows that a statement has just brought, which no other one
/// of this program gets.
[[nodiscard]] std::uint64_t NextRun();

/// A row of a table, by its identity in the file and the number of the recordset.
[[nodiscard]] Bookmark BookmarkOf(std::uint64_t run, jet::RowId row);
/// Throws RuntimeError 3159 when the bookmark is of another kind or of another recordset.
[[nodiscard]] jet::RowId RowIdOf(const Bookmark& bookmark, std::uint64_t run);

/// A row of a fixed set of rows, by the number of the set and its position there.
[[nodiscard]] Bookmark BookmarkOf(std::uint64_t run, std::size_t position);
/// Throws RuntimeError 3159 when the bookmark is of another kind or of another set of rows.
[[nodiscard]] std::size_t PositionOf(const Bookmark& bookmark, std::uint64_t run);

}  // namespace quardele::dao
