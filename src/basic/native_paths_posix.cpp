// Windows paths on a machine that has none: drives by the table, components without regard to case.
#include <algorithm>
#include <iterator>
#include <system_error>
#include <vector>

#include <unistd.h>

#include <basic/open_elsewhere.h>
#include <basic/paths.h>
#include <basic/runtime_error.h>

#include "native_paths.h"

namespace quardele::basic {
namespace {

namespace fs = std::filesystem;

constexpr TextView kSeparators = u"\\/";

bool IsSeparator(char16_t c) {
    return kSeparators.find(c) != TextView::npos;
}

bool HasDrive(TextView path) {
    return path.size() >= 2 && path[1] == u':';
}

/// The components of a path, without empty ones and "."; ".." takes the one before it away.
std::vector<Text> ComponentsOf(TextView path) {
    std::vector<Text> components;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find_first_of(kSeparators), path.size());
        const TextView component = path.substr(0, end);
        if (component == u".." && !components.empty()) {
            components.pop_back();
        } else if (!component.empty() && component != u"." && component != u"..") {
            components.emplace_back(component);
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return components;
}

/// The entry of a folder that has the name in any case; the name itself when there is none.
fs::path EntryOf(const fs::path& folder, const Text& name) {
    fs::path exact = folder / PathOf(name);
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(exact, ignored))) {
        return exact;
    }
    for (fs::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored)) {
        if (EqualNoCase(TextOf(entry->path().filename()), name)) {
            return entry->path();
        }
    }
    return exact;
}

/// An absolute Windows path, with a drive.
Text Absolute(TextView path) {
    if (HasDrive(path)) {
        return Text(path);
    }
    const Text current = CurDir();
    if (!path.empty() && IsSeparator(path.front())) {
        return current.substr(0, 2) + Text(path);
    }
    return current + u"\\" + Text(path);
}

/// What lies below a folder, when a path leads into it.
std::optional<fs::path> Below(const fs::path& folder, const fs::path& path) {
    const fs::path rest = path.lexically_relative(folder);
    if (rest.empty() || *rest.begin() == "..") {
        return {};
    }
    return rest == "." ? fs::path() : rest;
}

/// What lies below a drive's folder, also when one of both is spelled through a link.
std::optional<fs::path> BelowDrive(const fs::path& folder, const fs::path& path) {
    auto rest = Below(folder.lexically_normal(), path);
    if (!rest) {
        std::error_code ignored;
        rest = Below(fs::weakly_canonical(folder, ignored), path);
    }
    return rest;
}

Text OnDrive(char16_t letter, const fs::path& rest) {
    Text path = Text(1, letter) + u":\\" + TextOf(rest);
    std::replace(path.begin(), path.end(), u'/', u'\\');
    return path;
}

}  // namespace

Text TextOf(const fs::path& path) {
    return FromUtf8(path.native());
}

fs::path PathOf(TextView text) {
    return ToUtf8(text);
}

fs::path NativePath(TextView windowsPath) {
    const Text path = Absolute(windowsPath);
    const auto drive = DriveTable::Session().FolderOf(path.front());
    if (!drive) {
        throw RuntimeError(error::kPathNotFound, Describe(error::kPathNotFound, windowsPath));
    }
    fs::path native = *drive;
    for (const Text& component : ComponentsOf(TextView(path).substr(2))) {
        native = EntryOf(native, component);
    }
    return native;
}

Text WindowsPath(const fs::path& nativePath) {
    std::error_code ignored;
    const fs::path path = fs::absolute(nativePath, ignored).lexically_normal();
    std::ptrdiff_t longest = -1;
    Text found = OnDrive(u'Z', path.relative_path());
    for (const auto& [letter, folder] : DriveTable::Session().Drives()) {
        const auto length = std::distance(folder.begin(), folder.end());
        const auto rest = BelowDrive(folder, path);
        if (rest && length > longest) {
            longest = length;
            found = OnDrive(letter, *rest);
        }
    }
    return found;
}

bool IsOpenElsewhere(const fs::path& file) {
    const fs::path mark = file.parent_path() / (".~lock." + file.filename().string() + "#");
    std::error_code ignored;
    return fs::exists(fs::symlink_status(mark, ignored));
}

void RequireDeletable(const fs::path& file) {
    if (IsOpenElsewhere(file)) {
        throw RuntimeError(error::kPermissionDenied);
    }
    if (access(file.parent_path().c_str(), W_OK) != 0) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

}  // namespace quardele::basic
