#include "syntax/definition.h"

#include <sql/default_value.h>

namespace quardele::sql {
namespace {

/// A default that can never be worked out is told now, not to whoever adds the first row. That of an
/// AutoNumber only says how the engine makes its values.
void RequireDefault(jet::Database& database, const jet::Column& column) {
    if (!column.autoNumber) {
        static_cast<void>(DefaultValue(database, column.defaultValue));
    }
}

}  // namespace

void RunDefinition(jet::Database& database, const CreateTableAction& create) {
    for (const jet::Column& column : create.design.columns) {
        RequireDefault(database, column);
    }
    database.CreateTable(create.design);
}

void RunDefinition(jet::Database& database, const CreateIndexAction& create) {
    database.CreateIndex(create.table, create.design);
}

void RunDefinition(jet::Database& database, const AlterTableAction& alter) {
    if (alter.column) {
        RequireDefault(database, *alter.column);
        database.AddColumn(alter.table, *alter.column);
    }
    for (const jet::IndexDesign& index : alter.indexes) {
        database.CreateIndex(alter.table, index);
    }
}

void RunDefinition(jet::Database& database, const DropTableAction& drop) {
    database.DropTable(drop.table);
}

}  // namespace quardele::sql
