// Says what the names of a statement mean.
#pragma once

#include <memory>
#include <vector>

#include <jet/database.h>

#include "plan/outer_scope.h"
#include "plan/source.h"
#include "sql_error.h"
#include "syntax/ast.h"

namespace quardele::sql {

/// A column of a result: its name and what it is made of.
struct ResultItem {
    Text name;
    ExpressionPtr expression;
    bool aliased = false;  ///< the name was given with AS
};

class Binder {
 public:
    /// Which result columns names may stand for, besides the columns of sources.
    enum class Aliases {
        None,
        BehindSources,  ///< those named with AS, for names that no source knows
        AheadOfSources,
    };

    /// All must outlive the binder. `outer` is null for a statement that is no subquery.
    Binder(jet::Database& database, const std::vector<Source>& sources,
           const std::vector<ResultItem>& results, OuterScope* outer = nullptr)
        : database_(database), sources_(sources), results_(results), outer_(outer) {}

    /// Gives every name of the tree its meaning. A name that stands for a result column is replaced by what
    /// the column is made of. Throws 3079 for a name that several sources know, 3103 for aliases that need
    /// each other. Names of a subquery that no table of it knows are looked for in `outer`; unknown ones are
    /// remembered. Subqueries within the tree are planned.
    void Bind(ExpressionPtr& expression, Aliases aliases);
    /// Binds an expression of ORDER BY: result columns go first, and a whole number alone is the position of
    /// one. Throws 3138 for a position that is no column.
    void BindOrder(ExpressionPtr& expression);
    /// Lets names mean columns of the sources first ... last - 1 only, as in an ON condition.
    void Restrict(std::size_t first, std::size_t last);
    /// Throws MissingParameters when there were unknown names, those of subqueries included.
    void RequireAllKnown() const;

    /// The only source column with this name, empty when there is none. Throws 3079.
    [[nodiscard]] std::optional<NameMeaning> FindColumn(TextView qualifier, TextView name) const;

    // For subqueries of the statement: what a name means here or further out, and of what type it is.
    [[nodiscard]] std::optional<NameMeaning> FindAround(const NameReference& name) const;
    [[nodiscard]] StaticType TypeOf(const NameMeaning& meaning) const;

 private:
    void Bind(ExpressionPtr& expression, int depth);
    void BindName(ExpressionPtr& expression, NameReference& name, int depth);
    bool BindToResult(ExpressionPtr& expression, int depth);
    [[nodiscard]] const ResultItem* FindResult(const NameReference& name) const;

    jet::Database& database_;
    const std::vector<Source>& sources_;
    const std::vector<ResultItem>& results_;
    OuterScope* outer_;
    std::size_t firstSource_ = 0;
    std::size_t lastSource_ = kMostSources;
    Aliases aliases_ = Aliases::None;
    std::vector<const ResultItem*> open_;  ///< aliases that are being replaced
    UnknownNames unknown_;
    std::size_t visited_ = 0;
};

}  // namespace quardele::sql
