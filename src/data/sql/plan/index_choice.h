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

/// A column that must equal a value of a type.
struct JoinColumn {
    int column = 0;
    StaticType type;
    std::size_t number = 0;  ///< which of the asker's equalities it is
};
/// An index and the numbers of the equalities for its leading columns, in their order.
struct JoinIndex {
    int index = 0;
    std::vector<std::size_t> columns;
};
/// The index that can be asked for most of the equalities at once; empty when none serves. Unique ones of
/// which all columns are given come first.
[[nodiscard]] std::optional<JoinIndex> IndexForJoin(const jet::Table& table,
                                                    const std::vector<JoinColumn>& columns);

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
