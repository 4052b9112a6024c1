#include "plan/planner.h"

#include <algorithm>
#include <utility>

#include "plan/alternatives.h"
#include "plan/conjuncts.h"
#include "plan/index_choice.h"
#include "rows/alternatives_producer.h"
#include "rows/join_producer.h"
#include "rows/query_producer.h"

namespace quardele::sql {
namespace {

/// What a row costs that is kept in a hash.
constexpr double kHashCost = 2;

std::size_t CountTables(const FromItem& item) {
    const auto* join = std::get_if<Join>(&item.node);
    return join == nullptr ? 1 : CountTables(*join->left) + CountTables(*join->right);
}

bool IsEqualityOfColumn(const Conjunct& condition) {
    const auto* comparison = condition.expression->As<Binary>();
    return comparison != nullptr && comparison->op == BinaryOperator::Equal &&
           (ColumnOf(*comparison->left) || ColumnOf(*comparison->right));
}

/// A part of the FROM clause on its way into the plan.
struct Relation {
    ProducerPtr rows;
    std::vector<std::size_t> sources;

    [[nodiscard]] SourceSet Set() const {
        SourceSet set = 0;
        for (const std::size_t source : sources) {
            set |= SetOf(source);
        }
        return set;
    }
};

SourceSet Range(std::size_t first, std::size_t count) {
    return (SetOf(count) - 1) << first;
}

/// The conditions of a join, sorted by what the outer and inner sides must have in common.
struct JoinTerms {
    struct Equality {
        const Expression* outer;
        const Expression* inner;
    };
    std::vector<Equality> equalities;
    Conjuncts others;
};

class Planner {
 public:
    explicit Planner(const CompileScope& scope, RowParts known = {})
        : scope_(scope), known_(std::move(known)) {}

    Plan Make(const Select& select) {
        Conjuncts where;
        AppendConjuncts(select.where, where);
        Plan plan;
        plan.constants = CompileAll(TakeWithin(where, 0));
        if (select.from.empty()) {
            plan.rows = std::make_unique<const SingleRowProducer>();
        } else {
            plan.rows = FromClause(select.from, where);
        }
        return plan;
    }

    ProducerPtr Make(const std::vector<FromItem>& from, const Conjuncts& links) {
        return FromList(from, from.size(), links).rows;
    }

 private:
    /// The rows of the whole clause: all at once, or by the ways in which one of the conditions can be true
    /// when that promises less work.
    ProducerPtr FromClause(const std::vector<FromItem>& from, const Conjuncts& where) {
        Relation whole = FromList(from, from.size(), where);
        for (const Conjunct& condition : where) {
            ProducerPtr ways = ThroughAlternatives(from, where, *condition.expression, whole);
            if (ways != nullptr) {
                return ways;
            }
        }
        return std::move(whole.rows);
    }

    /// Null when the condition has no ways of its own or they cost more than the whole.
    ProducerPtr ThroughAlternatives(const std::vector<FromItem>& from, const Conjuncts& where,
                                    const Expression& condition, const Relation& whole) {
        const double most = whole.rows->Cost();
        double cost = 0;
        std::vector<ProducerPtr> alternatives;
        for (const ExpressionPtr& way : AlternativesOf(condition)) {
            Conjuncts conditions = where;
            AppendConjuncts(way, conditions);
            nextSource_ = 0;
            alternatives.push_back(FromList(from, from.size(), std::move(conditions)).rows);
            cost += alternatives.back()->Cost() + alternatives.back()->Estimate();
            if (cost >= most) {
                return nullptr;
            }
        }
        if (alternatives.empty()) {
            return nullptr;
        }
        return std::make_unique<const AlternativesProducer>(std::move(alternatives), whole.sources);
    }

    NodeList CompileAll(const Conjuncts& conjuncts) {
        NodeList nodes;
        for (const Conjunct& conjunct : conjuncts) {
            nodes.push_back(CompileCondition(*conjunct.expression, scope_));
        }
        return nodes;
    }

    /// The first `count` parts of the clause, joined without conditions of their own.
    Relation FromList(const std::vector<FromItem>& from, std::size_t count, Conjuncts conditions) {
        const FromItem& last = from[count - 1];
        if (count == 1) {
            return Build(last, std::move(conditions));
        }
        std::size_t before = 0;
        for (std::size_t i = 0; i + 1 < count; ++i) {
            before += CountTables(from[i]);
        }
        Conjuncts left = TakeWithin(conditions, Range(0, before));
        Conjuncts right = TakeWithin(conditions, Range(before, CountTables(last)));
        Relation first = FromList(from, count - 1, std::move(left));
        return InnerJoin(std::move(first), Build(last, std::move(right)), conditions);
    }

    /// `conditions` are those of WHERE and of surrounding joins that look at this part's sources only.
    Relation Build(const FromItem& item, Conjuncts conditions) {
        if (const auto* join = std::get_if<Join>(&item.node)) {
            return KeepsRows(*join, conditions) ? BuildOuter(*join, std::move(conditions))
                                                : BuildInner(*join, std::move(conditions));
        }
        const std::size_t source = nextSource_++;
        Relation relation;
        relation.sources = {source};
        if (source < known_.size() && known_[source]) {
            relation.rows = std::make_unique<const FilterProducer>(
                std::make_unique<const KnownRowProducer>(source, *known_[source]), CompileAll(conditions));
            return relation;
        }
        if (const auto& query = (*scope_.sources)[source].query) {
            relation.rows = std::make_unique<const QueryProducer>(source, query, CompileAll(conditions));
            return relation;
        }
        auto range = ChooseRange(source, conditions, scope_);
        const bool selective = std::any_of(conditions.begin(), conditions.end(), IsEqualityOfColumn);
        relation.rows = std::make_unique<const TableProducer>(
            source, *(*scope_.sources)[source].table, CompileAll(conditions), std::move(range), selective);
        return relation;
    }

    /// Whether rows without a partner can stay in the result: no condition may refuse them.
    [[nodiscard]] bool KeepsRows(const Join& join, const Conjuncts& conditions) const {
        const std::size_t leftCount = CountTables(*join.left);
        const SourceSet optional = join.kind == JoinKind::Left
                                       ? Range(nextSource_ + leftCount, CountTables(*join.right))
                                       : Range(nextSource_, leftCount);
        return join.kind != JoinKind::Inner &&
               std::none_of(conditions.begin(), conditions.end(), [optional](const Conjunct& condition) {
                   return RefusesMissing(*condition.expression, optional);
               });
    }

    Relation BuildInner(const Join& join, Conjuncts conditions) {
        AppendConjuncts(join.on, conditions);
        const std::size_t leftCount = CountTables(*join.left);
        Conjuncts left = TakeWithin(conditions, Range(nextSource_, leftCount));
        Conjuncts right = TakeWithin(conditions, Range(nextSource_ + leftCount, CountTables(*join.right)));
        Relation first = Build(*join.left, std::move(left));
        return InnerJoin(std::move(first), Build(*join.right, std::move(right)), conditions);
    }

    /// The side that keeps its rows takes the conditions of WHERE on it alone; the other side takes those of
    /// ON. What WHERE asks of the other side is tested behind the join, on rows that stay empty as well.
    Relation BuildOuter(const Join& join, Conjuncts conditions) {
        const std::size_t leftCount = CountTables(*join.left);
        const SourceSet leftSet = Range(nextSource_, leftCount);
        const SourceSet rightSet = Range(nextSource_ + leftCount, CountTables(*join.right));
        const bool keepsLeft = join.kind == JoinKind::Left;
        Conjuncts on;
        AppendConjuncts(join.on, on);
        Conjuncts kept = TakeWithin(conditions, keepsLeft ? leftSet : rightSet);
        Conjuncts optional = TakeWithin(on, keepsLeft ? rightSet : leftSet);
        Relation left = Build(*join.left, std::move(keepsLeft ? kept : optional));
        Relation right = Build(*join.right, std::move(keepsLeft ? optional : kept));
        Relation joined =
            MakeJoin(std::move(keepsLeft ? left : right), std::move(keepsLeft ? right : left), on, true);
        if (!conditions.empty()) {
            joined.rows =
                std::make_unique<const FilterProducer>(std::move(joined.rows), CompileAll(conditions));
        }
        return joined;
    }

    Relation InnerJoin(Relation left, Relation right, const Conjuncts& on) {
        const double straight = CostOf(left, right, on);
        const double swapped = CostOf(right, left, on);
        if (swapped < straight) {
            std::swap(left, right);
        }
        return MakeJoin(std::move(left), std::move(right), on, false);
    }

    JoinTerms TermsOf(const Relation& outer, const Relation& inner, const Conjuncts& on) {
        JoinTerms terms;
        for (const Conjunct& conjunct : on) {
            const auto* equality = conjunct.expression->As<Binary>();
            if (equality == nullptr || equality->op != BinaryOperator::Equal ||
                !AddEquality(*equality, outer.Set(), inner.Set(), terms)) {
                terms.others.push_back(conjunct);
            }
        }
        return terms;
    }

    /// An equality between one side and the other, of one known class of types: the values can be looked up.
    bool AddEquality(const Binary& equality, SourceSet outer, SourceSet inner, JoinTerms& terms) {
        const SourceSet left = SourcesOf(*equality.left);
        const SourceSet right = SourcesOf(*equality.right);
        const TypeClass typeClass = ClassOf(Compile(*equality.left, scope_)->Type());
        if (left == 0 || right == 0 || typeClass == TypeClass::Unknown ||
            typeClass != ClassOf(Compile(*equality.right, scope_)->Type())) {
            return false;
        }
        if (IsWithin(left, outer) && IsWithin(right, inner)) {
            terms.equalities.push_back({equality.left.get(), equality.right.get()});
            return true;
        }
        if (IsWithin(right, outer) && IsWithin(left, inner)) {
            terms.equalities.push_back({equality.right.get(), equality.left.get()});
            return true;
        }
        return false;
    }

    /// The equalities that an index of the inner table serves, and that index.
    std::optional<JoinIndex> FindIndexed(const Relation& inner, const JoinTerms& terms) {
        const TableProducer* table = inner.rows->AsTable();
        if (table == nullptr) {
            return std::nullopt;
        }
        std::vector<JoinColumn> columns;
        for (std::size_t i = 0; i < terms.equalities.size(); ++i) {
            if (const auto column = ColumnOf(*terms.equalities[i].inner)) {
                columns.push_back({column->column, Compile(*terms.equalities[i].outer, scope_)->Type(), i});
            }
        }
        return IndexForJoin(table->Table(), columns);
    }

    static double CostThroughIndex(const Relation& outer) { return outer.rows->Estimate() * kSeekCost; }
    static double CostThroughHash(const Relation& inner) {
        return inner.rows->Cost() + inner.rows->Estimate() * kHashCost;
    }
    static bool PrefersIndex(const Relation& outer, const Relation& inner) {
        return CostThroughIndex(outer) < CostThroughHash(inner);
    }

    double CostOf(const Relation& outer, const Relation& inner, const Conjuncts& on) {
        const bool throughIndex = PrefersIndex(outer, inner) && FindIndexed(inner, TermsOf(outer, inner, on));
        return outer.rows->Cost() + outer.rows->Estimate() +
               (throughIndex ? CostThroughIndex(outer) : CostThroughHash(inner));
    }

    Relation MakeJoin(Relation outer, Relation inner, const Conjuncts& on, bool keepOuter) {
        const JoinTerms terms = TermsOf(outer, inner, on);
        const auto indexed = FindIndexed(inner, terms);
        const bool throughIndex = indexed && PrefersIndex(outer, inner);
        Relation joined;
        joined.sources = outer.sources;
        joined.sources.insert(joined.sources.end(), inner.sources.begin(), inner.sources.end());
        // Conditions may leave far fewer outer rows than expected.
        const TableProducer* table = outer.rows->AsTable();
        const bool mayBeFew = indexed && (table == nullptr || table->HasConditions());

        JoinParts parts;
        parts.outer = std::move(outer.rows);
        parts.inner = std::move(inner.rows);
        parts.innerSources = std::move(inner.sources);
        parts.on = CompileAll(terms.others);
        parts.keepOuter = keepOuter;
        joined.rows = std::make_unique<const JoinProducer>(
            std::move(parts),
            throughIndex || mayBeFew ? std::optional(ThroughIndex(terms, *indexed, throughIndex))
                                     : std::nullopt,
            ThroughHash(terms));
        return joined;
    }

    JoinByIndex ThroughIndex(const JoinTerms& terms, const JoinIndex& indexed, bool forMany) {
        JoinByIndex way;
        way.index = indexed.index;
        way.forMany = forMany;
        for (const std::size_t sought : indexed.columns) {
            way.outerKeys.push_back(Compile(*terms.equalities[sought].outer, scope_));
        }
        for (std::size_t i = 0; i < terms.equalities.size(); ++i) {
            if (std::find(indexed.columns.begin(), indexed.columns.end(), i) == indexed.columns.end()) {
                way.on.push_back(MakeComparison(BinaryOperator::Equal,
                                                Compile(*terms.equalities[i].outer, scope_),
                                                Compile(*terms.equalities[i].inner, scope_)));
            }
        }
        return way;
    }

    JoinByHash ThroughHash(const JoinTerms& terms) {
        JoinByHash way;
        for (const JoinTerms::Equality& equality : terms.equalities) {
            way.outerKeys.push_back(Compile(*equality.outer, scope_));
            way.innerKeys.push_back(Compile(*equality.inner, scope_));
        }
        return way;
    }

    const CompileScope& scope_;
    RowParts known_;  ///< of which sources one row is known; may be shorter
    std::size_t nextSource_ = 0;
};

}  // namespace

Plan MakePlan(const Select& select, const CompileScope& scope) {
    return Planner(scope).Make(select);
}

ProducerPtr PlanAround(const RowParts& known, const std::vector<FromItem>& from, const ExpressionPtr& where,
                       const CompileScope& scope) {
    Conjuncts links;
    AppendConjuncts(where, links);
    std::erase_if(links, [](const Conjunct& condition) { return !LinkOf(*condition.expression); });
    return Planner(scope, known).Make(from, links);
}

}  // namespace quardele::sql
