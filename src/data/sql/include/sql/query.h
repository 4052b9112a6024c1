// SELECT statements of the Access dialect, bound to one open data file. One thread.
//
//   auto query = sql::Query::Prepare(database, u"SELECT ... ORDER BY ...");
//   sql::RowSet rows = query->Run();
//   rows.Value(0, 2);
//
// Errors are basic::RuntimeError with the engine's numbers and a French text that names the place: 3075
// syntax error in an expression, 3131 in FROM, 3141 in SELECT, 3138 in ORDER BY, 3129 no SELECT at all, 3142
// text behind the end, 3061 an unknown name counts as a missing parameter, 3078 unknown table, 3079 a name
// that several tables know, 3085 unknown function, 3122 column outside the aggregate, 3360 too long or too
// deep, 3464 types that do not compare, 13/11/6 from expressions; docs/sql-dialect.md has them all.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <basic/variant.h>
#include <jet/database.h>
#include <jet/table.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;
using basic::Variant;

/// One column of a result.
struct ResultColumn {
    Text name;
    jet::ColumnType type = jet::ColumnType::Text;
    int size = 0;  ///< as jet::Column::size; 0 for expressions
    /// Where the value comes from when it is a plain column: position in Query::Sources() and ordinal there.
    std::optional<std::size_t> source;
    int sourceColumn = -1;
};

/// Whether the values of a run's rows are read from the file when they are asked for, or copied by the run.
enum class RowValues { Live, Fixed };

class RowSet;
class PreparedSelect;  // the room's own

/// A parsed and bound SELECT; can be run many times. Keeps its database open.
class Query : public std::enable_shared_from_this<Query> {
 public:
    /// Parses and binds. A trailing ";" is allowed.
    static std::shared_ptr<Query> Prepare(std::shared_ptr<jet::Database> database, TextView statement,
                                          RowValues values = RowValues::Live);
    explicit Query(std::unique_ptr<PreparedSelect> select);
    ~Query();

    [[nodiscard]] const std::vector<ResultColumn>& Columns() const;
    /// Position of a column by its result name or by "table.column", case ignored; -1 when there is none.
    [[nodiscard]] int FindColumn(TextView name) const;
    /// The tables that rows come from, in FROM order; none when FROM holds a query.
    [[nodiscard]] const std::vector<std::shared_ptr<jet::Table>>& Sources() const;
    /// Whether a source is the "one" side of its join: rows of the others meet one row of it at most.
    [[nodiscard]] bool IsOneSide(std::size_t source) const;
    /// The parts of a row that has some of them, one per source: for the others what FROM and the equalities
    /// of WHERE between columns of two tables join to these, whatever else WHERE says. They stay empty where
    /// nothing is joined.
    [[nodiscard]] std::vector<std::optional<jet::RowId>> Completed(
        std::vector<std::optional<jet::RowId>> parts) const;
    /// Finds membership and order of the rows now; values are read later (see RowSet).
    [[nodiscard]] RowSet Run() const;
    /// The same, but where a statement allows it, rows are found when they are first asked for, and rows of
    /// tables with a unique key are told from others that come to lie in their places: those count as
    /// deleted. What is found in the order of another index than that of the key is known by its key from the
    /// first look at it. A row whose key an action statement, or a relation that cascades changes, has given
    /// another value counts as deleted too, until the statement is run again. Whoever changes the file
    /// through this database, and wants the rows as they were, finds them all beforehand (RowSet::Size). When
    /// others change it meanwhile, rows that were not found yet are those of the file as it is when they are:
    /// the order goes on behind the row found last, and no row comes twice.
    [[nodiscard]] RowSet RunInSteps() const;

 private:
    friend class RowSet;
    friend class Condition;
    std::unique_ptr<PreparedSelect> select_;
};

/// The rows of one run. Membership and order are fixed. For statements without aggregation, DISTINCT or
/// UNION a row is a set of row identities, one per source, and values are read from the file when asked for;
/// otherwise, and with RowValues::Fixed, the rows hold their values. Copying is cheap: copies share the rows.
class RowSet {
 public:
    RowSet() = default;

    /// Finds all rows and counts them.
    [[nodiscard]] std::size_t Size() const;
    /// The number of rows found once so many have been looked for: fewer than `wanted` only when there are
    /// no more.
    [[nodiscard]] std::size_t Found(std::size_t wanted = 0) const;
    /// The value of a column; Null for columns of a source that a LEFT or RIGHT JOIN left without a row.
    /// Throws 3167 when the row has been deleted since the run.
    [[nodiscard]] Variant Value(std::size_t row, int column) const;
    /// The identity of a row's part from one source, or empty when the join left it without one or the rows
    /// hold values only. Throws 3167 for one that was marked as deleted, or in whose place another one lies.
    [[nodiscard]] std::optional<jet::RowId> Key(std::size_t row, std::size_t source) const;
    /// Whether rows carry identities, so that they can be changed.
    [[nodiscard]] bool HasKeys() const;
    /// Whether a column may be written: a plain column of a source whose rows appear at most once each in
    /// the result, or of the "many" side of a join.
    [[nodiscard]] bool IsUpdatable(int column) const;
    /// Takes in a row that was added to the file, behind the others, and returns its position: its
    /// identities, one per source. For rows with identities only.
    std::size_t Append(std::span<const std::optional<jet::RowId>> keys);
    /// Gives a row other parts, one per source: one of them has been changed so that others are joined to it.
    /// For rows with identities only.
    void Replace(std::size_t row, std::span<const std::optional<jet::RowId>> keys);
    /// Says that this program has given a row of a table another key: it stays what it is.
    void TakeKeyOf(const jet::Table& table, jet::RowId key);
    /// Says that a row's part from one source was deleted, so that it can never be taken for a row that comes
    /// to lie in its place: whoever reads it gets 3167.
    void MarkDeleted(std::size_t row, std::size_t source);
    /// Throws away decoded rows so that the next read sees the file as it is.
    void Forget(std::size_t row);
    /// The same for all rows, with what searches have remembered of them.
    void ForgetAll();

    struct Data;
    explicit RowSet(std::shared_ptr<Data> data) : data_(std::move(data)) {}

 private:
    friend class Condition;
    std::shared_ptr<Data> data_;
};

/// The text of a WHERE condition over the columns of a query's result and its sources' columns, for
/// FindFirst and its kin.
class Condition {
 public:
    /// Parses and binds; errors as for Query::Prepare (3077 for syntax).
    Condition(const std::shared_ptr<const Query>& query, TextView condition);
    ~Condition();
    Condition(Condition&&) noexcept;
    Condition& operator=(Condition&&) noexcept;

    /// Whether the condition is true (not Null) for a row of a run of the query.
    [[nodiscard]] bool Holds(const RowSet& rows, std::size_t row) const;
    /// The first row at or behind `from` for which it holds, or empty. May be much faster than asking Holds
    /// for each row: an equality with a value is looked up in a hash, which the first call builds.
    [[nodiscard]] std::optional<std::size_t> FindForward(const RowSet& rows, std::size_t from) const;
    /// The last row at or before `from` for which it holds, or empty.
    [[nodiscard]] std::optional<std::size_t> FindBackward(const RowSet& rows, std::size_t from) const;

 private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace quardele::sql
