// A SELECT as a tree, which is written in both dialects.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quardele::sql::differential {

/// Where a statement is run: on our tables without or with indexes, or on SQLite's.
enum class Side { Plain, Indexed, SQLite };

/// What an expression gives. The last ones are operands that forms ask for, never results.
enum class Kind {
    Number,   ///< exact in a double: multiples of a power of 1/2, not too large
    Inexact,  ///< rounded, so never added up
    Amount,
    Text,
    Date,
    Condition,
    SmallNumber,  ///< a column or literal
    TextColumn,
    DateLiteral,
    Count,    ///< a literal from 0
    Divisor,  ///< a literal whole number other than 0
    Pattern,  ///< a literal for Like
    Needle    ///< a literal text that is not empty
};

struct Select;

/// Texts for both sides, in which $0, $1 ... stand for the parts and $q for the query.
struct Expression {
    Kind kind = Kind::Number;
    std::string ours;
    std::string theirs;
    std::vector<Expression> parts;
    std::shared_ptr<const Select> query;
};

/// A table or query under a name, or a join of two of these.
struct From {
    int table = 0;  ///< counted from 0
    std::shared_ptr<const Select> query;
    std::string alias;
    std::string join;  ///< "INNER", "LEFT" or "RIGHT" between the parts
    std::vector<From> parts;
    std::optional<Expression> on;
};

struct Order {
    enum class Spelling { Position, Name, Whole };
    std::size_t item = 0;
    bool descending = false;
    Spelling spelling = Spelling::Position;
};

/// Its columns are called c0, c1 ...
struct Select {
    bool distinct = false;
    int top = 0;           ///< 0: all rows. Only our side writes it: the other has no ties
    bool percent = false;  ///< of `top`
    std::vector<Expression> items;
    std::vector<From> from;
    std::optional<Expression> where;
    std::vector<Expression> groups;
    std::optional<Expression> having;
    std::vector<Order> order;
    bool ownOrder = false;  ///< rows come in this order by themselves: only the other side writes it
    std::shared_ptr<const Select> united;  ///< the next part of a UNION
    bool unionAll = false;
    /// Of texts that compare as equal, any may stand in the result.
    bool anyOfEqualTexts = false;
};

[[nodiscard]] std::string Write(const Expression& expression, Side side);
[[nodiscard]] std::string Write(const Select& select, Side side);
/// The name of a table on a side.
[[nodiscard]] std::string TableName(int table, Side side);

}  // namespace quardele::sql::differential
