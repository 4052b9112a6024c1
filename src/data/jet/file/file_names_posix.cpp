#include "file/file_names.h"

#include "file/one_name.h"

namespace quardele::jet {

namespace fs = std::filesystem;

Named WhatHasName(const fs::path& path) {
    std::error_code failure;
    switch (fs::status(path, failure).type()) {
        case fs::file_type::none:
            return Named::Unknown;
        case fs::file_type::not_found:
            return fs::is_symlink(fs::symlink_status(path, failure)) ? Named::File : Named::Nothing;
        case fs::file_type::directory:
            return Named::Folder;
        default:
            return Named::File;
    }
}

std::vector<fs::path> NamesIn(const fs::path& folder) {
    std::vector<fs::path> names;
    std::error_code failure;
    for (fs::directory_iterator entry(folder, failure), end; entry != end; entry.increment(failure)) {
        names.push_back(entry->path().filename());
    }
    return names;
}

bool GiveSecondName(const fs::path& file, const fs::path& name) {
    std::error_code failure;
    fs::create_hard_link(file, name, failure);
    return !failure;
}

void TryRemoveFile(const fs::path& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

fs::path OneName(const fs::path& file) {
    std::error_code failure;
    fs::path name = fs::canonical(file, failure);
    return failure ? file : name;
}

}  // namespace quardele::jet
