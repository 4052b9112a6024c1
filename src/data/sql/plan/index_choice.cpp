#include "plan/index_choice.h"

#include <algorithm>

#include <jet/collation.h>

#include "expressions/compare.h"
#include "expressions/operators.h"

namespace quardele::sql {
namespace {

/// More than an index can have.
constexpr std::size_t kMostIndexColumns = 100;

/// Types whose index entries are in the order in which their values compare.
bool IsSeekableType(jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Byte:
        case jet::ColumnType::Integer:
        case jet::ColumnType::Long:
        case jet::ColumnType::Currency:
        case jet::ColumnType::Single:
        case jet::ColumnType::Double:
        case jet::ColumnType::Date:
        case jet::ColumnType::Text:
            return true;
        default:
            return false;
    }
}

/// Whether an index on a column can be asked for values of a type.
bool CanSeek(jet::ColumnType column, StaticType value) {
    return IsSeekableType(column) && ClassOf(value) == ClassOf(column) &&
           (column == jet::ColumnType::Date) == (value == jet::ColumnType::Date);
}

/// The beginning of a text by which an index can be asked for all texts that begin so: plain letters, digits
/// and signs, which have no accents that could be other ones in a longer text. Longer than that is not
/// needed.
Text StartOfText(TextView text) {
    constexpr std::size_t kLongest = 32;
    constexpr char16_t kFirstAccented = 0x80;
    const auto accented =
        std::find_if(text.begin(), text.end(), [](char16_t unit) { return unit >= kFirstAccented; });
    Text start(text.begin(), accented);
    start.resize(std::min(start.size(), kLongest));
    return jet::SortKeyStart(start).empty() ? Text() : start;
}

/// The same of what a pattern of LIKE begins with.
Text StartOfPattern(TextView pattern) {
    return StartOfText(pattern.substr(0, pattern.find_first_of(u"*?#[")));
}

BinaryOperator Mirrored(BinaryOperator op) {
    switch (op) {
        case BinaryOperator::Less:
            return BinaryOperator::Greater;
        case BinaryOperator::LessOrEqual:
            return BinaryOperator::GreaterOrEqual;
        case BinaryOperator::Greater:
            return BinaryOperator::Less;
        case BinaryOperator::GreaterOrEqual:
            return BinaryOperator::LessOrEqual;
        default:
            return op;
    }
}

/// What conditions say about the columns of one source.
class ColumnBounds {
 public:
    ColumnBounds(std::size_t source, const CompileScope& scope)
        : source_(source),
          table_(*(*scope.sources)[source].table),
          scope_(scope),
          columns_(table_.Columns().size()) {}

    void Add(const Expression& condition) {
        if (const auto* comparison = condition.As<Binary>(); comparison && IsComparison(comparison->op)) {
            AddComparison(*comparison->left, comparison->op, *comparison->right);
            AddComparison(*comparison->right, Mirrored(comparison->op), *comparison->left);
            if (comparison->op == BinaryOperator::Equal) {
                AddLeftPart(*comparison->left, *comparison->right);
                AddLeftPart(*comparison->right, *comparison->left);
            }
        } else if (comparison && comparison->op == BinaryOperator::Like) {
            AddPattern(*comparison->left, *comparison->right);
        } else if (const auto* between = condition.As<Between>(); between && !between->negated) {
            AddBetween(*between);
        }
    }

    /// The range of an index, as far as the bounds reach; empty when they do not.
    [[nodiscard]] std::optional<IndexRange> RangeOf(int position) const {
        const jet::Index& index = table_.Indexes()[static_cast<std::size_t>(position)];
        IndexRange range;
        range.index = position;
        range.start = StartOf(index);
        if (index.seekable && !range.start.empty()) {
            return range;
        }
        for (const jet::IndexColumn& part : index.columns) {
            const Bounds& bounds = columns_[static_cast<std::size_t>(part.column)];
            if (bounds.equal == nullptr) {
                if (part.ascending) {
                    range.low = MakeBound(bounds.low, bounds.lowStrict);
                    range.high = MakeBound(bounds.high, bounds.highStrict);
                }
                break;
            }
            range.prefix.push_back(Compile(*bounds.equal, scope_));
        }
        range.single = index.unique && range.prefix.size() == index.columns.size();
        if (!index.seekable || (range.prefix.empty() && !range.low && !range.high)) {
            return std::nullopt;
        }
        return range;
    }

 private:
    struct Bounds {
        const Expression* equal = nullptr;
        const Expression* low = nullptr;
        const Expression* high = nullptr;
        bool lowStrict = false;
        bool highStrict = false;
        Text start = {};  ///< of a text
    };

    /// The text with which the first column of an index begins, when nothing closer is known of it.
    [[nodiscard]] Text StartOf(const jet::Index& index) const {
        const jet::IndexColumn& first = index.columns.front();
        const Bounds& bounds = columns_[static_cast<std::size_t>(first.column)];
        const bool bounded = bounds.equal != nullptr || bounds.low != nullptr || bounds.high != nullptr;
        return bounded || !first.ascending ? Text() : bounds.start;
    }

    [[nodiscard]] std::optional<IndexRange::Bound> MakeBound(const Expression* value, bool strict) const {
        if (value == nullptr) {
            return std::nullopt;
        }
        return IndexRange::Bound{Compile(*value, scope_), strict};
    }

    /// The bounds of the column that `expression` is, when `value` is the same for all rows and of its class.
    Bounds* BoundsFor(const Expression& expression, const Expression& value) {
        const auto column = ColumnOf(expression);
        if (!column || column->source != source_ || !IsWithin(SourcesOf(value), 0)) {
            return nullptr;
        }
        const auto position = static_cast<std::size_t>(column->column);
        const jet::ColumnType type = table_.Columns()[position].type;
        if (!CanSeek(type, Compile(value, scope_)->Type())) {
            return nullptr;
        }
        return &columns_[position];
    }

    void AddComparison(const Expression& column, BinaryOperator op, const Expression& value) {
        Bounds* bounds = BoundsFor(column, value);
        if (bounds == nullptr) {
            return;
        }
        switch (op) {
            case BinaryOperator::Equal:
                bounds->equal = &value;
                break;
            case BinaryOperator::Greater:
            case BinaryOperator::GreaterOrEqual:
                bounds->low = &value;
                bounds->lowStrict = op == BinaryOperator::Greater;
                break;
            case BinaryOperator::Less:
            case BinaryOperator::LessOrEqual:
                bounds->high = &value;
                bounds->highStrict = op == BinaryOperator::Less;
                break;
            default:
                break;
        }
    }

    /// Left(column, count) = text.
    void AddLeftPart(const Expression& part, const Expression& text) {
        const auto* call = part.As<Call>();
        if (call != nullptr && call->arguments.size() == 2 && basic::EqualNoCase(call->function, u"Left")) {
            AddStart(*call->arguments.front(), text, StartOfText);
        }
    }

    /// column Like "text*".
    void AddPattern(const Expression& column, const Expression& pattern) {
        AddStart(column, pattern, StartOfPattern);
    }

    void AddStart(const Expression& column, const Expression& value, Text (*startOf)(TextView)) {
        Bounds* bounds = BoundsFor(column, value);
        const NodePtr constant = bounds == nullptr ? nullptr : Compile(value, scope_);
        if (constant != nullptr && constant->Constant() != nullptr && constant->Constant()->IsText()) {
            bounds->start = startOf(constant->Constant()->As<Text>());
        }
    }

    void AddBetween(const Between& between) {
        const NodePtr first = Compile(*between.low, scope_);
        const NodePtr second = Compile(*between.high, scope_);
        if (first->Constant() == nullptr || second->Constant() == nullptr) {
            return;
        }
        const auto order = CompareValues(*first->Constant(), *second->Constant());
        if (!order) {
            return;
        }
        const bool swapped = *order > 0;
        AddComparison(*between.operand, BinaryOperator::GreaterOrEqual,
                      swapped ? *between.high : *between.low);
        AddComparison(*between.operand, BinaryOperator::LessOrEqual, swapped ? *between.low : *between.high);
    }

    std::size_t source_;
    const jet::Table& table_;
    const CompileScope& scope_;
    std::vector<Bounds> columns_;
};

/// How much a range is worth: a single row most, then equal columns, then bounds.
int Worth(const IndexRange& range) {
    return (range.single ? 1000 : 0) + (range.start.empty() ? 0 : 2) +
           static_cast<int>(range.prefix.size()) * 10 + (range.low ? 1 : 0) + (range.high ? 1 : 0);
}

}  // namespace

std::optional<IndexRange> ChooseRange(std::size_t source, const Conjuncts& conjuncts,
                                      const CompileScope& scope) {
    ColumnBounds bounds(source, scope);
    for (const Conjunct& conjunct : conjuncts) {
        bounds.Add(*conjunct.expression);
    }
    std::optional<IndexRange> best;
    const std::size_t count = (*scope.sources)[source].table->Indexes().size();
    for (std::size_t index = 0; index < count; ++index) {
        auto range = bounds.RangeOf(static_cast<int>(index));
        if (range && (!best || Worth(*range) > Worth(*best))) {
            best = std::move(range);
        }
    }
    return best;
}

std::optional<JoinIndex> IndexForJoin(const jet::Table& table, const std::vector<JoinColumn>& columns) {
    std::optional<JoinIndex> best;
    std::size_t worth = 0;
    for (std::size_t i = 0; i < table.Indexes().size(); ++i) {
        const jet::Index& index = table.Indexes()[i];
        JoinIndex found{static_cast<int>(i), {}};
        for (const jet::IndexColumn& part : index.columns) {
            const auto serving =
                std::find_if(columns.begin(), columns.end(), [&](const JoinColumn& candidate) {
                    const jet::Column& column = table.Columns()[static_cast<std::size_t>(part.column)];
                    return candidate.column == part.column && CanSeek(column.type, candidate.type);
                });
            if (serving == columns.end()) {
                break;
            }
            found.columns.push_back(serving->number);
        }
        const bool single = index.unique && found.columns.size() == index.columns.size();
        const std::size_t itsWorth = found.columns.size() + (single ? kMostIndexColumns : 0);
        if (index.seekable && !found.columns.empty() && itsWorth > worth) {
            worth = itsWorth;
            best = std::move(found);
        }
    }
    return best;
}

std::optional<IndexWalk> IndexForOrder(const jet::Table& table, const std::vector<ColumnOrder>& order) {
    for (std::size_t i = 0; i < table.Indexes().size(); ++i) {
        const jet::Index& index = table.Indexes()[i];
        if (!index.seekable || index.ignoreNulls || order.empty() || index.columns.size() != order.size()) {
            continue;
        }
        const auto follows = [&](bool backwards) {
            return std::equal(order.begin(), order.end(), index.columns.begin(),
                              [backwards](const ColumnOrder& wanted, const jet::IndexColumn& part) {
                                  return wanted.column == part.column &&
                                         wanted.descending == (part.ascending == backwards);
                              });
        };
        if (follows(false)) {
            return IndexWalk{static_cast<int>(i), false};
        }
        // Backwards, rows with equal keys would come backwards too.
        if (index.unique && follows(true)) {
            return IndexWalk{static_cast<int>(i), true};
        }
    }
    return std::nullopt;
}

std::vector<ColumnOrder> PrimaryOrder(const jet::Table& table) {
    std::vector<ColumnOrder> order;
    const auto primary = std::find_if(table.Indexes().begin(), table.Indexes().end(),
                                      [](const jet::Index& index) { return index.primary; });
    if (primary != table.Indexes().end()) {
        for (const jet::IndexColumn& part : primary->columns) {
            order.push_back({part.column, !part.ascending});
        }
    }
    return order;
}

}  // namespace quardele::sql
