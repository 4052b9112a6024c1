// How long somebody waits for a lock that another one holds.
#pragma once

#include <algorithm>
#include <chrono>
#include <thread>

namespace quardele::jet {

/// The retry time of every lock of this process: two seconds, unless a test sets another one.
[[nodiscard]] inline std::chrono::milliseconds& LockPatience() {
    constexpr std::chrono::milliseconds kPatience{2000};
    static std::chrono::milliseconds patience = kPatience;
    return patience;
}

/// Calls attempt() until it gives true; false when it has not by the end of the retry time. Byte locks have
/// no queue: short pauses at first get a lock that is held for the time of a commit, longer ones later leave
/// the processor to the one that holds it.
template <class Attempt>
[[nodiscard]] bool RetryUntil(const Attempt& attempt) {
    using namespace std::chrono_literals;
    constexpr std::chrono::microseconds kLongestPause = 5ms;
    const auto end = std::chrono::steady_clock::now() + LockPatience();
    for (std::chrono::microseconds pause = 100us; !attempt(); pause = std::min(2 * pause, kLongestPause)) {
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        std::this_thread::sleep_for(pause);
    }
    return true;
}

}  // namespace quardele::jet
