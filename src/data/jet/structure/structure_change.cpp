#include "structure/structure_change.h"

#include <basic/runtime_error.h>

#include "structure/table_use.h"

namespace quardele::jet {

StructureChange::StructureChange(Engine& engine) : engine_(engine), step_(engine), allocator_(step_.Pages()) {
    engine_.ForgetCatalog();  // another process may have changed it before the lock was ours
}

const CatalogTable& StructureChange::Changeable(TextView name, int refusal) {
    const CatalogTable* table = Objects().Find(name);
    if (table == nullptr) {
        throw basic::RuntimeError(basic::error::kNoSuchTable,
                                  basic::Describe(basic::error::kNoSuchTable, name));
    }
    if (table->system || table->linked) {
        throw basic::RuntimeError(refusal, basic::Describe(refusal, name));
    }
    if (TableUse::IsOpenElsewhere(engine_, table->page) || !engine_.ShutOthersOut()) {
        throw basic::RuntimeError(basic::error::kTableInUse,
                                  basic::Describe(basic::error::kTableInUse, name));
    }
    return *table;
}

TableImpl StructureChange::TableOn(std::uint32_t page) {
    return {engine_, nullptr, {}, TableDef::Read(step_.Pages(), page)};
}

void StructureChange::Commit() {
    engine_.ForgetCatalog();
    step_.Commit();
}

}  // namespace quardele::jet
