// Text as the stored data count it: UTF-16 code units, blanks are U+0020 only, positions are 1-based.
// All functions are pure and may be called from any thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quardele::basic {

/// A text; its length and all positions in it are in UTF-16 units.
using Text = std::u16string;
using TextView = std::u16string_view;

/// Converts from and to UTF-8. Ill-formed input becomes U+FFFD and never throws.
[[nodiscard]] Text FromUtf8(std::string_view utf8);
[[nodiscard]] std::string ToUtf8(TextView text);

/// Upper and lower case of letters (Latin, Greek, Cyrillic), unit by unit: the length never changes.
[[nodiscard]] Text UCase(TextView text);
[[nodiscard]] Text LCase(TextView text);

/// The text without blanks at both ends, at its start, at its end.
[[nodiscard]] Text Trim(TextView text);
[[nodiscard]] Text LTrim(TextView text);
[[nodiscard]] Text RTrim(TextView text);

/// The first or last `count` units; the whole text when it is shorter. Throws RuntimeError 5 when count < 0.
[[nodiscard]] Text Left(TextView text, std::ptrdiff_t count);
[[nodiscard]] Text Right(TextView text, std::ptrdiff_t count);

/// The part that starts at `start` (1-based), to the end or `count` units long; empty when it starts behind
/// the end. Throws RuntimeError 5 when start < 1 or count < 0.
[[nodiscard]] Text Mid(TextView text, std::ptrdiff_t start);
[[nodiscard]] Text Mid(TextView text, std::ptrdiff_t start, std::ptrdiff_t count);

/// The 1-based position of the first `what` at or behind `start`, 0 when there is none; an empty `what` is
/// found at `start`. Binary comparison. Throws RuntimeError 5 when start < 1.
[[nodiscard]] std::ptrdiff_t InStr(TextView text, TextView what);
[[nodiscard]] std::ptrdiff_t InStr(std::ptrdiff_t start, TextView text, TextView what);

/// Every `what` replaced by `with`, binary comparison, from left to right.
[[nodiscard]] Text Replace(TextView text, TextView what, TextView with);

/// `count` blanks. Throws RuntimeError 5 when count < 0.
[[nodiscard]] Text Space(std::ptrdiff_t count);

/// Same text but for case; used for names of tables, columns, controls and files.
[[nodiscard]] bool EqualNoCase(TextView left, TextView right);

}  // namespace quardele::basic
