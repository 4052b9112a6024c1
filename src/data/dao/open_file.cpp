#include "open_file.h"

#include <system_error>

#include <dao/database.h>

namespace quardele::dao {

std::shared_ptr<OpenFile> OpenFile::Open(const std::filesystem::path& place, jet::OpenMode mode) {
    auto& open = DBEngine::Instance().open_;
    std::erase_if(open, [](const auto& entry) { return entry.expired(); });
    for (const auto& entry : open) {
        const std::shared_ptr<OpenFile> file = entry.lock();
        std::error_code failure;
        if (mode != jet::OpenMode::Exclusive && file->mode_ == mode &&
            std::filesystem::equivalent(file->database_->File(), place, failure)) {
            file->Refresh();
            return file;
        }
    }
    auto file = std::make_shared<OpenFile>(jet::Database::Open(place, mode), mode);
    open.push_back(file);
    return file;
}

OpenFile::OpenFile(std::shared_ptr<jet::Database> database, jet::OpenMode mode)
    : database_(std::move(database)), mode_(mode) {}

bool OpenFile::Take(const jet::Table& table, jet::RowId row) {
    return taken_.emplace(&table, row).second;
}

void OpenFile::Release(const jet::Table& table, jet::RowId row) {
    taken_.erase({&table, row});
}

}  // namespace quardele::dao
