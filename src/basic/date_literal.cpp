#include <basic/date_literal.h>

#include <array>
#include <utility>
#include <vector>

#include <basic/characters.h>
#include <basic/date.h>

namespace quardele::basic {
namespace {

constexpr std::array<TextView, 12> kMonths = {u"january",   u"february", u"march",    u"april",
                                              u"may",       u"june",     u"july",     u"august",
                                              u"september", u"october",  u"november", u"december"};
constexpr std::size_t kShortMonth = 3;

/// One part of a day: a number with its count of digits, or a month by name.
struct Part {
    int number = 0;
    std::size_t digits = 0;
    bool named = false;
};

int FullYear(const Part& part) {
    if (part.digits > 2) {
        return part.number;
    }
    return part.number + (part.number < 30 ? 2000 : 1900);
}

class DateReader {
 public:
    explicit DateReader(TextView text) : text_(text) {}

    std::optional<Date> Read() {
        double days = 0;
        SkipBlanks();
        if (!TimeFollows()) {
            const auto day = Day();
            if (!day) {
                return std::nullopt;
            }
            days = day->days;
            SkipBlanks();
        }
        if (at_ < text_.size()) {
            const auto time = Time();
            if (!time) {
                return std::nullopt;
            }
            days = days < 0 ? days - *time : days + *time;
        }
        return Date{days};
    }

 private:
    [[nodiscard]] char16_t Peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

    void SkipBlanks() {
        while (Peek() == u' ') {
            ++at_;
        }
    }

    [[nodiscard]] bool TimeFollows() const {
        std::size_t end = at_;
        while (end < text_.size() && IsDigit(text_[end])) {
            ++end;
        }
        return end > at_ && end < text_.size() && text_[end] == u':';
    }

    std::optional<Part> Number() {
        Part part;
        for (; IsDigit(Peek()); ++at_) {
            part.number = part.number * 10 + (Peek() - u'0');
            if (++part.digits > 4) {
                return std::nullopt;
            }
        }
        return part.digits == 0 ? std::nullopt : std::optional(part);
    }

    TextView Word() {
        const std::size_t start = at_;
        while ((Peek() >= u'a' && Peek() <= u'z') || (Peek() >= u'A' && Peek() <= u'Z')) {
            ++at_;
        }
        return text_.substr(start, at_ - start);
    }

    std::optional<Part> MonthName() {
        const TextView word = Word();
        for (std::size_t month = 0; month < kMonths.size(); ++month) {
            if (EqualNoCase(word, kMonths[month]) ||
                EqualNoCase(word, kMonths[month].substr(0, kShortMonth))) {
                return Part{static_cast<int>(month) + 1, 0, true};
            }
        }
        return std::nullopt;
    }

    std::optional<Date> Day() {
        std::vector<Part> parts;
        while (at_ < text_.size() && !TimeFollows()) {
            const auto part = IsDigit(Peek()) ? Number() : MonthName();
            if (!part || parts.size() == 3) {
                return std::nullopt;
            }
            parts.push_back(*part);
            while (Peek() == u'/' || Peek() == u'-' || Peek() == u'.' || Peek() == u',' || Peek() == u' ') {
                ++at_;
            }
        }
        return Arrange(parts);
    }

    static std::optional<Date> Arrange(std::vector<Part> parts) {
        if (parts.size() == 2) {
            parts.push_back({CivilOf(Today()).year, 4, false});
        }
        if (parts.size() != 3) {
            return std::nullopt;
        }
        if (parts[0].digits > 2) {
            return DayOf(parts[0], parts[1].number, parts[2]);
        }
        if (parts[1].named) {
            std::swap(parts[0], parts[1]);
        }
        const int month = parts[0].number;
        if (!parts[0].named && month > 12) {
            return DayOf(parts[2], parts[1].number, parts[0]);
        }
        return DayOf(parts[2], month, parts[1]);
    }

    static std::optional<Date> DayOf(const Part& year, int month, const Part& day) {
        if (year.named || day.named || !IsValidDay(FullYear(year), month, day.number)) {
            return std::nullopt;
        }
        return DateOf(FullYear(year), month, day.number);
    }

    std::optional<double> Time() {
        std::array<int, 3> parts{};
        std::size_t count = 0;
        do {
            const auto part = Number();
            if (!part || part->number > 59 || count == parts.size()) {
                return std::nullopt;
            }
            parts[count++] = part->number;
        } while (Peek() == u':' && ++at_ < text_.size());
        if (count < 2 || !HalfOfDay(parts[0])) {
            return std::nullopt;
        }
        return (parts[0] * 3600 + parts[1] * 60 + parts[2]) / 86400.0;
    }

    /// Reads AM or PM and turns the hour into one of 24; false when the end is not reached or not right.
    bool HalfOfDay(int& hour) {
        SkipBlanks();
        const TextView word = Word();
        SkipBlanks();
        if (at_ < text_.size()) {
            return false;
        }
        if (word.empty()) {
            return hour < 24;
        }
        const bool afternoon = EqualNoCase(word, u"pm");
        if ((!afternoon && !EqualNoCase(word, u"am")) || hour > 12) {
            return false;
        }
        hour = hour % 12 + (afternoon ? 12 : 0);
        return true;
    }

    TextView text_;
    std::size_t at_ = 0;
};

Text Padded(int number, std::size_t width) {
    Text digits;
    for (; digits.size() < width || number > 0; number /= 10) {
        digits.insert(digits.begin(), static_cast<char16_t>(u'0' + number % 10));
    }
    return digits;
}

}  // namespace

std::optional<Date> ReadDateLiteral(TextView text) {
    return DateReader(text).Read();
}

Text WriteDateLiteral(Date date) {
    const CivilDate day = CivilOf(date);
    const TimeOfDay time = TimeOf(date);
    Text literal = u"#" + Padded(day.month, 2) + u"/" + Padded(day.day, 2) + u"/" + Padded(day.year, 4);
    if (time.hour != 0 || time.minute != 0 || time.second != 0) {
        literal +=
            u" " + Padded(time.hour, 2) + u":" + Padded(time.minute, 2) + u":" + Padded(time.second, 2);
    }
    return literal + u"#";
}

}  // namespace quardele::basic
