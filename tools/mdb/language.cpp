#include "language.h"

#include <cstdlib>

#include "platform.h"

namespace quardele::mdb {

Language LanguageOfUser() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(variable); value != nullptr && *value != '\0') {
            return std::string_view(value).starts_with("fr") ? Language::French : Language::English;
        }
    }
    return IsSystemFrench() ? Language::French : Language::English;
}

std::string Say(Language language, const Message& message, std::initializer_list<std::string_view> details) {
    const std::string_view pattern = message.In(language);
    std::string text;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t place = pattern[i] == '|' && i + 1 < pattern.size()
                                      ? static_cast<std::size_t>(pattern[i + 1] - '1')
                                      : ~0U;
        if (place < details.size()) {
            text += details.begin()[place];
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

}  // namespace quardele::mdb
