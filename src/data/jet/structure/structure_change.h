// One change of a file's structure: a step of writing, with the catalogue as the file has it now.
#pragma once

#include <basic/runtime_error.h>

#include "commit/write_step.h"
#include "engine.h"
#include "pages/page_allocator.h"
#include "table_impl.h"

namespace quardele::jet {

class StructureChange {
 public:
    /// Throws 3027 when the file cannot be changed, 3260 when another process does not stop writing.
    explicit StructureChange(Engine& engine);

    [[nodiscard]] Transaction& Pages() { return step_.Pages(); }
    [[nodiscard]] PageAllocator& Allocator() { return allocator_; }
    [[nodiscard]] const jet::Catalog& Objects() { return engine_.Objects(); }
    /// A table as the step has it now; good until its structure changes.
    [[nodiscard]] TableImpl TableOn(std::uint32_t page);
    /// A table of this file that may be changed; from here to the end of the step nobody of another process
    /// comes into the file. Throws 3078 when there is none, `refusal` when it is a system table or a link,
    /// 3211 when another Database of this process has it open or another process is in the file: which
    /// tables that has open cannot be told.
    [[nodiscard]] const CatalogTable& Changeable(TextView name, int refusal = basic::error::kReadOnly);
    void Commit();

 private:
    Engine& engine_;
    WriteStep step_;
    PageAllocator allocator_;
};

}  // namespace quardele::jet
