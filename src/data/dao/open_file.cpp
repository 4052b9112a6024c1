#include "open_file.h"

#include <system_error>

#include <basic/runtime_error.h>
#include <dao/database.h>

#include "engine_settings.h"

namespace quardele::dao {

namespace {

// Where the administrator wants the program alone. What nobody here may write it can only read, with others.
std::shared_ptr<jet::Database> OpenAlone(const std::filesystem::path& place) {
    try {
        return jet::Database::Open(place, jet::OpenMode::Exclusive);
    } catch (const basic::RuntimeError& error) {
        if (error.Number() != basic::error::kReadOnly) {
            throw;
        }
        return jet::Database::Open(place, jet::OpenMode::Shared);
    }
}

std::shared_ptr<jet::Database> OpenData(const std::filesystem::path& place, jet::OpenMode mode) {
    const bool alone = mode == jet::OpenMode::Shared && EngineSettings::Session().alone;
    return alone ? OpenAlone(place) : jet::Database::Open(place, mode);
}

}  // namespace

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
    auto file = std::make_shared<OpenFile>(OpenData(place, mode), mode);
    open.push_back(file);
    return file;
}

OpenFile::OpenFile(std::shared_ptr<jet::Database> database, jet::OpenMode mode)
    : database_(std::move(database)), mode_(mode) {}

void OpenFile::FindRests() {
    for (RowFinder* finder : finders_) {
        finder->FindRest();
    }
}

void OpenFile::TellKeyChanged(const jet::Table& table, jet::RowId row) {
    for (RowFinder* finder : finders_) {
        finder->KeyChanged(table, row);
    }
}

bool OpenFile::Take(const jet::Table& table, jet::RowId row) {
    return taken_.emplace(&table, row).second;
}

void OpenFile::Release(const jet::Table& table, jet::RowId row) {
    taken_.erase({&table, row});
}

}  // namespace quardele::dao
