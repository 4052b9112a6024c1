#include "statement_maker.h"

#include "tables.h"

namespace quardele::sql::differential {

namespace {

constexpr int kLevels = 3;

Expression Around(Kind kind, const std::string& ours, const std::string& theirs,
                  std::vector<Expression> parts, std::shared_ptr<const Select> query = {}) {
    return {
        .kind = kind, .ours = ours, .theirs = theirs, .parts = std::move(parts), .query = std::move(query)};
}

std::shared_ptr<const Select> Shared(Select select) {
    return std::make_shared<const Select>(std::move(select));
}

Expression Column(const std::string& alias, const std::string& name, Kind kind) {
    const std::string text = alias + "." + name;
    return Around(kind, text, kind == Kind::Condition ? "(" + text + " <> 0)" : text, {});
}

std::vector<Expression> Together(std::vector<Expression> some, const std::vector<Expression>& more) {
    some.insert(some.end(), more.begin(), more.end());
    return some;
}

std::string Collated(Kind kind) {
    return kind == Kind::Text ? " COLLATE OURS" : "";
}

/// Of the numbers' rests by 1000: whole, so that nothing is lost.
std::string Variance() {
    const std::string number = "f_rest($0, 1000)";
    const std::string count = "count($0)";
    const std::string sum = "sum(" + number + ")";
    return "iif(" + count + " > 1, (" + count + " * sum(" + number + " * " + number + ") - " + sum + " * " +
           sum + ") / (" + count + " * (" + count + " - 1)), Null)";
}

}  // namespace

Select StatementMaker::Make() {
    aliases_ = 0;
    level_ = 0;
    anyOfEqualTexts_ = false;
    Leaves known;
    Select select = Start(known);
    if (random_.Chance(30)) {
        AddGroups(select, known);
    } else {
        AddPlainItems(select, known);
        select.distinct = random_.Chance(15);
        anyOfEqualTexts_ = anyOfEqualTexts_ || select.distinct;
    }
    if (random_.Chance(8)) {
        AddUnion(select);
    }
    if (random_.Chance(50)) {
        AddOrder(select);
    } else if (select.united == nullptr && random_.Chance(30)) {
        AddOwnOrder(select);
    }
    select.anyOfEqualTexts = anyOfEqualTexts_;
    return select;
}

Select StatementMaker::Start(Leaves& known) {
    constexpr int kTableNumbers[] = {1, 1, 1, 2, 2, 3};
    Select select;
    select.from.push_back(AnyFrom(random_.OneOf(kTableNumbers), known));
    if (select.from.front().join.empty() && random_.Chance(10)) {
        select.from.push_back(OneTable(known));
    }
    if (random_.Chance(75)) {
        ExpressionMaker maker(random_, known, SubqueriesIn(known));
        select.where = random_.Chance(50) ? maker.Filter() : maker.Make(Kind::Condition, kLevels);
    }
    return select;
}

void StatementMaker::AddPlainItems(Select& select, const Leaves& known) {
    ExpressionMaker maker(random_, known, SubqueriesIn(known));
    for (int items = random_.Between(1, 4); items > 0; --items) {
        const bool inexact = random_.Chance(8);
        const Kind kind = inexact             ? Kind::Inexact
                          : random_.Chance(8) ? Kind::Condition
                                              : AnyValueKind(random_);
        select.items.push_back(inexact || random_.Chance(55) ? maker.Make(kind, kLevels) : maker.Leaf(kind));
    }
}

void StatementMaker::AddGroups(Select& select, const Leaves& known) {
    anyOfEqualTexts_ = true;
    ExpressionMaker columns(random_, known, {});
    for (int groups = random_.Below(3); groups > 0; --groups) {
        const Kind kind = AnyValueKind(random_);
        if (!columns.HasLeaf(kind)) {
            continue;
        }
        Expression group = columns.Leaf(kind);
        if (kind == Kind::Number && random_.Chance(30)) {
            group = Around(kind, "Len($0)", "f_len($0)", {columns.Leaf(Kind::Text)});
        } else if (kind == Kind::Date && random_.Chance(40)) {
            group = Around(Kind::Number, "Year($0)", "f_part('yyyy', $0)", {group});
        }
        select.groups.push_back(group);
    }
    const Leaves aggregates = Aggregates(known);
    ExpressionMaker maker(random_, Together(aggregates, select.groups), SubqueriesIn({}));
    select.items = Together(select.groups, aggregates);
    if (random_.Chance(40)) {
        select.items.push_back(maker.Make(AnyValueKind(random_), 2));
    }
    if (!select.groups.empty() && random_.Chance(40)) {
        select.having = maker.Make(Kind::Condition, 2);
    }
}

StatementMaker::Leaves StatementMaker::Aggregates(const Leaves& known) {
    ExpressionMaker columns(random_, known, {});
    Leaves aggregates = {Around(Kind::Inexact, "Count(*)", "count(*)", {})};
    for (int more = random_.Below(4); more > 0; --more) {
        const Kind kind = AnyValueKind(random_);
        const Expression column = columns.Leaf(kind);
        const std::string collated = Collated(kind);
        const int kinds = kind == Kind::Number ? 9 : (kind == Kind::Amount ? 7 : 3);
        switch (random_.Below(kinds)) {
            case 0:
                aggregates.push_back(Around(kind, "Min($0)", "min($0" + collated + ")", {column}));
                break;
            case 1:
                aggregates.push_back(Around(kind, "Max($0)", "max($0" + collated + ")", {column}));
                break;
            case 2:
                aggregates.push_back(Around(Kind::Inexact, "Count($0)", "count($0)", {column}));
                break;
            case 3:
                aggregates.push_back(Around(Kind::Inexact, "Sum($0)", "sum($0)", {column}));
                break;
            case 4:
                aggregates.push_back(Around(Kind::Inexact, "Sum(IIf($1, $0, 0))", "sum(iif($1, $0, 0))",
                                            {column, columns.Make(Kind::Condition, 1)}));
                break;
            case 5:
                aggregates.push_back(
                    Around(Kind::Inexact, "Sum(Nz($0, $1))", "sum(coalesce($0, $1))",
                           {column, columns.Leaf(kind == Kind::Number ? Kind::Amount : Kind::Number)}));
                break;
            case 7:
                aggregates.push_back(Around(Kind::Inexact, "Var($0 Mod 1000)", Variance(), {column}));
                break;
            case 8:
                aggregates.push_back(Around(Kind::Inexact, "StDev($0 Mod 1000)",
                                            "f_power(" + Variance() + ", 0.5)", {column}));
                break;
            default:
                aggregates.push_back(Around(Kind::Inexact, "Avg($0)",
                                            kind == Kind::Amount ? "f_amount(avg($0))" : "avg($0)",
                                            {column}));
        }
    }
    return aggregates;
}

void StatementMaker::AddOrder(Select& select) {
    constexpr Order::Spelling kSpellings[] = {Order::Spelling::Position, Order::Spelling::Name,
                                              Order::Spelling::Whole};
    for (int keys = random_.Between(1, 3); keys > 0; --keys) {
        const auto item = static_cast<std::size_t>(random_.Below(static_cast<int>(select.items.size())));
        const Order::Spelling spelling =
            select.united != nullptr ? Order::Spelling::Position : random_.OneOf(kSpellings);
        // Literals as keys would be positions.
        const bool literal = select.items[item].parts.empty() && select.items[item].ours[0] != 'T';
        select.order.push_back({.item = item,
                                .descending = random_.Chance(40),
                                .spelling = literal ? Order::Spelling::Position : spelling});
    }
    if (select.united == nullptr && random_.Chance(30)) {
        AddTop(select);
    }
}

void StatementMaker::AddTop(Select& select) {
    select.percent = random_.Chance(40);
    select.top = select.percent ? random_.Between(1, 100) : random_.Between(1, 8);
}

/// Distinct rows come in the order of all columns, groups in that of their keys, which are the first columns.
void StatementMaker::AddOwnOrder(Select& select) {
    const std::size_t keys = select.distinct ? select.items.size() : select.groups.size();
    for (std::size_t item = 0; item < keys; ++item) {
        select.order.push_back({.item = item, .descending = false, .spelling = Order::Spelling::Position});
    }
    if (keys > 0) {
        select.ownOrder = true;
        AddTop(select);
    }
}

void StatementMaker::AddUnion(Select& select) {
    Leaves known;
    Select next = Start(known);
    ExpressionMaker maker(random_, known, SubqueriesIn(known));
    for (const Expression& item : select.items) {
        const bool textColumn = item.kind == Kind::Text && item.parts.empty() && item.ours[0] == 'T';
        next.items.push_back(textColumn && random_.Chance(30)
                                 ? Around(Kind::Text, "$0", "f_cstr($0)", {maker.Leaf(Kind::Number)})
                                 : maker.Make(item.kind, 1));
    }
    if (random_.Chance(40)) {
        AddUnion(next);
    }
    select.united = Shared(std::move(next));
    select.unionAll = random_.Chance(50);
    anyOfEqualTexts_ = anyOfEqualTexts_ || !select.unionAll;
}

From StatementMaker::OneTable(Leaves& known) {
    From from{.table = random_.Below(kTables),
              .query = {},
              .alias = "T" + std::to_string(aliases_++),
              .join = {},
              .parts = {},
              .on = {}};
    for (const ColumnOfTables& column : Columns()) {
        known.push_back(Column(from.alias, column.name, column.kind));
    }
    return from;
}

From StatementMaker::OneQuery(Leaves& known) {
    Leaves inner;
    Select select = InnerSelect({}, inner);
    ExpressionMaker maker(random_, inner, {});
    select.distinct = random_.Chance(30);
    anyOfEqualTexts_ = anyOfEqualTexts_ || select.distinct;
    From from{.table = 0,
              .query = {},
              .alias = "T" + std::to_string(aliases_++),
              .join = {},
              .parts = {},
              .on = {}};
    for (const Kind kind : {Kind::Number, Kind::Text, Kind::Date, Kind::Number}) {
        known.push_back(Column(from.alias, "c" + std::to_string(select.items.size()), kind));
        select.items.push_back(maker.Leaf(kind));
    }
    from.query = Shared(std::move(select));
    return from;
}

From StatementMaker::AnyFrom(int tables, Leaves& known) {
    if (tables == 1) {
        return random_.Chance(8) ? OneQuery(known) : OneTable(known);
    }
    constexpr const char* kJoins[] = {"INNER", "INNER", "LEFT", "LEFT", "RIGHT"};
    const int first = random_.Between(1, tables - 1);
    Leaves left;
    Leaves right;
    From from;
    from.join = random_.OneOf(kJoins);
    from.parts.push_back(AnyFrom(first, left));
    from.parts.push_back(AnyFrom(tables - first, right));
    from.on = On(left, right);
    known = Together(std::move(known), Together(std::move(left), right));
    return from;
}

Expression StatementMaker::On(const Leaves& left, const Leaves& right) {
    const Kind kind = AnyValueKind(random_);
    ExpressionMaker leftMaker(random_, left, {});
    ExpressionMaker rightMaker(random_, right, {});
    Expression on = Around(Kind::Condition, random_.Chance(90) ? "($0 = $1)" : "($0 <= $1)", "",
                           {leftMaker.Leaf(kind), rightMaker.Leaf(kind)});
    on.theirs = "($0" + Collated(kind) + on.ours.substr(3);
    if (random_.Chance(35)) {
        ExpressionMaker both(random_, Together(left, right), {});
        const Expression more = random_.Chance(50) ? both.Filter() : both.Make(Kind::Condition, 1);
        // As a whole: SQLite (3.40) takes a part without columns for a condition on the rows of joins around.
        on = Around(Kind::Condition, "($0 AND $1)", "iif($0 AND $1, 1, 0)", {on, more});
    }
    return on;
}

ExpressionMaker::MakeSubquery StatementMaker::SubqueriesIn(const Leaves& around) {
    constexpr int kDeepest = 2;
    if (level_ >= kDeepest) {
        return {};
    }
    return [this, around](Kind kind) { return Subquery(kind, around); };
}

Expression StatementMaker::Subquery(Kind kind, const Leaves& around) {
    ++level_;
    Expression made = kind == Kind::Condition ? ConditionSubquery(around) : ScalarSubquery(kind, around);
    --level_;
    return made;
}

Expression StatementMaker::InnerWhere(const Leaves& around, const Leaves& known) {
    ExpressionMaker inner(random_, known, {});
    const Kind kind = AnyValueKind(random_);
    if (!around.empty() && random_.Chance(60)) {
        ExpressionMaker outer(random_, around, {});
        Expression equal = Around(Kind::Condition, "($0 = $1)", "($0" + Collated(kind) + " = $1)",
                                  {inner.Leaf(kind), outer.Leaf(kind)});
        return random_.Chance(60) ? equal : Joined("AND", equal, inner.Filter());
    }
    ExpressionMaker all(random_, Together(known, around), SubqueriesIn(Together(known, around)));
    return random_.Chance(50) ? inner.Filter() : all.Make(Kind::Condition, 2);
}

Select StatementMaker::InnerSelect(const Leaves& around, Leaves& known) {
    Select select;
    select.from.push_back(OneTable(known));
    if (random_.Chance(80)) {
        select.where = InnerWhere(around, known);
    }
    return select;
}

Expression StatementMaker::ConditionSubquery(const Leaves& around) {
    const Kind kind = AnyValueKind(random_);
    if (random_.Chance(25)) {
        return Quantified(kind, around);
    }
    Leaves known;
    Select select = InnerSelect(around, known);
    ExpressionMaker inner(random_, known, {});
    select.items.push_back(random_.Chance(70) ? inner.Leaf(kind) : inner.Make(kind, 1));
    ExpressionMaker outer(random_, around, {});
    switch (random_.Below(4)) {
        case 0:
            return Around(Kind::Condition, "EXISTS ($q)", "EXISTS ($q)", {}, Shared(std::move(select)));
        case 1:
            return Around(Kind::Condition, "(NOT EXISTS ($q))", "(NOT EXISTS ($q))", {},
                          Shared(std::move(select)));
        case 2:
            return Around(Kind::Condition, "($0 IN ($q))", "($0" + Collated(kind) + " IN ($q))",
                          {outer.Make(kind, 1)}, Shared(std::move(select)));
        default:
            return Around(Kind::Condition, "($0 NOT IN ($q))", "($0" + Collated(kind) + " NOT IN ($q))",
                          {outer.Make(kind, 1)}, Shared(std::move(select)));
    }
}

/// ANY and ALL, which the other side counts out: its item looks at all rows of the query.
Expression StatementMaker::Quantified(Kind kind, const Leaves& around) {
    constexpr const char* kOperators[] = {" = ", " <> ", " < ", " <= ", " > ", " >= "};
    const std::string op = random_.OneOf(kOperators);
    const bool any = random_.Chance(50);
    Leaves known;
    Select select = InnerSelect(around, known);
    ExpressionMaker inner(random_, known, {});
    ExpressionMaker outer(random_, around, {});
    const Expression value = outer.Leaf(kind);
    const std::string holds = "($0" + Collated(kind) + op + "$1)";
    const std::string decided = any ? "max(" + holds + ") = 1 THEN 1" : "min(" + holds + ") = 0 THEN 0";
    Expression item = Around(Kind::Number, "$1",
                             "CASE WHEN " + decided + " WHEN count(*) > count" + holds + " THEN Null ELSE " +
                                 (any ? "0" : "1") + " END",
                             {value, inner.Leaf(kind)});
    select.items.push_back(std::move(item));
    return Around(Kind::Condition, "($0" + op + (any ? "ANY" : "ALL") + " ($q))", "($q)", {value},
                  Shared(std::move(select)));
}

Expression StatementMaker::ScalarSubquery(Kind kind, const Leaves& around) {
    anyOfEqualTexts_ = true;
    Leaves known;
    Select select = InnerSelect(around, known);
    ExpressionMaker inner(random_, known, {});
    if (kind == Kind::Inexact) {
        select.items.push_back(random_.Chance(50)
                                   ? Around(kind, "Count(*)", "count(*)", {})
                                   : Around(kind, "Sum($0)", "sum($0)", {inner.Leaf(Kind::Number)}));
    } else {
        const std::string name = random_.Chance(50) ? "Min" : "Max";
        select.items.push_back(
            Around(kind, name + "($0)", name + "($0" + Collated(kind) + ")", {inner.Leaf(kind)}));
    }
    return Around(kind, "($q)", "($q)", {}, Shared(std::move(select)));
}

}  // namespace quardele::sql::differential
