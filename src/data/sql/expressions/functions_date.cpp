#include <basic/conversion.h>
#include <basic/date.h>

#include "expressions/argument.h"
#include "expressions/calendar.h"
#include "expressions/functions.h"
#include "sql_error.h"

namespace quardele::sql {
namespace {

using jet::ColumnType;

/// A date, or what a text says; a text of a number alone means so many days, as the number would.
basic::Date DateArgument(const Variant& value) {
    const bool days = value.IsText() && !basic::IsDate(value) && basic::IsNumeric(value);
    return basic::CDate(days ? Variant(basic::CDbl(value)) : value);
}

Variant DateAddOf(Arguments a) {
    return basic::DateAdd(TextArgument(*a[0]), basic::CDbl(*a[1]), DateArgument(*a[2]));
}

/// DateDiff(interval, from, to [, first day [, first week]]); the first week plays no part.
Variant DateDiffOf(Arguments a) {
    return DateDiff(TextArgument(*a[0]), DateArgument(*a[1]), DateArgument(*a[2]),
                    LongOr(a, 3, basic::kSunday));
}

Variant DatePartOf(Arguments a) {
    return DatePart(TextArgument(*a[0]), DateArgument(*a[1]),
                    {LongOr(a, 2, basic::kSunday), LongOr(a, 3, basic::kWeekOfNewYear)});
}

Variant DateSerialOf(Arguments a) {
    return DateSerial(basic::CLng(*a[0]), basic::CLng(*a[1]), basic::CLng(*a[2]));
}

Variant TimeSerialOf(Arguments a) {
    const double seconds =
        basic::CLng(*a[0]) * 3600.0 + basic::CLng(*a[1]) * 60.0 + static_cast<double>(basic::CLng(*a[2]));
    return basic::DateAdd(u"s", seconds, basic::Date{});
}

Variant YearOf(Arguments a) {
    return std::int32_t{basic::CivilOf(DateArgument(*a[0])).year};
}
Variant MonthOf(Arguments a) {
    return std::int32_t{basic::CivilOf(DateArgument(*a[0])).month};
}
Variant DayOf(Arguments a) {
    return std::int32_t{basic::CivilOf(DateArgument(*a[0])).day};
}
Variant HourOf(Arguments a) {
    return std::int32_t{basic::TimeOf(DateArgument(*a[0])).hour};
}
Variant MinuteOf(Arguments a) {
    return std::int32_t{basic::TimeOf(DateArgument(*a[0])).minute};
}
Variant SecondOf(Arguments a) {
    return std::int32_t{basic::TimeOf(DateArgument(*a[0])).second};
}
Variant WeekdayOf(Arguments a) {
    return basic::Weekday(DateArgument(*a[0]), LongOr(a, 1, basic::kSunday));
}

Variant TodayOf(Arguments) {
    return basic::Today();
}
Variant NowOf(Arguments) {
    return basic::Now();
}

basic::Date DayPart(basic::Date date) {
    const basic::CivilDate day = basic::CivilOf(date);
    return basic::DateOf(day.year, day.month, day.day);
}

basic::Date TimePart(basic::Date date) {
    const basic::TimeOfDay time = basic::TimeOf(date);
    return {(time.hour * 3600 + time.minute * 60 + time.second) / 86400.0};
}

Variant TimeOfNow(Arguments) {
    return TimePart(basic::Now());
}
Variant DateValueOf(Arguments a) {
    return DayPart(DateArgument(*a[0]));
}
Variant TimeValueOf(Arguments a) {
    return TimePart(DateArgument(*a[0]));
}
Variant CDateOf(Arguments a) {
    return DateArgument(*a[0]);
}
Variant IsDateOf(Arguments a) {
    return basic::IsDate(*a[0]);
}

/// A function of the clock.
constexpr Function OfClock(TextView name, Variant (*call)(Arguments)) {
    return {name, 0, 0, ColumnType::Date, call, Function::Nulls::Spread, Function::Result::Fixed, false};
}

constexpr Function kFunctions[] = {
    {u"DateAdd", 3, 3, ColumnType::Date, DateAddOf},
    {u"DateDiff", 3, 5, ColumnType::Long, DateDiffOf},
    {u"DatePart", 2, 4, ColumnType::Long, DatePartOf},
    {u"DateSerial", 3, 3, ColumnType::Date, DateSerialOf},
    {u"TimeSerial", 3, 3, ColumnType::Date, TimeSerialOf},
    {u"Year", 1, 1, ColumnType::Long, YearOf},
    {u"Month", 1, 1, ColumnType::Long, MonthOf},
    {u"Day", 1, 1, ColumnType::Long, DayOf},
    {u"Hour", 1, 1, ColumnType::Long, HourOf},
    {u"Minute", 1, 1, ColumnType::Long, MinuteOf},
    {u"Second", 1, 1, ColumnType::Long, SecondOf},
    {u"Weekday", 1, 2, ColumnType::Long, WeekdayOf},
    OfClock(u"Date", TodayOf),
    OfClock(u"Now", NowOf),
    OfClock(u"Time", TimeOfNow),
    {u"DateValue", 1, 1, ColumnType::Date, DateValueOf},
    {u"TimeValue", 1, 1, ColumnType::Date, TimeValueOf},
    {u"CDate", 1, 1, ColumnType::Date, CDateOf, Function::Nulls::Taken},
    {u"IsDate", 1, 1, ColumnType::Boolean, IsDateOf, Function::Nulls::Taken},
};

}  // namespace

std::span<const Function> DateFunctions() {
    return kFunctions;
}

}  // namespace quardele::sql
