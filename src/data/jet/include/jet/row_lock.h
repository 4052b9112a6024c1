// A row that one user is changing.
#pragma once

#include <memory>

namespace quardele::jet {

/// Keeps everybody else from changing a row while it lives; see Table::Lock. Must not outlive its database.
class RowLock {
 public:
    struct Held;

    RowLock();
    explicit RowLock(std::unique_ptr<Held> held);
    RowLock(RowLock&& other) noexcept;
    RowLock& operator=(RowLock&& other) noexcept;
    ~RowLock();

    [[nodiscard]] bool IsHeld() const { return held_ != nullptr; }
    void Release();

 private:
    std::unique_ptr<Held> held_;
};

}  // namespace quardele::jet
