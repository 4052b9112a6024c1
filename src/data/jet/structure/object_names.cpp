#include "structure/object_names.h"

#include <algorithm>

#include <basic/runtime_error.h>

namespace quardele::jet {

namespace {

constexpr std::size_t kLongestName = 64;
constexpr basic::TextView kForbidden = u".!`[]";

bool IsForbidden(char16_t unit) {
    return unit < u' ' || kForbidden.find(unit) != basic::TextView::npos;
}

}  // namespace

void CheckName(basic::TextView name) {
    if (name.empty() || name.size() > kLongestName || name.front() == u' ' ||
        std::any_of(name.begin(), name.end(), IsForbidden)) {
        throw basic::RuntimeError(basic::error::kBadName, basic::Describe(basic::error::kBadName, name));
    }
}

}  // namespace quardele::jet
