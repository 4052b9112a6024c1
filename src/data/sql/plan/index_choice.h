// Which index serves a table's conditions, a join or an order.
#pragma once

#include <optional>
#include <vector>

#include "plan/compiler.h"
#include "plan/conjuncts.h"
#include "rows/producer.h"

namespace quardele::sql {

/// The index that leaves the fewest rows for comparisons of a source's columns with values; empty when none
/// serves.
[[nodiscard]] std::optional<IndexRange> ChooseRange(std::size_t source, const Conjuncts& conjuncts,
                                                    const CompileScope& scope);

/// An index that can be asked for values of a type in a column; -1 when there is none. Unique ones are
/// preferred.
[[nodiscard]] int IndexOnColumn(const jet::Table& table, int column, StaticType type);

struct ColumnOrder {
    int column = 0;
    bool descending = false;
};
struct IndexWalk {
    int index = 0;
    bool backwards = false;
};
/// An index whose entries, in one direction, come in the order of the columns; rows that are equal in them
/// stay in physical order.
[[nodiscard]] std::optional<IndexWalk> IndexForOrder(const jet::Table& table,
                                                     const std::vector<ColumnOrder>& order);
/// The order of the primary key; empty when there is none.
[[nodiscard]] std::vector<ColumnOrder> PrimaryOrder(const jet::Table& table);

}  // namespace quardele::sql
