// Making files, and changing the structure of their tables.

#include <jet/database.h>

#include "empty_file.h"
#include "engine.h"
#include "new_file.h"
#include "table_creation.h"

namespace quardele::jet {

std::shared_ptr<Database> Database::Create(const std::filesystem::path& file) {
    NewFile created(file);
    WriteEmptyFile(created.File());
    created.Publish();
    return Open(file, OpenMode::Exclusive);
}

void Database::CreateTable(const TableDesign& design) {
    StructureChange change(*engine_);
    MakeTable(change, design);
    change.Commit();
}

}  // namespace quardele::jet
