// Makes expressions of what a part of a statement can name.
#pragma once

#include <functional>

#include "random.h"
#include "tree.h"

namespace quardele::sql::differential {

class ExpressionMaker {
 public:
    /// `leaves` are the columns, or the groups and their aggregates. `subquery` makes an expression of a kind
    /// that holds a query, and may be missing.
    using MakeSubquery = std::function<Expression(Kind kind)>;
    ExpressionMaker(Random& random, std::vector<Expression> leaves, MakeSubquery subquery)
        : random_(random), leaves_(std::move(leaves)), subquery_(std::move(subquery)) {}

    /// An expression with so many levels at most.
    [[nodiscard]] Expression Make(Kind kind, int levels);
    /// A condition like those of lists and filters, which an index may help with.
    [[nodiscard]] Expression Filter();
    /// A leaf of the kind, a literal where there is none.
    [[nodiscard]] Expression Leaf(Kind kind);
    [[nodiscard]] bool HasLeaf(Kind kind) const;
    [[nodiscard]] const std::vector<Expression>& Leaves() const { return leaves_; }

 private:
    [[nodiscard]] Expression Test();

    Random& random_;
    std::vector<Expression> leaves_;
    MakeSubquery subquery_;
};

/// A kind of values that can be compared, sorted and grouped.
[[nodiscard]] Kind AnyValueKind(Random& random);
[[nodiscard]] Expression Joined(const std::string& word, Expression left, Expression right);

}  // namespace quardele::sql::differential
