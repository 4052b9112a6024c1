// Text that grows at its end.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

namespace quardele::mdb {

/// Text to which values are appended one after the other, each with one look at the room that is left.
class TextBuffer {
 public:
    /// Starts with room for so many characters.
    explicit TextBuffer(std::size_t room = 0) : characters_(room) {}

    [[nodiscard]] std::string_view View() const { return {characters_.data(), size_}; }
    [[nodiscard]] std::size_t Size() const { return size_; }
    void Clear() { size_ = 0; }

    TextBuffer& operator+=(char character) {
        *Room(1) = character;
        ++size_;
        return *this;
    }
    TextBuffer& operator+=(std::string_view text) {
        std::copy(text.begin(), text.end(), Room(text.size()));
        size_ += text.size();
        return *this;
    }
    /// The place behind the text, with room for at least so many characters. What is put there belongs to the
    /// text once EndAt says where it ends.
    [[nodiscard]] char* Room(std::size_t size) {
        if (characters_.size() - size_ < size) {
            Grow(size);
        }
        return characters_.data() + size_;
    }
    void EndAt(const char* end) { size_ = static_cast<std::size_t>(end - characters_.data()); }

 private:
    void Grow(std::size_t size);

    std::vector<char> characters_;  ///< with the room behind the text
    std::size_t size_ = 0;
};

}  // namespace quardele::mdb
