// Says what the names of a statement mean.
#pragma once

#include <memory>
#include <set>
#include <vector>

#include <jet/database.h>

#include "rows/row_context.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// A table of the FROM clause under the name that qualifies its columns.
struct Source {
    Text label;
    std::shared_ptr<jet::Table> table;
};

/// A column of a result: its name and what it is made of.
struct ResultItem {
    Text name;
    ExpressionPtr expression;
    bool aliased = false;  ///< the name was given with AS
};

/// Opens the tables of a FROM clause, from left to right. Throws 3078 unknown table, 3081 the same label
/// twice, 3360 too many tables.
[[nodiscard]] std::vector<Source> OpenSources(jet::Database& database, const std::vector<FromItem>& from);

/// Most tables of one statement.
inline constexpr std::size_t kMostSources = 32;

class Binder {
 public:
    /// Which result columns names may stand for, besides the columns of sources.
    enum class Aliases {
        None,
        BehindSources,  ///< those named with AS, for names that no source knows
        AheadOfSources,
    };

    /// Both must outlive the binder.
    Binder(const std::vector<Source>& sources, const std::vector<ResultItem>& results)
        : sources_(sources), results_(results) {}

    /// Gives every name of the tree its meaning. A name that stands for a result column is replaced by what
    /// the column is made of. Throws 3079 for a name that several sources know, 3103 for aliases that need
    /// each other. Unknown names are remembered.
    void Bind(ExpressionPtr& expression, Aliases aliases);
    /// Binds an expression of ORDER BY: result columns go first, and a whole number alone is the position of
    /// one. Throws 3138 for a position that is no column.
    void BindOrder(ExpressionPtr& expression);
    /// Lets names mean columns of the sources first ... last - 1 only, as in an ON condition.
    void Restrict(std::size_t first, std::size_t last);
    /// Throws 3061 when there were unknown names: as many values would have to be given.
    void RequireAllKnown() const;

    /// The only source column with this name, empty when there is none. Throws 3079.
    [[nodiscard]] std::optional<NameMeaning> FindColumn(TextView qualifier, TextView name) const;

 private:
    void Bind(ExpressionPtr& expression, int depth);
    bool BindToResult(ExpressionPtr& expression, int depth);
    [[nodiscard]] const ResultItem* FindResult(const NameReference& name) const;

    const std::vector<Source>& sources_;
    const std::vector<ResultItem>& results_;
    std::size_t firstSource_ = 0;
    std::size_t lastSource_ = kMostSources;
    Aliases aliases_ = Aliases::None;
    std::vector<const ResultItem*> open_;  ///< aliases that are being replaced
    std::set<Text> unknown_;
    std::size_t visited_ = 0;
};

}  // namespace quardele::sql
