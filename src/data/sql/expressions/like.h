// The patterns of LIKE: "*" any text, "?" one character, "#" one digit, "[a-z]" one of, "[!a-z]" none of.
#pragma once

#include <vector>

#include <basic/text.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;

/// Usual: * ? #. Ansi: % for any text and _ for one character, as ALIKE writes them; sets are the same.
enum class Wildcards { Usual, Ansi };

/// A pattern made ready. Case is ignored, accents are not; ranges follow the file's collation.
class LikePattern {
 public:
    /// Throws RuntimeError 93 for a "[" without "]" or a range that runs backwards.
    explicit LikePattern(TextView pattern, Wildcards wildcards = Wildcards::Usual);

    [[nodiscard]] bool Matches(TextView text) const;

 private:
    struct Range {
        char16_t first;
        char16_t last;
    };
    struct Element {
        enum class Kind { Unit, AnyUnit, Digit, Set, AnyText };
        Kind kind = Kind::Unit;
        char16_t unit = 0;  ///< folded
        bool negated = false;
        std::vector<Range> ranges = {};
    };

    static Element ElementOf(char16_t unit, Wildcards wildcards);

    std::size_t ReadSet(TextView pattern, std::size_t at);
    static bool Accepts(const Element& element, char16_t unit);

    std::vector<Element> elements_;
};

}  // namespace quardele::sql
