// The engine and its one workspace.
#include <basic/runtime_error.h>
#include <dao/database.h>
#include <jet/types.h>

#include "database_impl.h"

namespace quardele::dao {

DBEngine& DBEngine::Instance() {
    static DBEngine engine;
    return engine;
}

Workspace& DBEngine::Workspaces(int index) {
    if (index != 0) {
        throw basic::RuntimeError(basic::error::kNoSuchField);
    }
    return workspace_;
}

void DBEngine::Idle(int option) {
    constexpr int kRefreshCache = 1;
    if (option != kRefreshCache) {
        return;
    }
    for (const auto& entry : open_) {
        if (const auto file = entry.lock()) {
            file->Refresh();
        }
    }
}

std::shared_ptr<Database> Workspace::OpenDatabase(TextView windowsPath, bool exclusive, bool readOnly) {
    jet::OpenMode mode = jet::OpenMode::Shared;
    if (readOnly) {
        mode = jet::OpenMode::ReadOnly;
    } else if (exclusive) {
        mode = jet::OpenMode::Exclusive;
    }
    return std::make_shared<Database>(DatabaseImpl::Open(windowsPath, mode));
}

}  // namespace quardele::dao
