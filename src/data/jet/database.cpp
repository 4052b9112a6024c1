#include <jet/database.h>

#include <algorithm>

#include <basic/runtime_error.h>

#include "commit/write_step.h"
#include "definitions/linked_table.h"
#include "engine.h"
#include "table_impl.h"

namespace quardele::jet {

Database::Database(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

Database::~Database() = default;

std::shared_ptr<Database> Database::Open(const std::filesystem::path& file, OpenMode mode) {
    return std::shared_ptr<Database>(new Database(std::make_unique<Engine>(file, mode)));
}

const std::filesystem::path& Database::File() const {
    return engine_->Path();
}

bool Database::IsReadOnly() const {
    return engine_->IsReadOnly();
}

std::vector<CatalogEntry> Database::Catalog() const {
    std::vector<CatalogEntry> entries;
    for (const CatalogTable& table : engine_->Objects().Tables()) {
        entries.push_back({.name = table.name, .system = table.system, .linked = table.linked});
    }
    return entries;
}

bool Database::HasTable(TextView name) const {
    return engine_->Objects().Find(name) != nullptr;
}

std::shared_ptr<Table> Database::OpenTable(TextView name) {
    const jet::Catalog& catalog = engine_->Objects();
    const CatalogTable* found = catalog.Find(name);
    if (found == nullptr) {
        throw basic::RuntimeError(basic::error::kNoSuchTable,
                                  basic::Describe(basic::error::kNoSuchTable, name));
    }
    OpenedTable& open = engine_->openTables[basic::UCase(name)];
    std::shared_ptr<Table> table = open.table.lock();
    if (table != nullptr && open.page == found->page && open.changed == found->changed) {
        return table;
    }
    if (found->linked) {
        table = OpenLinkedTable(*engine_, *found);
    } else {
        TableDef def = engine_->Reading([&] { return catalog.Define(*engine_, *found); });
        table = std::make_shared<Table>(
            std::make_unique<TableImpl>(*engine_, shared_from_this(), found->name, std::move(def)));
    }
    open = {.table = table, .page = found->page, .changed = found->changed};
    return table;
}

Step Database::Begin() {
    return Step(std::make_unique<WriteStep>(*engine_));
}

std::uint64_t Database::StateNumber() const {
    return engine_->Cache().Generation();
}

bool Database::IsInStep() const {
    return engine_->openStep != nullptr;
}

void Database::Refresh() {
    engine_->Refresh();
    for (const auto& [name, open] : engine_->openTables) {
        const std::shared_ptr<Table> table = open.table.lock();
        if (table != nullptr && &table->Impl().Owner() != engine_.get()) {
            table->Impl().Owner().Refresh();  // a linked table has an engine of its own
        }
    }
}

}  // namespace quardele::jet
