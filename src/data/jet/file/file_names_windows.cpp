#include "file/file_names.h"

#include <windows.h>

#include <memory>
#include <string>

#include <basic/system_path.h>

#include "file/handle_windows.h"
#include "file/one_name.h"

namespace quardele::jet {

namespace {

namespace fs = std::filesystem;
using basic::SystemPath;

struct SearchCloser {
    void operator()(void* handle) const { ::FindClose(handle); }
};
using Search = std::unique_ptr<void, SearchCloser>;

/// Empty when the file system does not tell this form of the name.
[[nodiscard]] std::wstring NameOf(HANDLE file, DWORD form) {
    constexpr DWORD kLongest = 32768;
    std::wstring name(kLongest, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(file, name.data(), kLongest, form);
    name.resize(length < kLongest ? length : 0);
    return name;
}

/// The name as people know it.
[[nodiscard]] std::wstring WithoutPrefix(const std::wstring& name) {
    constexpr std::wstring_view kPrefix = L"\\\\?\\";
    constexpr std::wstring_view kNetworkPrefix = L"\\\\?\\UNC\\";
    if (name.starts_with(kNetworkPrefix)) {
        return L"\\\\" + name.substr(kNetworkPrefix.size());
    }
    return name.starts_with(kPrefix) ? name.substr(kPrefix.size()) : name;
}

}  // namespace

Named WhatHasName(const fs::path& path) {
    const DWORD attributes = ::GetFileAttributesW(SystemPath(path).c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Named::Folder : Named::File;
    }
    switch (::GetLastError()) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_INVALID_DRIVE:
            return Named::Nothing;
        default:
            return Named::Unknown;
    }
}

std::vector<fs::path> NamesIn(const fs::path& folder) {
    std::vector<fs::path> names;
    WIN32_FIND_DATAW found = {};
    const HANDLE first = ::FindFirstFileW(SystemPath(folder / "*").c_str(), &found);
    if (first == INVALID_HANDLE_VALUE) {
        return names;
    }
    const Search search(first);
    do {
        const std::wstring name = found.cFileName;
        if (name != L"." && name != L"..") {
            names.emplace_back(name);
        }
    } while (::FindNextFileW(search.get(), &found) != 0);
    return names;
}

bool GiveSecondName(const fs::path& file, const fs::path& name) {
    return ::CreateHardLinkW(SystemPath(name).c_str(), SystemPath(file).c_str(), nullptr) != 0;
}

void TryRemoveFile(const fs::path& path) {
    ::DeleteFileW(SystemPath(path).c_str());
}

// What the system calls it: the short form of a name ("SUIVI-~1.MDB"), another case, a link and a drive that
// stands for a folder all lead to the same one.
fs::path OneName(const fs::path& file) {
    if (const Handle handle = OpenAnything(file, 0)) {
        for (const DWORD form : {DWORD{FILE_NAME_NORMALIZED}, DWORD{FILE_NAME_OPENED}}) {
            if (const std::wstring name = NameOf(handle.get(), form); !name.empty()) {
                return WithoutPrefix(name);
            }
        }
    }
    return file;
}

}  // namespace quardele::jet
