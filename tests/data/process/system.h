// What tests have to know of the system they run on.
#pragma once

namespace quardele::test {

#ifdef _WIN32
inline constexpr bool kIsWindows = true;
#else
inline constexpr bool kIsWindows = false;
#endif

}  // namespace quardele::test
