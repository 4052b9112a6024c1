// Why the program stops.
#pragma once

#include <exception>
#include <string>

#include "language.h"

namespace quardele::mdb {

/// Exit codes.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongCall = 2;

/// A failure that is the program's own, in both languages; the engine's are basic::RuntimeError.
class Failure : public std::exception {
 public:
    explicit Failure(const Message& message, std::initializer_list<std::string_view> details = {},
                     int exitCode = kFailed)
        : french_(Say(Language::French, message, details)),
          english_(Say(Language::English, message, details)),
          exitCode_(exitCode) {}

    [[nodiscard]] const std::string& In(Language language) const {
        return language == Language::French ? french_ : english_;
    }
    [[nodiscard]] int ExitCode() const { return exitCode_; }
    [[nodiscard]] const char* what() const noexcept override { return english_.c_str(); }

 private:
    std::string french_;
    std::string english_;
    int exitCode_;
};

}  // namespace quardele::mdb
