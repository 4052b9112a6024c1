// Rows that are kept for longer than the pages that they were read from.
#pragma once

#include <cstddef>
#include <memory>

#include <jet/table.h>

namespace quardele::jet {

/// Copies rows side by side into memory of its own. A copy lives for as long as somebody holds it.
class RowCopies {
 public:
    /// A row that reads as the other does, without holding its page.
    [[nodiscard]] Row Copy(const Row& row);
    /// Bytes that the copies have taken so far.
    [[nodiscard]] std::size_t Size() const { return size_; }

 private:
    std::shared_ptr<Page> block_;
    std::size_t used_ = 0;  ///< of the block
    std::size_t size_ = 0;
};

}  // namespace quardele::jet
