#include "output.h"

#include "failure.h"

namespace quardele::mdb {

namespace {

constexpr Message kCannotWrite{"écriture impossible sur la sortie", "cannot write to the output"};

}  // namespace

Output::Output(std::FILE* stream) : stream_(stream), buffer_(kLarge + kLarge / 4) {
    // Pieces are large already: a second buffer would only be one more copy.
    std::setvbuf(stream, nullptr, _IONBF, 0);
}

void Output::Flush() {
    const std::string_view text = buffer_.View();
    const bool isComplete = std::fwrite(text.data(), 1, text.size(), stream_) == text.size();
    buffer_.Clear();
    if (!isComplete) {
        throw Failure(kCannotWrite);
    }
}

}  // namespace quardele::mdb
