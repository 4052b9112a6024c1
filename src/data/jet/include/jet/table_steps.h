// One step over tables that may lie in several files.
#pragma once

#include <map>
#include <memory>
#include <span>

#include <jet/step.h>
#include <jet/table.h>

namespace quardele::jet {

/// An open step in every database that the tables lie in: linked ones lie in files of their own. The tables
/// must outlive it.
class TableSteps {
 public:
    /// Throws as Database::Begin.
    explicit TableSteps(std::span<const std::shared_ptr<Table>> tables);

    /// Writes one file after the other. Files do not fail together: on an error those that were written
    /// before stay so.
    void Commit();

 private:
    std::map<Database*, Step> steps_;
};

}  // namespace quardele::jet
