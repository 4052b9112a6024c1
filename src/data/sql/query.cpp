#include <sql/query.h>

#include <utility>

#include "plan/prepared_select.h"
#include "plan/statement_plan.h"
#include "rows/executor.h"
#include "rows/row_set_data.h"
#include "syntax/parser.h"

namespace quardele::sql {

std::shared_ptr<Query> Query::Prepare(std::shared_ptr<jet::Database> database, TextView statement,
                                      RowValues values) {
    SelectPlan plan = MakeStatementPlan(*database, ParseStatement(statement));
    plan.fixedValues = plan.fixedValues || values == RowValues::Fixed;
    return std::make_shared<Query>(std::make_unique<PreparedSelect>(std::move(database), std::move(plan)));
}

Query::Query(std::unique_ptr<PreparedSelect> select) : select_(std::move(select)) {}

Query::~Query() = default;

const std::vector<ResultColumn>& Query::Columns() const {
    return select_->Plan().columns;
}

int Query::FindColumn(TextView name) const {
    const SelectPlan& plan = select_->Plan();
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        if (basic::EqualNoCase(plan.columns[i].name, name)) {
            return static_cast<int>(i);
        }
    }
    for (std::size_t i = 0; i < plan.columns.size(); ++i) {
        if (basic::EqualNoCase(plan.QualifiedName(i), name)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

const std::vector<std::shared_ptr<jet::Table>>& Query::Sources() const {
    static const std::vector<std::shared_ptr<jet::Table>> kNone;
    return select_->Plan().ReadsQuery() ? kNone : select_->Plan().tables;
}

bool Query::IsOneSide(std::size_t source) const {
    return select_->Plan().oneSides[source];
}

std::vector<std::optional<jet::RowId>> Query::Completed(std::vector<std::optional<jet::RowId>> parts) const {
    const SelectPlan& plan = select_->Plan();
    const ProducerPtr rows = PlanAround(parts, plan.from, plan.where, plan.SourceScope());
    RowContext row(plan.tables);
    rows->Produce(row, [&] {
        RowParts found(parts.size());
        for (std::size_t source = 0; source < found.size(); ++source) {
            const jet::RowId key = row.KeyOf(source);
            found[source] = key == kNoRow ? std::nullopt : std::optional(key);
            if (parts[source] && found[source] != parts[source]) {
                return true;  // an outer join has left the known row out
            }
        }
        parts = std::move(found);
        return false;
    });
    return parts;
}

RowSet Query::Run() const {
    return RowSet(
        std::make_shared<RowSet::Data>(shared_from_this(), select_->Plan(), Execute(select_->Plan())));
}

RowSet Query::RunInSteps() const {
    const SelectPlan& plan = select_->Plan();
    if (!plan.IsKeyed()) {
        return Run();
    }
    if (auto rest = PendingRows::Of(plan)) {
        return RowSet(std::make_shared<RowSet::Data>(shared_from_this(), plan, std::move(rest)));
    }
    return RowSet(std::make_shared<RowSet::Data>(shared_from_this(), plan, ExecuteMarked(plan)));
}

}  // namespace quardele::sql
