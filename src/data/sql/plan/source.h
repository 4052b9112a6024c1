// What stands behind a name of the FROM clause.
#pragma once

#include <memory>
#include <vector>

#include <jet/database.h>

#include "expressions/types.h"

namespace quardele::sql {

struct SelectPlan;

/// A table, or a query within the statement, under the name that qualifies its columns.
struct Source {
    Text label;
    std::shared_ptr<jet::Table> table;        ///< null for a query
    std::shared_ptr<const SelectPlan> query;  ///< of FROM (SELECT ...)

    [[nodiscard]] std::size_t ColumnCount() const;
    /// Position of a column by name, case ignored; -1 when there is none.
    [[nodiscard]] int FindColumn(TextView name) const;
    [[nodiscard]] const Text& ColumnName(int column) const;
    [[nodiscard]] StaticType ColumnType(int column) const;
    [[nodiscard]] int ColumnSize(int column) const;
};

class OuterScope;

/// Opens the tables of a FROM clause and plans its queries, from left to right; `outer` is what surrounds
/// the statement that the clause belongs to, null for nothing. Throws 3078 unknown table, 3081 the same label
/// twice, 3360 too many tables; for queries what MakeStatementPlan throws.
[[nodiscard]] std::vector<Source> OpenSources(jet::Database& database, const std::vector<FromItem>& from,
                                              OuterScope* outer);

/// Most tables of one statement.
inline constexpr std::size_t kMostSources = 32;

}  // namespace quardele::sql
