// Texts from outside: cells, names, statements.
#pragma once

#include <string>

#include <basic/text.h>

namespace quardele::mdb {

/// Throws Failure when the bytes are not UTF-8: text in another code page would be taken for signs that
/// nobody wrote.
[[nodiscard]] basic::Text TextOf(const std::string& utf8);

}  // namespace quardele::mdb
