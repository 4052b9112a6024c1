#include <unistd.h>

#include "platform.h"

namespace quardele::mdb {

std::filesystem::path PathOf(const std::string& utf8) {
    return {utf8};
}

std::FILE* OpenForReading(const std::filesystem::path& path) {
    return std::fopen(path.c_str(), "rb");
}

PlainStreams::PlainStreams() = default;
PlainStreams::~PlainStreams() = default;

bool IsTerminal(std::FILE* stream) {
    return ::isatty(::fileno(stream)) == 1;
}

std::optional<std::string> TypedText() {
    return std::nullopt;
}

bool IsSystemFrench() {
    return false;
}

}  // namespace quardele::mdb
