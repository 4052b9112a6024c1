// Makes a statement that fails smaller, as long as it fails.
#pragma once

#include <functional>

#include "tree.h"

namespace quardele::sql::differential {

[[nodiscard]] Select Reduced(Select select, const std::function<bool(const Select&)>& fails);

}  // namespace quardele::sql::differential
