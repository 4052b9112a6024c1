// What another program sends, or somebody types.
#pragma once

#include <string>

namespace quardele::mdb {

/// The whole standard input, up to its end. Throws Failure when it cannot be read.
[[nodiscard]] std::string ReadStandardInput();

}  // namespace quardele::mdb
