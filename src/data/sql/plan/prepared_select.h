// What stands behind a Query.
#pragma once

#include <memory>

#include "plan/select_plan.h"

namespace quardele::sql {

class PreparedSelect {
 public:
    PreparedSelect(std::shared_ptr<jet::Database> openDatabase, SelectPlan plan)
        : plan_(std::move(plan)), database_(std::move(openDatabase)) {}

    [[nodiscard]] const SelectPlan& Plan() const { return plan_; }
    [[nodiscard]] jet::Database& Database() const { return *database_; }

 private:
    SelectPlan plan_;
    std::shared_ptr<jet::Database> database_;
};

}  // namespace quardele::sql
