// Something to do at the end of a block, however it is left.
#pragma once

#include <utility>

namespace quardele::jet {

template <class Action>
class ScopeExit {
 public:
    explicit ScopeExit(Action action) : action_(std::move(action)) {}
    ~ScopeExit() { action_(); }
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;

 private:
    Action action_;
};

}  // namespace quardele::jet
