#include "plan/source.h"

#include <algorithm>

#include <basic/conversion.h>

#include "plan/statement_plan.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

void CollectLeaves(const FromItem& item, std::vector<const FromItem*>& leaves) {
    const auto* join = std::get_if<Join>(&item.node);
    if (join == nullptr) {
        leaves.push_back(&item);
        return;
    }
    CollectLeaves(*join->left, leaves);
    CollectLeaves(*join->right, leaves);
}

std::shared_ptr<const SelectPlan> PlanQuery(jet::Database& database, const NestedQuery& query,
                                            OuterScope* outer) {
    SelectPlan plan = MakeStatementPlan(database, Clone(*query.statement), outer);
    plan.fixedValues = true;
    return std::make_shared<const SelectPlan>(std::move(plan));
}

Source Open(jet::Database& database, const FromItem& leaf, OuterScope* outer) {
    if (const auto* table = std::get_if<TableName>(&leaf.node)) {
        return {table->Label(), database.OpenTable(table->name), nullptr};
    }
    const auto& query = std::get<NestedQuery>(leaf.node);
    return {query.label, nullptr, PlanQuery(database, query, outer)};
}

}  // namespace

std::size_t Source::ColumnCount() const {
    return table ? table->Columns().size() : query->columns.size();
}

int Source::FindColumn(TextView name) const {
    if (table) {
        return table->FindColumn(name);
    }
    const auto found =
        std::find_if(query->columns.begin(), query->columns.end(),
                     [name](const ResultColumn& column) { return basic::EqualNoCase(column.name, name); });
    return found == query->columns.end() ? -1 : static_cast<int>(found - query->columns.begin());
}

const Text& Source::ColumnName(int column) const {
    const auto position = static_cast<std::size_t>(column);
    return table ? table->Columns()[position].name : query->columns[position].name;
}

StaticType Source::ColumnType(int column) const {
    const auto position = static_cast<std::size_t>(column);
    return table ? StaticType(table->Columns()[position].type) : query->itemNodes[position]->Type();
}

int Source::ColumnSize(int column) const {
    const auto position = static_cast<std::size_t>(column);
    return table ? table->Columns()[position].size : query->columns[position].size;
}

std::vector<Source> OpenSources(jet::Database& database, const std::vector<FromItem>& from,
                                OuterScope* outer) {
    std::vector<const FromItem*> leaves;
    for (const FromItem& item : from) {
        CollectLeaves(item, leaves);
    }
    if (leaves.size() > kMostSources) {
        FailTooComplex(u"plus de " + basic::NumberText(kMostSources) + u" tables dans la clause FROM");
    }
    std::vector<Source> sources;
    UnknownNames unknown;
    for (const FromItem* leaf : leaves) {
        Source source;
        try {
            source = Open(database, *leaf, outer);
        } catch (const MissingParameters& missing) {
            unknown.insert(missing.Names().begin(), missing.Names().end());
            continue;
        }
        const bool taken = std::any_of(sources.begin(), sources.end(), [&source](const Source& other) {
            return !source.label.empty() && basic::EqualNoCase(other.label, source.label);
        });
        if (taken) {
            FailNaming(error::kDuplicateSource, source.label);
        }
        sources.push_back(std::move(source));
    }
    if (!unknown.empty()) {
        throw MissingParameters(std::move(unknown));
    }
    return sources;
}

}  // namespace quardele::sql
