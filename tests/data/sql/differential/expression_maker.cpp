#include "expression_maker.h"

#include <algorithm>

#include "forms.h"
#include "literals.h"

namespace quardele::sql::differential {

namespace {

constexpr int kNulls = 3;         ///< percent of the leaves
constexpr int kColumns = 75;      ///< percent of the leaves that are no Null
constexpr int kEarlyLeaves = 20;  ///< percent
constexpr int kSubqueries = 6;    ///< percent

/// What may stand where an operand of the kind is asked for.
Kind LeafKind(Kind kind) {
    switch (kind) {
        case Kind::SmallNumber:
            return Kind::Number;
        case Kind::TextColumn:
            return Kind::Text;
        default:
            return kind;
    }
}

bool IsLiteral(Kind kind) {
    return kind >= Kind::DateLiteral;
}

bool IsValue(Kind kind) {
    return kind <= Kind::Condition;
}

}  // namespace

Kind AnyValueKind(Random& random) {
    constexpr Kind kKinds[] = {Kind::Number, Kind::Number, Kind::Text, Kind::Text, Kind::Date, Kind::Amount};
    return random.OneOf(kKinds);
}

Expression Joined(const std::string& word, Expression left, Expression right) {
    const std::string pattern = "($0 " + word + " $1)";
    return {.kind = Kind::Condition,
            .ours = pattern,
            .theirs = pattern,
            .parts = {std::move(left), std::move(right)},
            .query = {}};
}

bool ExpressionMaker::HasLeaf(Kind kind) const {
    return std::any_of(leaves_.begin(), leaves_.end(),
                       [kind](const Expression& leaf) { return leaf.kind == kind; });
}

Expression ExpressionMaker::Leaf(Kind kind) {
    std::vector<const Expression*> known;
    for (const Expression& leaf : leaves_) {
        if (leaf.kind == LeafKind(kind)) {
            known.push_back(&leaf);
        }
    }
    return known.empty() ? Literal(kind, random_) : *random_.OneOf(known);
}

Expression ExpressionMaker::Make(Kind kind, int levels) {
    if (IsLiteral(kind)) {
        return Literal(kind, random_);
    }
    if (subquery_ && IsValue(kind) && levels > 0 && random_.Chance(kSubqueries)) {
        return subquery_(kind);
    }
    const bool comparesLeaves = kind == Kind::Condition && random_.Chance(kColumns);
    if (!IsValue(kind) || (levels <= 0 && !comparesLeaves) || random_.Chance(kEarlyLeaves)) {
        if (random_.Chance(kNulls) && IsValue(kind)) {
            return NullOf(kind);
        }
        return random_.Chance(kColumns) ? Leaf(kind) : Literal(kind, random_);
    }
    const Form& form = random_.OneOf(FormsOf(kind));
    Expression made{.kind = kind, .ours = form.ours, .theirs = form.theirs, .parts = {}, .query = {}};
    for (const Kind part : form.parts) {
        made.parts.push_back(Make(part, levels - 1));
    }
    return made;
}

Expression ExpressionMaker::Test() {
    constexpr const char* kOperators[] = {"=", "=", "=", "<", "<=", ">", ">=", "<>"};
    const Kind kind = AnyValueKind(random_);
    const std::string collated = kind == Kind::Text ? " COLLATE OURS " : " ";
    const std::string op = std::string(random_.OneOf(kOperators)) + " ";
    Expression test{.kind = Kind::Condition, .ours = "", .theirs = "", .parts = {Leaf(kind)}, .query = {}};
    test.parts.push_back(random_.Chance(85) ? Literal(kind, random_) : Make(kind, 1));
    const bool mirrored = random_.Chance(20);
    test.ours = mirrored ? "$1 " + op + "$0" : "$0 " + op + "$1";
    test.theirs = mirrored ? "($1" + collated + op + "$0)" : "($0" + collated + op + "$1)";
    return test;
}

Expression ExpressionMaker::Filter() {
    Expression filter = Test();
    for (int more = random_.Below(3); more > 0; --more) {
        filter = Joined(random_.Chance(65) ? "AND" : "OR", std::move(filter),
                        random_.Chance(75) ? Test() : Make(Kind::Condition, 1));
    }
    return filter;
}

}  // namespace quardele::sql::differential
