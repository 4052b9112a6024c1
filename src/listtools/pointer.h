// Mouse pointers of the tools.
#pragma once

namespace quardele::listtools {

inline constexpr int kNormalPointer = 0;
inline constexpr int kBusyPointer = 11;

}  // namespace quardele::listtools
