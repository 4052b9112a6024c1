#include "copy_buffer.h"

#include <utility>

namespace quardele::dao {

void CopyBuffer::Fill(std::vector<Variant> values) {
    values_ = std::move(values);
    changed_.assign(values_.size(), false);
}

void CopyBuffer::Set(std::size_t field, Variant value) {
    values_[field] = std::move(value);
    changed_[field] = true;
}

}  // namespace quardele::dao
