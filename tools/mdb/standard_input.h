// What another program sends, or somebody types.
#pragma once

#include <string>

#include "failure.h"

namespace quardele::mdb {

inline constexpr Message kCannotReadInput{"lecture de l'entrée impossible", "cannot read the input"};

/// The whole standard input, up to its end, without a byte order mark in front. Throws Failure when it cannot
/// be read.
[[nodiscard]] std::string ReadStandardInput();

}  // namespace quardele::mdb
