// Text on its way out.
#pragma once

#include <cstdio>
#include <string_view>

#include "text_buffer.h"

namespace quardele::mdb {

/// Collects text in one buffer, which writers append to, and passes it on in large pieces. What is left is
/// passed on by Finish, not by the destructor: a command that fails half-way still shows what it had.
class Output {
 public:
    explicit Output(std::FILE* stream);

    /// The buffer; append to it and call Flush or FlushIfLarge now and then.
    [[nodiscard]] TextBuffer& Buffer() { return buffer_; }
    Output& operator<<(std::string_view text) {
        buffer_ += text;
        return *this;
    }
    void FlushIfLarge() {
        if (buffer_.Size() >= kLarge) {
            Flush();
        }
    }
    /// Throws Failure when the stream takes no more.
    void Flush();

 private:
    static constexpr std::size_t kLarge = std::size_t{1} << 17;

    std::FILE* stream_;
    TextBuffer buffer_;
};

}  // namespace quardele::mdb
