#include "number_pattern.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include <basic/locale.h>

namespace quardele::basic {
namespace {

constexpr char16_t kThousands = u'\u00A0';
constexpr int kGroup = 3;

/// What a section asks for.
struct Layout {
    int wholePlaces = 0;
    int leastWhole = 0;  ///< digits shown at least
    int decimals = 0;
    int leastDecimals = 0;
    int percents = 0;
    int thousandsLess = 0;                ///< commas behind the last whole place
    bool groups = false;                  ///< thousands apart
    std::optional<std::size_t> exponent;  ///< where the "E" stands
    int leastExponent = 0;                ///< digits
};

bool IsExponent(const PatternUnits& section, std::size_t at) {
    return section[at].IsSign(u"eE") && at + 1 < section.size() && section[at + 1].IsSign(u"+-");
}

class LayoutReader {
 public:
    explicit LayoutReader(const PatternUnits& section) {
        for (std::size_t at = 0; at < section.size(); ++at) {
            const PatternUnit& unit = section[at];
            if (!layout_.exponent && IsExponent(section, at)) {
                layout_.exponent = at++;
            } else if (unit.IsSign(kDigitSigns)) {
                TakeDigit(unit.unit == u'0');
            } else if (unit.IsSign(u".")) {
                decimals_ = true;
            } else if (unit.IsSign(u",")) {
                commas_ += decimals_ || layout_.wholePlaces == 0 ? 0 : 1;
            } else if (unit.IsSign(u"%")) {
                ++layout_.percents;
            }
        }
        layout_.thousandsLess = commas_;
    }

    [[nodiscard]] const Layout& Result() const { return layout_; }

 private:
    void TakeDigit(bool always) {
        if (layout_.exponent) {
            ++layout_.leastExponent;
        } else if (decimals_) {
            ++layout_.decimals;
            layout_.leastDecimals = always ? layout_.decimals : layout_.leastDecimals;
        } else {
            ++layout_.wholePlaces;
            layout_.leastWhole += always || layout_.leastWhole > 0 ? 1 : 0;
            layout_.groups = layout_.groups || commas_ > 0;
            commas_ = 0;
        }
    }

    Layout layout_;
    bool decimals_ = false;
    int commas_ = 0;  ///< since the last whole place
};

/// Writes the digits of a number where the section has places for them.
class NumberWriter {
 public:
    NumberWriter(NumberDigits number, const PatternUnits& section)
        : section_(section), layout_(LayoutReader(section).Result()), number_(std::move(number)) {
        Scale();
        whole_ = number_.Whole();
        const auto least = static_cast<std::size_t>(layout_.leastWhole);
        whole_.insert(0, least - std::min(least, whole_.size()), '0');
    }

    Text Write() {
        for (std::size_t at = 0; at < section_.size(); ++at) {
            const PatternUnit& unit = section_[at];
            if (layout_.exponent == at) {
                at = WriteExponent(at);
            } else if (unit.IsSign(kDigitSigns)) {
                WriteDigit();
            } else if (unit.IsSign(u".") && !decimals_) {
                WritePoint();
            } else if (!unit.IsSign(u",")) {
                text_ += unit.unit;
            }
        }
        return std::move(text_);
    }

    [[nodiscard]] bool ShowsZero() const { return number_.IsZero(); }

 private:
    /// To what the digits shown mean.
    void Scale() {
        if (number_.IsZero()) {
            return;
        }
        number_.point += 2 * layout_.percents - kGroup * layout_.thousandsLess;
        if (layout_.exponent) {
            exponent_ = number_.point - layout_.wholePlaces;
            number_.point = layout_.wholePlaces;
        }
        number_.RoundTo(layout_.decimals);
        if (layout_.exponent && number_.point > layout_.wholePlaces) {
            exponent_ += number_.point - layout_.wholePlaces;
            number_.point = layout_.wholePlaces;
        }
    }

    void WriteDigit() {
        if (decimals_) {
            WriteDecimal();
            return;
        }
        const int last = layout_.wholePlaces - place_++;  // places from here to the point
        const int digits = static_cast<int>(whole_.size());
        WriteWhole(place_ == 1 ? 0 : digits - last, digits - last + 1);
    }

    /// The whole digits from `first` up to `end`, as far as there are such.
    void WriteWhole(int first, int end) {
        const int digits = static_cast<int>(whole_.size());
        for (int i = std::max(first, 0); i < end; ++i) {
            if (layout_.groups && i > 0 && (digits - i) % kGroup == 0) {
                text_ += kThousands;
            }
            text_ += static_cast<char16_t>(whole_[static_cast<std::size_t>(i)]);
        }
    }

    void WritePoint() {
        if (layout_.wholePlaces == 0) {
            WriteWhole(0, static_cast<int>(whole_.size()));
        }
        text_ += SessionLocale().decimalSeparator;
        decimals_ = true;
    }

    /// A place that may stay empty does so when nothing but zeros follows.
    void WriteDecimal() {
        if (decimal_ < std::max(layout_.leastDecimals, number_.Decimals())) {
            text_ += static_cast<char16_t>(number_.Decimal(decimal_));
        }
        ++decimal_;
    }

    /// Returns the last position of the section that it has taken.
    std::size_t WriteExponent(std::size_t at) {
        text_ += section_[at].unit;
        if (exponent_ < 0) {
            text_ += u'-';
        } else if (section_[at + 1].unit == u'+') {
            text_ += u'+';
        }
        const std::string digits = std::to_string(std::abs(exponent_));
        const auto least = static_cast<std::size_t>(layout_.leastExponent);
        text_.append(least - std::min(least, digits.size()), u'0');
        text_.append(digits.begin(), digits.end());
        ++at;
        while (at + 1 < section_.size() && section_[at + 1].IsSign(kDigitSigns)) {
            ++at;
        }
        return at;
    }

    const PatternUnits& section_;
    Layout layout_;
    NumberDigits number_;
    std::string whole_;
    int exponent_ = 0;
    int place_ = 0;    ///< whole places that are written
    int decimal_ = 0;  ///< decimals that are written
    bool decimals_ = false;
    Text text_;
};

}  // namespace

Text WriteNumber(NumberDigits number, bool sign, const PatternUnits& section) {
    NumberWriter writer(std::move(number), section);
    const bool negative = sign && !writer.ShowsZero();
    Text text = negative ? u"-" : u"";
    return text + writer.Write();
}

}  // namespace quardele::basic
