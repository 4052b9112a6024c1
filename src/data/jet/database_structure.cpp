// Making files, and changing the structure of their tables.

#include <jet/database.h>

#include <basic/runtime_error.h>

#include "engine.h"
#include "newfile/empty_file.h"
#include "newfile/new_file.h"
#include "structure/catalog_rows.h"
#include "structure/column_addition.h"
#include "structure/index_creation.h"
#include "structure/table_creation.h"
#include "structure/table_removal.h"

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

void Database::DropTable(TextView name) {
    StructureChange change(*engine_);
    RemoveTable(change, change.Changeable(name, basic::error::kCannotDropTable));
    change.Commit();
}

void Database::AddColumn(TextView table, const Column& column) {
    StructureChange change(*engine_);
    AppendColumn(change, change.Changeable(table), column);
    change.Commit();
}

void Database::CreateIndex(TextView table, const IndexDesign& design) {
    StructureChange change(*engine_);
    MakeIndex(change, change.Changeable(table), design);
    change.Commit();
}

void Database::SetColumnRules(TextView table, TextView column, const Column& rules) {
    StructureChange change(*engine_);
    const CatalogTable& found = change.Changeable(table);
    const TableDef def = TableDef::Read(change.Pages(), found.page);
    const int ordinal = def.FindColumn(column);
    if (ordinal < 0) {
        throw basic::RuntimeError(basic::error::kNoSuchField,
                                  basic::Describe(basic::error::kNoSuchField, column));
    }
    Column changed = def.columns[static_cast<std::size_t>(ordinal)];
    changed.required = rules.required;
    changed.allowZeroLength = rules.allowZeroLength;
    changed.defaultValue = rules.defaultValue;
    CatalogRows catalog(change);
    catalog.StoreRulesOf(found, changed);
    catalog.NoteChange(found);
    change.Commit();
}

}  // namespace quardele::jet
