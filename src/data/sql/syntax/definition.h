// Running statements that change the structure.
#pragma once

#include <jet/database.h>

#include "syntax/action.h"

namespace quardele::sql {

// To be called within a step: an error may come when a part is done already. Besides the errors of
// jet::Database: 3061 for a default that needs names.

void RunDefinition(jet::Database& database, const CreateTableAction& create);
void RunDefinition(jet::Database& database, const CreateIndexAction& create);
void RunDefinition(jet::Database& database, const AlterTableAction& alter);
void RunDefinition(jet::Database& database, const DropTableAction& drop);

}  // namespace quardele::sql
