#include "standard_input.h"

#include <cstdio>
#include <string_view>

#include "platform.h"

namespace quardele::mdb {

namespace {

[[nodiscard]] std::string ReadBytes() {
    std::string text;
    std::string part(std::size_t{1} << 16, '\0');
    for (std::size_t count = 0; (count = std::fread(part.data(), 1, part.size(), stdin)) > 0;) {
        text.append(part, 0, count);
    }
    if (std::ferror(stdin) != 0) {
        throw Failure(kCannotReadInput);
    }
    return text;
}

}  // namespace

std::string ReadStandardInput() {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    std::optional<std::string> typed = TypedText();
    std::string text = typed ? std::move(*typed) : ReadBytes();
    if (text.starts_with(kByteOrderMark)) {
        text.erase(0, kByteOrderMark.size());
    }
    return text;
}

}  // namespace quardele::mdb
