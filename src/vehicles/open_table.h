// Tables of the data database, ready to be searched by their keys.
#pragma once

#include <memory>

#include <dao/dao.h>

namespace quardele::vehicles {

/// Throws RuntimeError 91 when start-up has left no data database.
[[nodiscard]] dao::Database& DataDatabase();

/// A table recordset on its primary key. Throws as DataDatabase, and the engine's errors.
[[nodiscard]] std::shared_ptr<dao::Recordset> OpenTable(basic::TextView name);

}  // namespace quardele::vehicles
