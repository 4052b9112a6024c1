#include "text_pattern.h"

#include <algorithm>
#include <optional>

namespace quardele::basic {
namespace {

/// What is written into the places: one character each, or none where the text is shorter.
class Characters {
 public:
    Characters(TextView text, std::size_t places, bool fromLeft)
        : text_(text), missing_(places - std::min(places, text.size())), fromLeft_(fromLeft) {
        extra_ = text.size() - std::min(places, text.size());
    }

    /// What stands in front of the first place: characters for which there is none, filled from the right.
    TextView Ahead() { return fromLeft_ ? TextView() : Take(extra_); }
    /// The character of the next place, empty when it stays empty.
    std::optional<char16_t> Next() {
        const bool empty = fromLeft_ ? text_.empty() : missing_ > 0;
        if (empty) {
            missing_ -= fromLeft_ ? 0 : 1;
            return std::nullopt;
        }
        return Take(1).front();
    }
    /// What stands behind the last place.
    TextView Rest() { return Take(text_.size()); }

 private:
    TextView Take(std::size_t count) {
        const TextView taken = text_.substr(0, count);
        text_.remove_prefix(count);
        return taken;
    }

    TextView text_;
    std::size_t missing_;
    std::size_t extra_ = 0;
    bool fromLeft_;
};

}  // namespace

Text WriteText(TextView text, const PatternUnits& section) {
    const bool small = HasSign(section, u"<");
    const bool capital = HasSign(section, u">");
    const Text written = small ? LCase(text) : (capital ? UCase(text) : Text(text));
    const auto places =
        static_cast<std::size_t>(std::count_if(section.begin(), section.end(), [](const PatternUnit& unit) {
            return unit.IsSign(kCharacterSigns);
        }));
    const bool whole = places == 0 && HasSign(section, kTextSigns);
    Characters characters(places > 0 || whole ? TextView(written) : TextView(), places,
                          whole || HasSign(section, u"!"));
    Text result;
    std::size_t left = places;
    for (const PatternUnit& unit : section) {
        if (unit.IsSign(kCharacterSigns)) {
            result += left == places ? characters.Ahead() : TextView();
            if (const auto character = characters.Next()) {
                result += *character;
            } else if (unit.unit == u'@') {
                result += u' ';
            }
            result += --left == 0 ? characters.Rest() : TextView();
        } else if (!unit.IsSign(kTextSigns)) {
            result += unit.unit;
        }
    }
    return result + Text(characters.Rest());
}

}  // namespace quardele::basic
