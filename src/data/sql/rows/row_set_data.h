// What the copies of one RowSet share.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include <sql/query.h>

#include "plan/find_index.h"
#include "rows/executor.h"
#include "rows/pending_rows.h"
#include "rows/row_context.h"

namespace quardele::sql {

struct RowSet::Data {
    Data(std::shared_ptr<const Query> ofQuery, const SelectPlan& ofPlan, ResultRows found);
    /// Of a run that finds its rows in steps.
    Data(std::shared_ptr<const Query> ofQuery, const SelectPlan& ofPlan, std::unique_ptr<PendingRows> rest);

    /// Finds rows until there are so many or no more to come.
    void Find(std::size_t wanted);
    /// Whether there is such a row; looks no further than a step behind it.
    [[nodiscard]] bool Has(std::size_t row) {
        Find(row + 1);
        return row < rows.size;
    }
    void FindAll() { Find(SIZE_MAX); }

    /// The context of a row. The row that was looked at last stays read until another one is asked for or
    /// it is forgotten.
    RowContext& At(std::size_t row);
    void Forget(std::size_t row);
    void ForgetAll();
    std::size_t Append(std::span<const std::optional<jet::RowId>> keys);
    void Replace(std::size_t row, std::span<const std::optional<jet::RowId>> keys);
    void MarkDeleted(std::size_t row, std::size_t source);
    /// Whether no row of a source stands twice in the result.
    [[nodiscard]] bool IsUnique(std::size_t source);

    std::shared_ptr<const Query> query;
    const SelectPlan& plan;
    ResultRows rows;
    /// For FindFirst and its kin, by the text of the expression that is looked up.
    std::map<Text, FindIndex> findIndexes;
    /// Rows that may have changed since indexes were built.
    std::set<std::size_t> forgotten;

    /// A row's part has come to be, or to have another key, by this program's own doing.
    void Remark(std::size_t row, std::size_t source);

 private:
    /// Puts a row's part into the context; one in whose place another row lies counts as deleted. A part that
    /// was not read when it was found is marked now: somebody is going to see it.
    void SetPart(std::size_t row, std::size_t source);

    std::unique_ptr<PendingRows> pending_;  ///< null once all rows are found
    RowContext context_;
    std::optional<std::size_t> current_;
    std::vector<std::optional<bool>> unique_;
};

}  // namespace quardele::sql
