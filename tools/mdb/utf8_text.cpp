#include "utf8_text.h"

#include "failure.h"

namespace quardele::mdb {

basic::Text TextOf(const std::string& utf8) {
    constexpr Message kNoUtf8{"le texte n'est pas en UTF-8", "the text is not in UTF-8"};
    basic::Text text = basic::FromUtf8(utf8);
    if (basic::ToUtf8(text) != utf8) {
        throw Failure(kNoUtf8);
    }
    return text;
}

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string utf8 = path.u8string();
    return {utf8.begin(), utf8.end()};
}

}  // namespace quardele::mdb
