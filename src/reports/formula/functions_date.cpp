#include <cmath>

#include <basic/conversion.h>
#include <basic/date.h>

#include "functions.h"
#include "operators.h"

namespace quardele::formula {
namespace {

using basic::Date;

Date DateIn(const Variant& value) {
    return value.As<Date>();
}

Variant Year(Arguments a) {
    return static_cast<std::int32_t>(basic::CivilOf(DateIn(a[0])).year);
}
Variant Month(Arguments a) {
    return static_cast<std::int32_t>(basic::CivilOf(DateIn(a[0])).month);
}
Variant Day(Arguments a) {
    return static_cast<std::int32_t>(basic::CivilOf(DateIn(a[0])).day);
}
Variant Hour(Arguments a) {
    return static_cast<std::int32_t>(basic::TimeOf(DateIn(a[0])).hour);
}
Variant Minute(Arguments a) {
    return static_cast<std::int32_t>(basic::TimeOf(DateIn(a[0])).minute);
}
Variant Second(Arguments a) {
    return static_cast<std::int32_t>(basic::TimeOf(DateIn(a[0])).second);
}

/// 1 is Sunday. Day 0 of the calendar, 30/12/1899, was a Saturday.
Variant WeekDay(Arguments a) {
    static_cast<void>(basic::CivilOf(DateIn(a[0])));
    const double rest = std::fmod(std::floor(DateIn(a[0]).days) + 6, 7);
    return static_cast<std::int32_t>(rest < 0 ? rest + 7 : rest) + 1;
}

/// A text or number as a date, or a year, a month and a day.
Variant ToDate(Arguments a) {
    if (a.size() == 1) {
        return basic::CDate(a[0]);
    }
    const auto part = [&](std::size_t index) {
        return a.size() > index ? basic::CLng(NumberIn(a[index])) : 1;
    };
    return basic::DateOf(part(0), part(1), part(2));
}

Variant DateAdd(Arguments a) {
    return basic::DateAdd(TextIn(a[0]), NumberIn(a[1]), DateIn(a[2]));
}
Variant IsDate(Arguments a) {
    return basic::IsDate(a[0]);
}
Variant Today(Arguments /*a*/) {
    return basic::Today();
}
Variant Now(Arguments /*a*/) {
    return basic::Now();
}

constexpr Function kFunctions[] = {
    {u"Year", 1, 1, Year},       {u"Month", 1, 1, Month},         {u"Day", 1, 1, Day},
    {u"Hour", 1, 1, Hour},       {u"Minute", 1, 1, Minute},       {u"Second", 1, 1, Second},
    {u"WeekDay", 1, 1, WeekDay}, {u"Date", 3, 3, ToDate},         {u"CDate", 1, 3, ToDate},
    {u"DateAdd", 3, 3, DateAdd}, {u"IsDate", 1, 1, IsDate, true}, {u"CurrentDate", 0, 0, Today},
    {u"Today", 0, 0, Today},     {u"PrintDate", 0, 0, Today},     {u"Now", 0, 0, Now},
};

}  // namespace

std::span<const Function> DateFunctions() {
    return kFunctions;
}

}  // namespace quardele::formula
