#include <basic/date.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <ctime>

#include <basic/runtime_error.h>

namespace quardele::basic {
namespace {

constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr int kMonthsInYear = 12;
constexpr int kMonthsInQuarter = 3;
constexpr int kDaysInWeek = 7;
constexpr int kShortestMonth = 28;
constexpr std::int64_t kSecondsInDay = 86400;
constexpr std::int64_t kSecondsInHour = 3600;
constexpr std::int64_t kSecondsInMinute = 60;
/// Far more than any two dates lie apart in the smallest unit, yet safe to multiply.
constexpr double kLargestStep = 1e12;

/// Day 0 of dates is 30/12/1899, day 0 of the clock's calendar 01/01/1970.
constexpr std::chrono::sys_days kDayZero = std::chrono::year(1899) / 12 / 30;

std::chrono::year_month_day YearMonthDay(int year, int month, int day) {
    return std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) /
           std::chrono::day(static_cast<unsigned>(day));
}

std::int64_t DayNumber(const CivilDate& civil) {
    return (std::chrono::sys_days(YearMonthDay(civil.year, civil.month, civil.day)) - kDayZero).count();
}

CivilDate CivilOfDay(std::int64_t dayNumber) {
    const std::chrono::year_month_day ymd(kDayZero + std::chrono::days(dayNumber));
    return {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

constexpr std::int64_t kFirstDay = -657434;
constexpr std::int64_t kLastDay = 2958465;

[[noreturn]] void ThrowInvalidCall() {
    throw RuntimeError(error::kInvalidCall);
}

/// A date taken apart: its day, and the whole seconds since that day's midnight.
struct SplitDate {
    std::int64_t dayNumber = 0;
    std::int64_t seconds = 0;
};

SplitDate Split(Date date) {
    const double day = std::trunc(date.days);
    // Written so that a value that is no number fails as well.
    if (!(day >= static_cast<double>(kFirstDay) && day <= static_cast<double>(kLastDay))) {
        throw RuntimeError(error::kOverflow);
    }
    if (day == date.days) {
        return {static_cast<std::int64_t>(day), 0};
    }
    SplitDate split{static_cast<std::int64_t>(day), std::llround(std::fabs(date.days - day) * kSecondsInDay)};
    if (split.seconds == kSecondsInDay) {
        split = {split.dayNumber + 1, 0};
    }
    return split;
}

Date Join(const SplitDate& split) {
    if (split.dayNumber < kFirstDay || split.dayNumber > kLastDay) {
        ThrowInvalidCall();
    }
    const auto day = static_cast<double>(split.dayNumber);
    if (split.seconds == 0) {
        return Date{day};
    }
    const double time = static_cast<double>(split.seconds) / static_cast<double>(kSecondsInDay);
    return Date{split.dayNumber < 0 ? day - time : day + time};
}

/// The days of the years in which nearly all dates lie, with their months: lists add months to a million
/// dates, for which this is a third of the time that the calendar takes.
class DayTable {
 public:
    DayTable() {
        std::uint16_t month = 0;
        for (int year = kFirst; year <= kLast; ++year) {
            for (int ofYear = 1; ofYear <= kMonthsInYear; ++ofYear, ++month) {
                starts_[month] = static_cast<std::int32_t>(DayNumber({year, ofYear, 1}));
                const int days = DaysInMonth(year, ofYear);
                for (int day = 0; day < days; ++day) {
                    days_[Place(starts_[month] + day)] = static_cast<std::uint16_t>(month << kDayBits | day);
                }
            }
        }
        starts_[month] = static_cast<std::int32_t>(DayNumber({kLast + 1, 1, 1}));
    }

    /// The number of the day so many months later, or of that month's last day; empty where the table ends.
    [[nodiscard]] std::optional<std::int64_t> Later(std::int64_t dayNumber, std::int64_t months) const {
        if (dayNumber < starts_.front() || dayNumber >= starts_.back()) {
            return std::nullopt;
        }
        const unsigned place = days_[Place(dayNumber)];
        const std::int64_t month = (place >> kDayBits) + months;
        if (month < 0 || month >= std::int64_t{kMonths}) {
            return std::nullopt;
        }
        const auto target = static_cast<std::size_t>(month);
        const auto day = static_cast<std::int32_t>(place & ((1U << kDayBits) - 1));
        return std::min(starts_[target] + day, starts_[target + 1] - 1);
    }

 private:
    static constexpr int kFirst = 1980;
    static constexpr int kLast = 2079;
    static constexpr std::size_t kMonths = std::size_t{kLast - kFirst + 1} * kMonthsInYear;
    static constexpr std::size_t kDays = 36525;
    static constexpr int kDayBits = 5;

    [[nodiscard]] std::size_t Place(std::int64_t dayNumber) const {
        return static_cast<std::size_t>(dayNumber - starts_.front());
    }

    std::array<std::int32_t, kMonths + 1>
        starts_{};                             ///< first day of each month, and the first one behind all
    std::array<std::uint16_t, kDays> days_{};  ///< month, counted from the first, and day of it from 0
};

Date AddMonths(const SplitDate& start, std::int64_t months) {
    static const DayTable usual;
    if (const auto later = usual.Later(start.dayNumber, months)) {
        return Join({*later, start.seconds});
    }
    const CivilDate civil = CivilOfDay(start.dayNumber);
    const std::int64_t total = std::int64_t{civil.year} * kMonthsInYear + (civil.month - 1) + months;
    if (total < std::int64_t{kFirstYear} * kMonthsInYear ||
        total >= std::int64_t{kLastYear + 1} * kMonthsInYear) {
        ThrowInvalidCall();
    }
    const int year = static_cast<int>(total / kMonthsInYear);
    const int month = static_cast<int>(total % kMonthsInYear) + 1;
    const int day = civil.day <= kShortestMonth ? civil.day : std::min(civil.day, DaysInMonth(year, month));
    return Join({DayNumber({year, month, day}), start.seconds});
}

Date AddDays(const SplitDate& start, std::int64_t days) {
    return Join({start.dayNumber + days, start.seconds});
}

Date AddSeconds(const SplitDate& start, std::int64_t seconds) {
    const std::int64_t total = start.dayNumber * kSecondsInDay + start.seconds + seconds;
    const std::int64_t timeOfDay = ((total % kSecondsInDay) + kSecondsInDay) % kSecondsInDay;
    return Join({(total - timeOfDay) / kSecondsInDay, timeOfDay});
}

std::tm LocalTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return local;
}

/// What DateAdd does for an interval: a number of months, days or seconds, so many for each step.
struct Interval {
    TextView name;
    Date (*add)(const SplitDate& start, std::int64_t count);
    std::int64_t factor;
};

constexpr std::array<Interval, 10> kIntervals = {{
    {u"yyyy", AddMonths, kMonthsInYear},
    {u"q", AddMonths, kMonthsInQuarter},
    {u"m", AddMonths, 1},
    {u"y", AddDays, 1},
    {u"d", AddDays, 1},
    {u"w", AddDays, 1},
    {u"ww", AddDays, kDaysInWeek},
    {u"h", AddSeconds, kSecondsInHour},
    {u"n", AddSeconds, kSecondsInMinute},
    {u"s", AddSeconds, 1},
}};

}  // namespace

bool IsValidDay(int year, int month, int day) {
    return year >= kFirstYear && year <= kLastYear && month >= 1 && month <= kMonthsInYear && day >= 1 &&
           day <= DaysInMonth(year, month);
}

int DaysInMonth(int year, int month) {
    if (month < 1 || month > kMonthsInYear) {
        ThrowInvalidCall();
    }
    const auto last =
        std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month)) / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

Date DateOf(int year, int month, int day) {
    return DateOf(year, month, day, 0, 0, 0);
}

Date DateOf(int year, int month, int day, int hour, int minute, int second) {
    const bool validTime = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (!validTime || !IsValidDay(year, month, day)) {
        ThrowInvalidCall();
    }
    return Join({DayNumber({year, month, day}), hour * kSecondsInHour + minute * kSecondsInMinute + second});
}

CivilDate CivilOf(Date date) {
    return CivilOfDay(Split(date).dayNumber);
}

TimeOfDay TimeOf(Date date) {
    const auto seconds = static_cast<int>(Split(date).seconds);
    constexpr auto kHour = static_cast<int>(kSecondsInHour);
    constexpr auto kMinute = static_cast<int>(kSecondsInMinute);
    return {seconds / kHour, seconds % kHour / kMinute, seconds % kMinute};
}

Date DateAdd(TextView interval, double number, Date date) {
    const auto adder = DateAdder::For(interval);
    if (!adder) {
        ThrowInvalidCall();
    }
    return adder->Add(number, date);
}

std::optional<DateAdder> DateAdder::For(TextView interval) {
    const auto* found =
        std::find_if(kIntervals.begin(), kIntervals.end(),
                     [interval](const Interval& candidate) { return EqualNoCase(candidate.name, interval); });
    if (found == kIntervals.end()) {
        return std::nullopt;
    }
    return DateAdder(static_cast<std::size_t>(found - kIntervals.begin()));
}

Date DateAdder::Add(double number, Date date) const {
    if (!(std::fabs(number) <= kLargestStep)) {
        ThrowInvalidCall();
    }
    const Interval& interval = kIntervals[interval_];
    return interval.add(Split(date), std::llrint(number) * interval.factor);
}

Date Today() {
    const std::tm now = LocalTime();
    return DateOf(now.tm_year + 1900, now.tm_mon + 1, now.tm_mday);
}

Date Now() {
    const std::tm now = LocalTime();
    return DateOf(now.tm_year + 1900, now.tm_mon + 1, now.tm_mday, now.tm_hour, now.tm_min,
                  std::min(now.tm_sec, 59));
}

}  // namespace quardele::basic
