// Members of an object model, counted from 1.
#pragma once

#include <memory>
#include <vector>

#include <basic/runtime_error.h>

namespace quardele::engine {

template <class T>
class Collection {
 public:
    Collection() = default;
    explicit Collection(std::vector<std::shared_ptr<T>> members) : members_(std::move(members)) {}

    [[nodiscard]] int Count() const { return static_cast<int>(members_.size()); }
    /// Throws RuntimeError 9 outside 1 to Count().
    [[nodiscard]] T& Item(int index) const {
        if (index < 1 || index > Count()) {
            throw basic::RuntimeError(basic::error::kSubscript);
        }
        return *members_[static_cast<std::size_t>(index) - 1];
    }
    [[nodiscard]] auto begin() const { return members_.begin(); }
    [[nodiscard]] auto end() const { return members_.end(); }
    void Add(std::shared_ptr<T> member) { members_.push_back(std::move(member)); }

 private:
    std::vector<std::shared_ptr<T>> members_;
};

}  // namespace quardele::engine
