#include "rows/row_change.h"

#include <algorithm>
#include <map>
#include <memory>
#include <utility>

#include <basic/conversion.h>
#include <jet/table_steps.h>
#include <sql/default_value.h>
#include <sql/query.h>

#include "plan/prepared_select.h"
#include "plan/statement_plan.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

using Changes = std::vector<jet::ColumnChange>;

std::shared_ptr<Query> MakeQuery(jet::Database& database, SelectPlan plan) {
    return std::make_shared<Query>(
        std::make_unique<PreparedSelect>(database.shared_from_this(), std::move(plan)));
}

void RequireReach(const ActionPlace& place, const jet::Table& table) {
    if (place.isPart && &table.Home() != &place.database) {
        throw basic::RuntimeError(error::kOperationNotSupported,
                                  u"La table « " + table.Name() +
                                      u" » est liée : elle ne peut pas être modifiée avec d'autres en une "
                                      u"seule étape.");
    }
}

// INSERT INTO.

/// The columns that the values of an INSERT INTO go to.
std::vector<int> TargetColumns(const jet::Table& table, const std::vector<Text>& names) {
    std::vector<int> columns;
    if (names.empty()) {
        for (std::size_t i = 0; i < table.Columns().size(); ++i) {
            columns.push_back(static_cast<int>(i));
        }
    }
    for (const Text& name : names) {
        const int column = table.FindColumn(name);
        if (column < 0) {
            FailNaming(error::kUnknownInsertField, name);
        }
        if (std::find(columns.begin(), columns.end(), column) != columns.end()) {
            FailNaming(error::kDuplicateTarget, name);
        }
        columns.push_back(column);
    }
    return columns;
}

void RequireValueCount(std::size_t values, std::size_t columns) {
    if (values != columns) {
        throw basic::RuntimeError(error::kValueCount, u"Le nombre de valeurs de la requête (" +
                                                          basic::NumberText(static_cast<double>(values)) +
                                                          u") et le nombre de champs de destination (" +
                                                          basic::NumberText(static_cast<double>(columns)) +
                                                          u") ne sont pas les mêmes.");
    }
}

/// The default values of the columns that no value goes to.
Changes DefaultsBeside(jet::Database& database, const jet::Table& table, const std::vector<int>& columns) {
    Changes row;
    for (const int column : columns) {
        row.push_back({column, {}});
    }
    AddDefaults(database, table, row);
    row.erase(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(columns.size()));
    return row;
}

// UPDATE.

/// SELECT value, ..., target, ... over the rows to be changed: what names mean is found once for both.
Statement QueryOf(UpdateAction update) {
    Select select;
    select.from = std::move(update.from);
    select.where = std::move(update.where);
    select.items.resize(2 * update.assignments.size());
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        select.items[i].expression = std::move(update.assignments[i].value);
        select.items[update.assignments.size() + i].expression = std::move(update.assignments[i].target);
    }
    Statement statement;
    statement.selects.push_back(std::move(select));
    return statement;
}

class Update {
 public:
    Update(const ActionPlace& place, std::shared_ptr<const Query> query)
        : place_(place), query_(std::move(query)), rows_(query_->Run()) {
        RequireTargets();
    }

    std::size_t Run() {
        CollectChanges();
        std::vector<std::shared_ptr<jet::Table>> tables;
        for (const auto& [source, changes] : changes_) {
            tables.push_back(query_->Sources()[source]);
            RequireReach(place_, *tables.back());
        }
        jet::TableSteps steps(tables);
        for (const auto& [source, changes] : changes_) {
            for (const auto& [row, values] : changes) {
                query_->Sources()[source]->Update(row, values);
            }
        }
        steps.Commit();
        return written_;
    }

 private:
    [[nodiscard]] std::size_t Count() const { return query_->Columns().size() / 2; }
    [[nodiscard]] const ResultColumn& Target(std::size_t i) const { return query_->Columns()[Count() + i]; }

    void RequireTargets() const {
        for (std::size_t i = 0; i < Count(); ++i) {
            if (!rows_.IsUpdatable(static_cast<int>(Count() + i))) {
                FailNaming(error::kNotUpdatable, Target(i).name);
            }
            for (std::size_t other = 0; other < i; ++other) {
                if (Target(other).source == Target(i).source &&
                    Target(other).sourceColumn == Target(i).sourceColumn) {
                    FailNaming(error::kDuplicateTarget, Target(i).name);
                }
            }
        }
    }

    void CollectChanges() {
        for (std::size_t row = 0; row < rows_.Size(); ++row) {
            std::map<std::size_t, Changes> changes;
            for (std::size_t i = 0; i < Count(); ++i) {
                changes[*Target(i).source].push_back(
                    {Target(i).sourceColumn, rows_.Value(row, static_cast<int>(i))});
            }
            bool written = false;
            for (auto& [source, values] : changes) {
                if (const auto id = rows_.Key(row, source)) {
                    changes_[source].emplace_back(*id, std::move(values));
                    written = true;
                }
            }
            written_ += written ? 1 : 0;
        }
    }

    const ActionPlace& place_;
    std::shared_ptr<const Query> query_;
    RowSet rows_;
    std::map<std::size_t, std::vector<std::pair<jet::RowId, Changes>>> changes_;  ///< by source
    std::size_t written_ = 0;  ///< rows of the query that have something to be written in a table
};

// DELETE.

std::size_t TargetOf(const DeleteAction& remove, const std::vector<Source>& sources) {
    if (remove.target.empty() && sources.size() == 1) {
        return 0;
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (basic::EqualNoCase(sources[i].label, remove.target)) {
            return i;
        }
    }
    throw basic::RuntimeError(
        error::kSyntaxInDelete,
        u"Indiquez la table de la clause FROM qui contient les enregistrements à supprimer.");
}

}  // namespace

std::size_t RunInsert(const ActionPlace& place, InsertAction insert) {
    jet::Database& database = place.database;
    const auto table = database.OpenTable(insert.table);
    RequireReach(place, *table);
    const std::vector<int> columns = TargetColumns(*table, insert.columns);
    SelectPlan plan = MakeStatementPlan(database, std::move(insert.source));
    RequireValueCount(plan.columns.size(), columns.size());
    plan.fixedValues = true;
    const auto query = MakeQuery(database, std::move(plan));
    const RowSet rows = query->Run();
    const Changes defaults = DefaultsBeside(database, *table, columns);
    jet::TableSteps steps({&table, 1});
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        Changes values = defaults;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            values.push_back({columns[i], rows.Value(row, static_cast<int>(i))});
        }
        table->Insert(values);
    }
    steps.Commit();
    return rows.Size();
}

std::size_t RunUpdate(const ActionPlace& place, UpdateAction update) {
    SelectPlan plan = MakeStatementPlan(place.database, QueryOf(std::move(update)));
    return Update(place, MakeQuery(place.database, std::move(plan))).Run();
}

std::size_t RunDelete(const ActionPlace& place, DeleteAction remove) {
    jet::Database& database = place.database;
    Statement statement;
    statement.selects.emplace_back();
    statement.selects.front().from = std::move(remove.from);
    statement.selects.front().where = std::move(remove.where);
    SelectPlan plan = MakeStatementPlan(database, std::move(statement));
    const std::size_t source = TargetOf(remove, plan.sources);
    const auto query = MakeQuery(database, std::move(plan));
    const RowSet rows = query->Run();
    std::vector<jet::RowId> ids;
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        if (const auto id = rows.Key(row, source)) {
            ids.push_back(*id);
        }
    }
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    const std::shared_ptr<jet::Table>& table = query->Sources()[source];
    RequireReach(place, *table);
    jet::TableSteps steps({&table, 1});
    for (const jet::RowId id : ids) {
        table->Delete(id);
    }
    steps.Commit();
    return ids.size();
}

}  // namespace quardele::sql
