// Reading of function arguments.
#pragma once

#include <basic/conversion.h>

#include "expressions/functions.h"

namespace quardele::sql {

/// An argument as text, without a copy when it is one.
class TextArgument {
 public:
    explicit TextArgument(const Variant& value)
        : converted_(value.IsText() ? Text() : basic::CStr(value)),
          view_(value.IsText() ? TextView(value.As<Text>()) : TextView(converted_)) {}
    TextArgument(const TextArgument&) = delete;
    TextArgument& operator=(const TextArgument&) = delete;

    operator TextView() const { return view_; }
    [[nodiscard]] TextView View() const { return view_; }

 private:
    Text converted_;
    TextView view_;
};

/// An optional whole argument.
[[nodiscard]] inline std::int32_t LongOr(Arguments arguments, std::size_t index, std::int32_t missing) {
    return index < arguments.size() ? basic::CLng(*arguments[index]) : missing;
}

}  // namespace quardele::sql
