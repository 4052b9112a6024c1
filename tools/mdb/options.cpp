#include "options.h"

#include <algorithm>
#include <charconv>

#include "failure.h"

namespace quardele::mdb {

namespace {

constexpr Message kUnknownOption{"option inconnue : |1", "unknown option: |1"};
constexpr Message kMissingValue{"l'option |1 demande une valeur", "option |1 needs a value"};
constexpr Message kNoValue{"l'option |1 n'a pas de valeur", "option |1 takes no value"};
constexpr Message kNoNumber{"« |2 » n'est pas un nombre possible pour |1",
                            "\"|2\" is no possible number for |1"};

const std::string kNothing;

bool IsOption(std::string_view word) {
    return word.size() > 1 && word[0] == '-';
}

}  // namespace

Arguments::Arguments(std::span<const std::string> words, std::span<const Option> options) {
    bool optionsEnded = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (optionsEnded || !IsOption(word)) {
            operands_.push_back(word);
            continue;
        }
        if (word == "--") {
            optionsEnded = true;
            continue;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        const auto option = std::find_if(options.begin(), options.end(),
                                         [&name](const Option& known) { return name == known.name; });
        if (option == options.end()) {
            throw Failure(kUnknownOption, {name}, kWrongCall);
        }
        if (option->value == nullptr && equals != std::string::npos) {
            throw Failure(kNoValue, {name}, kWrongCall);
        }
        if (option->value != nullptr && equals == std::string::npos && i + 1 == words.size()) {
            throw Failure(kMissingValue, {name}, kWrongCall);
        }
        values_[name] = option->value == nullptr      ? std::string()
                        : equals != std::string::npos ? word.substr(equals + 1)
                                                      : words[++i];
    }
}

const std::string& Arguments::Operand(std::size_t position) const {
    return position < operands_.size() ? operands_[position] : kNothing;
}

const std::string& Arguments::Value(const char* option) const {
    const auto found = values_.find(option);
    return found == values_.end() ? kNothing : found->second;
}

std::size_t Arguments::Number(const char* option, std::size_t otherwise) const {
    if (!Has(option)) {
        return otherwise;
    }
    const std::string& text = Value(option);
    std::size_t number = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size() || number == 0) {
        throw Failure(kNoNumber, {option, text}, kWrongCall);
    }
    return number;
}

}  // namespace quardele::mdb
