#include "output.h"

#include "failure.h"

namespace quardele::mdb {

namespace {

constexpr Message kCannotWrite{"écriture impossible sur la sortie", "cannot write to the output"};

}  // namespace

Output::Output(std::FILE* stream) : stream_(stream) {
    // Pieces are large already: a second buffer would only be one more copy.
    std::setvbuf(stream, nullptr, _IONBF, 0);
    buffer_.reserve(kLarge + kLarge / 4);
}

void Output::Flush() {
    const std::size_t written = std::fwrite(buffer_.data(), 1, buffer_.size(), stream_);
    const bool isComplete = written == buffer_.size();
    buffer_.clear();
    if (!isComplete) {
        throw Failure(kCannotWrite);
    }
}

}  // namespace quardele::mdb
