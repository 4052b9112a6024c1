// Real data files, from which the targets take their first inputs when they run.
#pragma once

#include <filesystem>
#include <functional>
#include <vector>

#include "harness.h"
#include "table_impl.h"

namespace quardele::fuzz {

/// Data files of at most so many bytes: the tests' installation, and the corpus' where it is.
[[nodiscard]] std::vector<std::filesystem::path> SeedFiles(std::uintmax_t largest);

/// Calls use(table) for every table of these files that can be read.
void ForEachTable(const std::function<void(const jet::TableImpl&)>& use);

/// At most so many of the inputs, spread over them, equal ones once.
[[nodiscard]] std::vector<Bytes> Thinned(std::vector<Bytes> inputs, std::size_t most);

}  // namespace quardele::fuzz
