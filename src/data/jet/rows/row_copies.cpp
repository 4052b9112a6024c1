#include <jet/row_copies.h>

#include <algorithm>

#include "file/page.h"

namespace quardele::jet {

Row RowCopies::Copy(const Row& row) {
    const std::size_t length = row.bytes_.size();
    if (block_ == nullptr || length > block_->bytes.size() - used_) {
        block_ = std::make_shared_for_overwrite<Page>();
        block_->number = row.page_->number;
        block_->size = static_cast<std::uint32_t>(block_->bytes.size());
        used_ = 0;
    }
    const std::span<std::uint8_t> place = std::span(block_->bytes).subspan(used_, length);
    std::copy(row.bytes_.begin(), row.bytes_.end(), place.begin());
    used_ += length;
    size_ += length + sizeof(Row);
    Row copy(row.table_, row.id_, block_, place);
    copy.shape_ = row.shape_;
    return copy;
}

}  // namespace quardele::jet
