// What tests have to know of the system they run on.
#pragma once

namespace quardele::test {

/// Tests for Windows run under wine, which starts processes slowly and takes each lock through one server
/// process for all programs: there they take a part of what the others take.
#ifdef _WIN32
inline constexpr bool kIsWindows = true;
#else
inline constexpr bool kIsWindows = false;
#endif

}  // namespace quardele::test
