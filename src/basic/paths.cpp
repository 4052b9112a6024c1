#include <basic/paths.h>

#include <system_error>

#include <basic/runtime_error.h>

#include "native_paths.h"
#include "wildcard.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

constexpr TextView kSeparators = u"\\/:";

bool IsFolder(const fs::directory_entry& entry) {
    std::error_code ignored;
    return entry.is_directory(ignored);
}

/// The machine's folder, or nothing when its drive is missing.
std::optional<fs::path> ExistingFolder(TextView windowsPath) {
    try {
        return NativePath(windowsPath);
    } catch (const RuntimeError&) {
        return {};
    }
}

[[noreturn]] void FailToDelete(const std::error_code& reason) {
    if (reason == std::errc::permission_denied || reason == std::errc::operation_not_permitted ||
        reason == std::errc::device_or_resource_busy || reason == std::errc::text_file_busy) {
        throw RuntimeError(error::kPermissionDenied);
    }
    throw RuntimeError(error::kPathFileAccess);
}

}  // namespace

Text CurDir() {
    std::error_code failed;
    const fs::path current = fs::current_path(failed);
    if (failed) {
        throw RuntimeError(error::kPathNotFound);
    }
    return WindowsPath(current);
}

void ChDir(TextView windowsPath) {
    std::error_code failed;
    fs::current_path(NativePath(windowsPath), failed);
    if (failed) {
        throw RuntimeError(error::kPathNotFound, Describe(error::kPathNotFound, windowsPath));
    }
}

std::vector<Text> DirAll(TextView pattern) {
    const std::size_t nameStart = pattern.find_last_of(kSeparators) + 1;
    const TextView namePattern = nameStart == pattern.size() ? u"*" : pattern.substr(nameStart);
    std::vector<Text> names;
    const auto folder = pattern.empty() ? std::nullopt : ExistingFolder(pattern.substr(0, nameStart));
    if (!folder) {
        return names;
    }
    std::error_code ignored;
    for (fs::directory_iterator entry(*folder, ignored), end; entry != end; entry.increment(ignored)) {
        Text name = TextOf(entry->path().filename());
        if (MatchesWildcard(name, namePattern) && !IsFolder(*entry)) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

Text Dir(TextView pattern) {
    const auto names = DirAll(pattern);
    return names.empty() ? Text() : names.front();
}

void Kill(TextView windowsPath) {
    const fs::path file = NativePath(windowsPath);
    std::error_code failed;
    const auto status = fs::symlink_status(file, failed);
    if (!fs::exists(status) || fs::is_directory(status)) {
        throw RuntimeError(error::kFileNotFound, Describe(error::kFileNotFound, windowsPath));
    }
    RequireDeletable(file);
    if (!fs::remove(file, failed)) {
        FailToDelete(failed);
    }
}

}  // namespace quardele::basic
