// Calendar arithmetic on dates of the years 100 to 9999 (proleptic Gregorian calendar).
#pragma once

#include <cstddef>
#include <optional>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::basic {

struct CivilDate {
    int year = 1899;
    int month = 12;
    int day = 30;
    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy takes the generated comparison with 0 for a pointer.
    friend auto operator<=>(const CivilDate&, const CivilDate&) = default;
};
struct TimeOfDay {
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// The date of a calendar day; throws RuntimeError 5 when the day does not exist or lies outside 100-9999.
[[nodiscard]] Date DateOf(int year, int month, int day);
[[nodiscard]] Date DateOf(int year, int month, int day, int hour, int minute, int second);
[[nodiscard]] bool IsValidDay(int year, int month, int day);
/// Number of days of a month.
[[nodiscard]] int DaysInMonth(int year, int month);

/// The day of a date. This and the other functions that take a Date throw RuntimeError 6 when it lies outside
/// the years 100 to 9999.
[[nodiscard]] CivilDate CivilOf(Date date);
/// The time of day, rounded to whole seconds (a value that rounds to 24:00:00 carries into CivilOf).
[[nodiscard]] TimeOfDay TimeOf(Date date);

/// Adds a number of units; interval is "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n" or "s" in any case.
/// Months and years keep the day or fall to the target month's last day. Throws RuntimeError 5 for another
/// interval or a result outside 100-9999.
[[nodiscard]] Date DateAdd(TextView interval, double number, Date date);

/// DateAdd with an interval that is looked up once.
class DateAdder {
 public:
    /// Empty for another interval.
    [[nodiscard]] static std::optional<DateAdder> For(TextView interval);
    /// Throws RuntimeError 5 for a result outside 100-9999.
    [[nodiscard]] Date Add(double number, Date date) const;

 private:
    explicit DateAdder(std::size_t interval) : interval_(interval) {}
    std::size_t interval_;  ///< position among those that there are
};

/// The date and the moment of the workstation's clock, without and with the time.
[[nodiscard]] Date Today();
[[nodiscard]] Date Now();

/// Formats a value with a date pattern, see FormatValue of number_format.h: dd mm yyyy hh nn ss ...; "/" is
/// the locale's date separator, ":" stays; other characters stay. A text is converted to a date first; a text
/// that is no date comes back as it is. Empty and Null give the empty text.
[[nodiscard]] Text Format(const Variant& value, TextView pattern);
[[nodiscard]] Text Format(Date date, TextView pattern);

}  // namespace quardele::basic
