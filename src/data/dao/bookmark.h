// What the bytes of a bookmark mean.
#pragma once

#include <cstddef>

#include <dao/recordset.h>
#include <jet/types.h>

namespace quardele::dao {

/// A row of a table, by its identity in the file.
[[nodiscard]] Bookmark BookmarkOf(jet::RowId row);
/// Throws RuntimeError 3159 when the bookmark is of another kind.
[[nodiscard]] jet::RowId RowIdOf(const Bookmark& bookmark);

/// A row of a fixed set of rows, by its position.
[[nodiscard]] Bookmark BookmarkOf(std::size_t position);
/// Throws RuntimeError 3159 when the bookmark is of another kind.
[[nodiscard]] std::size_t PositionOf(const Bookmark& bookmark);

}  // namespace quardele::dao
