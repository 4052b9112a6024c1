#include "text_buffer.h"

namespace quardele::mdb {

// Apart from Room, which is so small that it becomes a part of all that append.
void TextBuffer::Grow(std::size_t size) {
    characters_.resize(std::max(characters_.size() * 2, size_ + size));
}

}  // namespace quardele::mdb
