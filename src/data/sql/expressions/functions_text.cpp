#include <algorithm>

#include <basic/number_format.h>
#include <basic/western.h>
#include <jet/collation.h>

#include "expressions/argument.h"
#include "expressions/functions.h"
#include "expressions/named_format.h"
#include "plan/fold.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

using jet::ColumnType;

/// The way InStr, Replace and StrComp compare; statements compare texts without case unless told otherwise.
constexpr std::int32_t kBinary = 0;
constexpr std::int32_t kTextual = 1;

/// Longest text that a function makes.
constexpr std::int32_t kLongestText = 1 << 24;

/// The code of "?", which stands for characters without one.
constexpr std::uint8_t kNotWestern = 0x3F;

std::int32_t CheckedLength(std::int32_t length) {
    if (length < 0 || length > kLongestText) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return length;
}

Variant LeftOf(Arguments a) {
    return basic::Left(TextArgument(*a[0]), basic::CLng(*a[1]));
}
Variant RightOf(Arguments a) {
    return basic::Right(TextArgument(*a[0]), basic::CLng(*a[1]));
}

Variant MidOf(Arguments a) {
    const TextArgument text(*a[0]);
    const std::int32_t start = basic::CLng(*a[1]);
    return a.size() > 2 ? basic::Mid(text, start, basic::CLng(*a[2])) : basic::Mid(text, start);
}

Variant LenOf(Arguments a) {
    return static_cast<std::int32_t>(TextArgument(*a[0]).View().size());
}
Variant TrimOf(Arguments a) {
    return basic::Trim(TextArgument(*a[0]));
}
Variant LTrimOf(Arguments a) {
    return basic::LTrim(TextArgument(*a[0]));
}
Variant RTrimOf(Arguments a) {
    return basic::RTrim(TextArgument(*a[0]));
}
Variant UCaseOf(Arguments a) {
    return basic::UCase(TextArgument(*a[0]));
}
Variant LCaseOf(Arguments a) {
    return basic::LCase(TextArgument(*a[0]));
}

std::size_t Find(TextView text, TextView what, std::size_t from, std::int32_t compare) {
    return compare == kBinary ? text.find(what, from) : FindFolded(text, what, from);
}

/// InStr(text, what), InStr(start, text, what) or InStr(start, text, what, compare).
Variant InStrOf(Arguments a) {
    const std::size_t first = a.size() > 2 ? 1 : 0;
    const std::int32_t start = first == 0 ? 1 : basic::CLng(*a[0]);
    if (start < 1) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    const TextArgument text(*a[first]);
    const TextArgument what(*a[first + 1]);
    if (text.View().empty()) {
        return std::int32_t{0};
    }
    const std::size_t found =
        Find(text, what, static_cast<std::size_t>(start) - 1, LongOr(a, first + 2, kTextual));
    return static_cast<std::int32_t>(found == TextView::npos ? 0 : found + 1);
}

/// Replace(text, find, with [, start [, count [, compare]]]); the result begins at `start`.
Variant ReplaceOf(Arguments a) {
    const TextArgument text(*a[0]);
    const TextArgument find(*a[1]);
    const TextArgument with(*a[2]);
    const std::int32_t start = LongOr(a, 3, 1);
    const std::int32_t count = LongOr(a, 4, -1);
    const std::int32_t compare = LongOr(a, 5, kTextual);
    if (start < 1 || count < -1) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    Text result;
    std::size_t at = std::min(static_cast<std::size_t>(start) - 1, text.View().size());
    for (std::int32_t done = 0; done != count && !find.View().empty(); ++done) {
        const std::size_t found = Find(text, find, at, compare);
        if (found == TextView::npos) {
            break;
        }
        result += text.View().substr(at, found - at);
        result += with.View();
        CheckedLength(static_cast<std::int32_t>(result.size()));
        at = found + find.View().size();
    }
    return result + Text(text.View().substr(at));
}

Variant SpaceOf(Arguments a) {
    return basic::Space(CheckedLength(basic::CLng(*a[0])));
}

/// String(count, character): a character's code, of which the lowest eight bits count, or the first unit of a
/// text.
Variant StringOf(Arguments a) {
    const auto count = static_cast<std::size_t>(CheckedLength(basic::CLng(*a[0])));
    if (!a[1]->IsText()) {
        return Text(count, basic::FromWestern(static_cast<std::uint8_t>(basic::CLng(*a[1]) & 0xFF)));
    }
    const Text& pattern = a[1]->As<Text>();
    if (pattern.empty()) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return Text(count, pattern.front());
}

Variant StrCompOf(Arguments a) {
    const TextArgument left(*a[0]);
    const TextArgument right(*a[1]);
    const std::weak_ordering order = LongOr(a, 2, kTextual) == kBinary
                                         ? std::weak_ordering(left.View() <=> right.View())
                                         : jet::Compare(left, right);
    return static_cast<std::int32_t>(order < 0 ? -1 : (order > 0 ? 1 : 0));
}

Variant ChrOf(Arguments a) {
    const std::int32_t code = basic::CLng(*a[0]);
    if (code < 0 || code > 0xFF) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return Text(1, basic::FromWestern(static_cast<std::uint8_t>(code)));
}

Variant AscOf(Arguments a) {
    const TextArgument text(*a[0]);
    if (text.View().empty()) {
        throw basic::RuntimeError(error::kInvalidCall);
    }
    return std::int32_t{basic::ToWestern(text.View().front()).value_or(kNotWestern)};
}

Variant CStrOf(Arguments a) {
    return basic::CStr(*a[0]);
}

/// Format(value [, name or pattern [, first day of weeks [, first week of years]]]).
Variant FormatOf(Arguments a) {
    if (a.size() == 1 || a[1]->IsNull()) {
        return basic::Joined(*a[0]);
    }
    const TextArgument pattern(*a[1]);
    if (auto named = FormatByName(*a[0], pattern)) {
        return *std::move(named);
    }
    const basic::WeekRules rules{LongOr(a, 2, basic::kSunday), LongOr(a, 3, basic::kWeekOfNewYear)};
    return basic::FormatValue(*a[0], pattern, rules);
}

constexpr auto kTaken = Function::Nulls::Taken;

constexpr Function kFunctions[] = {
    {u"Left", 2, 2, ColumnType::Text, LeftOf},         {u"Right", 2, 2, ColumnType::Text, RightOf},
    {u"Mid", 2, 3, ColumnType::Text, MidOf},           {u"Len", 1, 1, ColumnType::Long, LenOf},
    {u"Trim", 1, 1, ColumnType::Text, TrimOf},         {u"LTrim", 1, 1, ColumnType::Text, LTrimOf},
    {u"RTrim", 1, 1, ColumnType::Text, RTrimOf},       {u"UCase", 1, 1, ColumnType::Text, UCaseOf},
    {u"LCase", 1, 1, ColumnType::Text, LCaseOf},       {u"InStr", 2, 4, ColumnType::Long, InStrOf},
    {u"Replace", 3, 6, ColumnType::Text, ReplaceOf},   {u"Space", 1, 1, ColumnType::Text, SpaceOf},
    {u"String", 2, 2, ColumnType::Text, StringOf},     {u"StrComp", 2, 3, ColumnType::Long, StrCompOf},
    {u"Chr", 1, 1, ColumnType::Text, ChrOf},           {u"Asc", 1, 1, ColumnType::Long, AscOf},
    {u"CStr", 1, 1, ColumnType::Text, CStrOf, kTaken}, {u"Format", 1, 4, ColumnType::Text, FormatOf, kTaken},
};

}  // namespace

std::span<const Function> TextFunctions() {
    return kFunctions;
}

}  // namespace quardele::sql
