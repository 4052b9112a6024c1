#include "open_table.h"

#include <basic/runtime_error.h>
#include <shell/session.h>

namespace quardele::vehicles {

dao::Database& DataDatabase() {
    const std::shared_ptr<dao::Database>& database = shell::TheSession().BD_DONNEES;
    if (!database) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *database;
}

std::shared_ptr<dao::Recordset> OpenTable(basic::TextView name) {
    std::shared_ptr<dao::Recordset> table = DataDatabase().OpenRecordset(name, dao::RecordsetType::Table);
    table->SetIndex(u"PrimaryKey");
    dao::DBEngine::Instance().Idle(1);
    return table;
}

}  // namespace quardele::vehicles
