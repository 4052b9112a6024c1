// What stands behind the name of a command.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "language.h"

namespace quardele::mdb {

/// An option of a command: "--name" or "--name VALUE".
struct Option {
    const char* name;             ///< with its hyphens
    const char* value = nullptr;  ///< what the help calls the value; null for an option without one
    Message help{};
};

/// Arguments sorted into operands and options.
class Arguments {
 public:
    /// Options may stand anywhere and be written "--name=VALUE" as well; "--" ends them. Throws Failure with
    /// exit code 2 for an option that the list does not have, for a missing and for a superfluous value.
    Arguments(std::span<const std::string> words, std::span<const Option> options);

    [[nodiscard]] const std::vector<std::string>& Operands() const { return operands_; }
    /// An operand, or the empty text when there are fewer.
    [[nodiscard]] const std::string& Operand(std::size_t position) const;
    [[nodiscard]] bool Has(const char* option) const { return values_.contains(option); }
    /// The value of an option; the empty text without it.
    [[nodiscard]] const std::string& Value(const char* option) const;
    /// The value of an option as a number of at least 1; `otherwise` without it. Throws Failure with exit
    /// code 2 for other texts.
    [[nodiscard]] std::size_t Number(const char* option, std::size_t otherwise) const;

 private:
    std::vector<std::string> operands_;
    std::map<std::string, std::string, std::less<>> values_;
};

}  // namespace quardele::mdb
