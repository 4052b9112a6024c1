#include <cmath>

#include <basic/conversion.h>
#include <basic/number_format.h>
#include <basic/runtime_error.h>

#include "functions.h"
#include "operators.h"

namespace quardele::formula {
namespace {

std::ptrdiff_t CountIn(const Variant& value) {
    return basic::CLng(NumberIn(value));
}

Variant Len(Arguments a) {
    return static_cast<std::int32_t>(TextIn(a[0]).size());
}
Variant Trim(Arguments a) {
    return basic::Trim(TextIn(a[0]));
}
Variant TrimLeft(Arguments a) {
    return basic::LTrim(TextIn(a[0]));
}
Variant TrimRight(Arguments a) {
    return basic::RTrim(TextIn(a[0]));
}
Variant Upper(Arguments a) {
    return basic::UCase(TextIn(a[0]));
}
Variant Lower(Arguments a) {
    return basic::LCase(TextIn(a[0]));
}
Variant Left(Arguments a) {
    return basic::Left(TextIn(a[0]), CountIn(a[1]));
}
Variant Right(Arguments a) {
    return basic::Right(TextIn(a[0]), CountIn(a[1]));
}
Variant Mid(Arguments a) {
    return a.size() == 2 ? basic::Mid(TextIn(a[0]), CountIn(a[1]))
                         : basic::Mid(TextIn(a[0]), CountIn(a[1]), CountIn(a[2]));
}
/// Without regard to case, as comparisons are.
Variant InStr(Arguments a) {
    return static_cast<std::int32_t>(basic::InStr(basic::UCase(TextIn(a[0])), basic::UCase(TextIn(a[1]))));
}
Variant Replace(Arguments a) {
    const Text& text = TextIn(a[0]);
    const Text& what = TextIn(a[1]);
    const Text& with = TextIn(a[2]);
    if (what.empty()) {
        return text;
    }
    if (text.size() / what.size() * with.size() > kLongestText) {
        throw basic::RuntimeError(basic::error::kOverflow);
    }
    return NotTooLong(basic::Replace(text, what, with));
}

Variant ReplicateString(Arguments a) {
    const Text& text = TextIn(a[0]);
    const std::ptrdiff_t count = CountIn(a[1]);
    if (count < 0) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    if (!text.empty() && static_cast<std::size_t>(count) > kLongestText / text.size()) {
        throw basic::RuntimeError(basic::error::kOverflow);
    }
    Text result;
    for (std::ptrdiff_t i = 0; i < count && !text.empty(); ++i) {
        result += text;
    }
    return result;
}

Variant Space(Arguments a) {
    const Variant both[] = {Text(u" "), a[0]};
    return ReplicateString(both);
}

Variant Chr(Arguments a) {
    const double unit = NumberIn(a[0]);
    if (!(unit >= 1 && unit < 0xD800)) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
    return Text(1, static_cast<char16_t>(unit));
}

/// The ordinary text of a value, or that after a pattern; Null is the empty text.
Variant ToText(Arguments a) {
    if (a.size() == 1 || a[0].IsNull()) {
        return basic::Joined(a[0]);
    }
    return basic::FormatValue(a[0], TextIn(a[1]));
}

constexpr Function kFunctions[] = {
    {u"Len", 1, 1, Len},
    {u"Length", 1, 1, Len},
    {u"Trim", 1, 1, Trim},
    {u"LTrim", 1, 1, TrimLeft},
    {u"TrimLeft", 1, 1, TrimLeft},
    {u"RTrim", 1, 1, TrimRight},
    {u"TrimRight", 1, 1, TrimRight},
    {u"UCase", 1, 1, Upper},
    {u"UpperCase", 1, 1, Upper},
    {u"LCase", 1, 1, Lower},
    {u"LowerCase", 1, 1, Lower},
    {u"Left", 2, 2, Left},
    {u"Right", 2, 2, Right},
    {u"Mid", 2, 3, Mid},
    {u"InStr", 2, 2, InStr},
    {u"Replace", 3, 3, Replace},
    {u"ReplicateString", 2, 2, ReplicateString},
    {u"Space", 1, 1, Space},
    {u"Chr", 1, 1, Chr},
    {u"ToText", 1, 2, ToText, true},
    {u"CStr", 1, 2, ToText, true},
};

}  // namespace

std::span<const Function> TextFunctions() {
    return kFunctions;
}

}  // namespace quardele::formula
