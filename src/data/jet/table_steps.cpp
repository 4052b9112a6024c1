#include <jet/table_steps.h>

#include <jet/database.h>

namespace quardele::jet {

TableSteps::TableSteps(std::span<const std::shared_ptr<Table>> tables) {
    for (const std::shared_ptr<Table>& table : tables) {
        Database& home = table->Home();
        if (!steps_.contains(&home)) {
            steps_.emplace(&home, home.Begin());
        }
    }
}

void TableSteps::Commit() {
    for (auto& [home, step] : steps_) {
        step.Commit();
    }
}

}  // namespace quardele::jet
