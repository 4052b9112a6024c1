// The engine's errors in the language of the user.
#pragma once

#include <string>

#include <basic/runtime_error.h>

#include "failure.h"

namespace quardele::mdb {

/// "error 3022: ..." with the engine's own description in French, a shorter one with the names that the
/// former has between quotation marks in English.
[[nodiscard]] std::string ErrorText(const basic::RuntimeError& error, Language language);

/// The error as a failure that happened at a place: "line 12: error 3022: ...".
[[nodiscard]] Failure FailureAt(const Message& place, std::initializer_list<std::string_view> details,
                                const basic::RuntimeError& error);

/// A number that the table of English descriptions has; for its test.
[[nodiscard]] bool HasEnglishText(int number);

}  // namespace quardele::mdb
