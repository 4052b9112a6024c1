// Processes of their own for tests: to die at a chosen moment, to keep a lock, to write while others do.
#pragma once

#include <sys/types.h>

#include <functional>

namespace quardele::jet::test {

/// Runs an action in a process of its own, which ends with 0, or with 1 when a RuntimeError leaves the action
/// (its text goes to the standard error). No database of this process may be open: the child would share its
/// locks.
[[nodiscard]] pid_t StartChild(const std::function<void()>& action);
/// Waits for its end and gives its exit code; -1 when a signal ended it.
[[nodiscard]] int EndOf(pid_t child);
[[nodiscard]] int InChild(const std::function<void()>& action);

/// A child that stays until it is told to go, or is killed.
class Companion {
 public:
    /// Returns when the child has run `action`; what the action gives lives as long as the child.
    template <class Action>
    explicit Companion(const Action& action) {
        Start([action](const std::function<void()>& stay) {
            [[maybe_unused]] const auto kept = action();
            stay();
        });
    }
    ~Companion();
    Companion(const Companion&) = delete;
    Companion& operator=(const Companion&) = delete;

    /// Lets it end in order.
    void Finish();
    /// Ends it without any order.
    void Kill();

 private:
    void Start(const std::function<void(const std::function<void()>& stay)>& run);

    pid_t child_ = -1;
    int toChild_ = -1;
};

}  // namespace quardele::jet::test
