#include "definitions/linked_table.h"

#include <optional>

#include <basic/paths.h>
#include <basic/runtime_error.h>

#include "engine.h"
#include "file/file_names.h"

namespace quardele::jet {

namespace {

/// Drive tables, which stand for Windows paths elsewhere, know drives and no network folders.
constexpr bool kKnowsNetworkPaths = std::filesystem::path::preferred_separator == '\\';

[[nodiscard]] std::optional<std::filesystem::path> StoredPath(const Text& windowsPath) {
    if (windowsPath.starts_with(u"\\\\") && !kKnowsNetworkPaths) {
        return std::nullopt;
    }
    try {
        return basic::NativePath(windowsPath);
    } catch (const basic::RuntimeError&) {
        return std::nullopt;  // a drive that this machine lacks
    }
}

[[nodiscard]] std::optional<std::filesystem::path> FileBeside(const std::filesystem::path& linking,
                                                              const Text& windowsPath) {
    const Text name = windowsPath.substr(windowsPath.find_last_of(u"\\/") + 1);
    const std::filesystem::path folder = linking.has_parent_path() ? linking.parent_path() : ".";
    for (const std::filesystem::path& entry : NamesIn(folder)) {
        if (basic::EqualNoCase(PathText(entry), name)) {
            return folder / entry;
        }
    }
    return std::nullopt;
}

[[nodiscard]] std::filesystem::path Resolve(const Engine& engine, const CatalogTable& link) {
    if (const auto stored = StoredPath(link.linkedFile); stored && WhatHasName(*stored) == Named::File) {
        return *stored;
    }
    if (const auto beside = FileBeside(engine.Path(), link.linkedFile)) {
        return *beside;
    }
    throw basic::RuntimeError(basic::error::kLinkedTableMissing,
                              basic::Describe(basic::error::kLinkedTableMissing, link.linkedFile));
}

}  // namespace

std::shared_ptr<Table> OpenLinkedTable(const Engine& engine, const CatalogTable& link) {
    if (link.odbc || !link.connect.empty()) {
        throw basic::RuntimeError(basic::error::kOperationNotSupported);
    }
    const OpenMode mode = engine.IsReadOnly() ? OpenMode::ReadOnly : OpenMode::Shared;
    const std::shared_ptr<Database> target = Database::Open(Resolve(engine, link), mode);
    const auto entries = target->Catalog();
    for (const CatalogEntry& entry : entries) {
        // A link to a link is not followed: two files that name each other would have no end.
        if (!entry.linked && basic::EqualNoCase(entry.name, link.linkedName)) {
            return target->OpenTable(entry.name);
        }
    }
    throw basic::RuntimeError(basic::error::kLinkedTableMissing,
                              basic::Describe(basic::error::kLinkedTableMissing, link.linkedName));
}

}  // namespace quardele::jet
