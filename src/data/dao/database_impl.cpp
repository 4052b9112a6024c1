#include "database_impl.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include <basic/paths.h>
#include <basic/runtime_error.h>

namespace quardele::dao {
namespace {

namespace error = basic::error;
using basic::RuntimeError;

[[noreturn]] void Throw(int number, TextView windowsPath) {
    throw RuntimeError(number, basic::Describe(number, windowsPath));
}

/// The file's place on this machine; what is missing is told by the path that the operator knows.
std::filesystem::path PlaceOf(TextView windowsPath) {
    if (windowsPath.empty()) {
        Throw(error::kBadPath, windowsPath);
    }
    std::filesystem::path place;
    try {
        place = basic::NativePath(windowsPath);
    } catch (const RuntimeError&) {
        Throw(error::kBadPath, windowsPath);
    }
    std::error_code ignored;
    if (!std::filesystem::is_directory(place.parent_path(), ignored)) {
        Throw(error::kBadPath, windowsPath);
    }
    if (!std::filesystem::exists(place, ignored)) {
        Throw(error::kFileMissing, windowsPath);
    }
    return place;
}

}  // namespace

DatabaseImpl::DatabaseImpl(Text name, std::shared_ptr<OpenFile> open)
    : name_(std::move(name)), open_(std::move(open)) {}

std::shared_ptr<DatabaseImpl> DatabaseImpl::Open(TextView windowsPath, jet::OpenMode mode) {
    return std::make_shared<DatabaseImpl>(Text(windowsPath), OpenFile::Open(PlaceOf(windowsPath), mode));
}

/// Each one removes itself when it closes.
void DatabaseImpl::CloseRecordsets() {
    while (!recordsets_.empty()) {
        (*recordsets_.begin())->Close();
    }
}

}  // namespace quardele::dao
