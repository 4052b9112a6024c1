// The language in which the program speaks.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quardele::mdb {

enum class Language { French, English };

/// A text in both languages, UTF-8. Places "|1", "|2" ... are filled by Say.
struct Message {
    const char* french;
    const char* english;

    [[nodiscard]] const char* In(Language language) const {
        return language == Language::French ? french : english;
    }
};

/// French when the locale of messages is a French one (LC_ALL, LC_MESSAGES, LANG, in this order; the
/// system's own setting where there are none), English otherwise.
[[nodiscard]] Language LanguageOfUser();

/// A message with its places filled.
[[nodiscard]] std::string Say(Language language, const Message& message,
                              std::initializer_list<std::string_view> details = {});

}  // namespace quardele::mdb
