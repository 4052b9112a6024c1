#include "report.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quardele::bench {

namespace {

constexpr std::size_t kWhatWidth = 56;
constexpr std::size_t kFigureWidth = 13;

/// Characters that a UTF-8 text takes on a line, none of them wide or combining.
std::size_t WidthOf(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char unit) {
        return (static_cast<unsigned char>(unit) & 0xC0U) != 0x80U;
    }));
}

std::string Blanks(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, WidthOf(text)), ' ');
}

/// About two significant digits.
int DecimalsOf(double ratio) {
    constexpr double kManyTimes = 10;
    return ratio < 1 ? 2 : ratio < kManyTimes ? 1 : 0;
}

}  // namespace

void Report::Section(const std::string& title, const std::string& other) {
    out_ << '\n';
    Line(title, "nous", other, other.empty() ? "" : "rapport");
}

void Report::Compare(const std::string& what, const RaceTimes& times) {
    if (!times.theirs) {
        Line("  " + what, TimeText(times.ours), "impossible", "");
        return;
    }
    const double ratio = *times.theirs / times.ours;
    Line("  " + what, TimeText(times.ours), TimeText(*times.theirs), "× " + Number(ratio, DecimalsOf(ratio)));
}

void Report::Tell(const std::string& what, const std::string& figure) {
    Line("  " + what, figure, "", "");
}

void Report::Line(const std::string& what, const std::string& ours, const std::string& theirs,
                  const std::string& ratio) {
    std::string line = what + Blanks(what, kWhatWidth);
    for (const std::string& figure : {ours, theirs, ratio}) {
        line += Blanks(figure, kFigureWidth) + figure;
    }
    out_ << line.substr(0, line.find_last_not_of(' ') + 1) << std::endl;
}

std::string Number(double value, int decimals) {
    std::array<char, 64> digits{};
    const int length = std::snprintf(digits.data(), digits.size(), "%.*f", decimals, value);
    std::string text(digits.data(), static_cast<std::size_t>(length));
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

std::string TimeText(Duration duration) {
    constexpr double kMillisecond = 1e3;
    constexpr double kSecond = 1e6;
    const double microseconds = duration.count();
    if (microseconds < kMillisecond) {
        return Number(microseconds, microseconds < 10 ? 1 : 0) + " µs";
    }
    if (microseconds < kSecond) {
        return Number(microseconds / kMillisecond, 1) + " ms";
    }
    return Number(microseconds / kSecond, 2) + " s";
}

std::string MemoryText(std::uint64_t bytes) {
    constexpr double kMebibyte = 1024.0 * 1024.0;
    return Number(static_cast<double>(bytes) / kMebibyte, 1) + " Mo";
}

}  // namespace quardele::bench
