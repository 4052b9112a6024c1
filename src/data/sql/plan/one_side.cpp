#include "plan/one_side.h"

#include <algorithm>
#include <set>

#include "plan/conjuncts.h"

namespace quardele::sql {
namespace {

using ColumnSets = std::vector<std::set<int>>;  ///< one per table

void AppendConditions(const FromItem& item, Conjuncts& conjuncts) {
    if (const auto* join = std::get_if<Join>(&item.node)) {
        AppendConjuncts(join->on, conjuncts);
        AppendConditions(*join->left, conjuncts);
        AppendConditions(*join->right, conjuncts);
    }
}

/// The columns of each table that equal one of another table.
ColumnSets JoinedColumns(const Select& select, std::size_t tables) {
    Conjuncts conjuncts;
    for (const FromItem& item : select.from) {
        AppendConditions(item, conjuncts);
    }
    AppendConjuncts(select.where, conjuncts);
    ColumnSets joined(tables);
    for (const Conjunct& conjunct : conjuncts) {
        if (const auto link = LinkOf(*conjunct.expression)) {
            joined[link->left.source].insert(link->left.column);
            joined[link->right.source].insert(link->right.column);
        }
    }
    return joined;
}

bool HasUniqueIndexWithin(const jet::Table& table, const std::set<int>& columns) {
    const auto& indexes = table.Indexes();
    return std::any_of(indexes.begin(), indexes.end(), [&columns](const jet::Index& index) {
        return index.unique && std::all_of(index.columns.begin(), index.columns.end(),
                                           [&columns](const jet::IndexColumn& part) {
                                               return columns.contains(part.column);
                                           });
    });
}

}  // namespace

std::vector<bool> FindOneSides(const Select& select, const Tables& tables) {
    const ColumnSets joined = JoinedColumns(select, tables.size());
    std::vector<bool> oneSides(tables.size());
    for (std::size_t table = 0; table < tables.size(); ++table) {
        oneSides[table] = tables[table] != nullptr && HasUniqueIndexWithin(*tables[table], joined[table]);
    }
    return oneSides;
}

}  // namespace quardele::sql
