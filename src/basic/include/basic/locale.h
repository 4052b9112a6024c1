// The workstation's settings that conversions follow. A French workstation is the default, set here only.
#pragma once

#include <basic/text.h>

namespace quardele::basic {

enum class DateOrder { DayMonthYear, MonthDayYear, YearMonthDay };

struct Locale {
    char16_t decimalSeparator = u',';
    char16_t dateSeparator = u'/';
    DateOrder dateOrder = DateOrder::DayMonthYear;
    /// Pattern of the short date, for Format().
    Text shortDate = u"dd/mm/yyyy";
};

/// The session's settings; change them before the first window opens (tests set and restore them).
[[nodiscard]] Locale& SessionLocale();

}  // namespace quardele::basic
