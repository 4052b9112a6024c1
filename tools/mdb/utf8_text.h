// Texts from outside: cells, names, statements; and paths to be shown.
#pragma once

#include <filesystem>
#include <string>

#include <basic/text.h>

namespace quardele::mdb {

/// Throws Failure when the bytes are not UTF-8: text in another code page would be taken for signs that
/// nobody wrote.
[[nodiscard]] basic::Text TextOf(const std::string& utf8);
/// A path in UTF-8, whatever the code page of the system.
[[nodiscard]] std::string Utf8Of(const std::filesystem::path& path);

}  // namespace quardele::mdb
