// The rows of a UNION.
#pragma once

#include <vector>

#include "plan/select_plan.h"

namespace quardele::sql {

/// Hands on the result rows of its parts, one part after the other, as the results of the context. UNION
/// drops rows that came before, UNION ALL does not; the last UNION is left to who takes the rows.
class UnionProducer final : public Producer {
 public:
    /// `all` tells for each part but the first whether ALL stands ahead of it; `types` are those of the
    /// columns, which values of other types are converted to.
    UnionProducer(std::vector<SelectPlan> parts, std::vector<bool> all, std::vector<StaticType> types);

    bool Produce(RowContext& row, const Emit& emit) const override;
    [[nodiscard]] double Estimate() const override;

 private:
    std::vector<SelectPlan> parts_;
    std::vector<StaticType> types_;
    std::size_t distinctParts_ = 0;  ///< so many first parts give each row once
};

}  // namespace quardele::sql
