#include "expressions/like.h"

#include <algorithm>

#include <basic/characters.h>
#include <basic/runtime_error.h>
#include <jet/collation.h>

#include "plan/fold.h"

namespace quardele::sql {
namespace {

constexpr int kBadPattern = 93;

[[noreturn]] void FailPattern() {
    throw basic::RuntimeError(kBadPattern, u"Modèle de texte incorrect après Like.");
}

bool BothBetween(char16_t left, char16_t right, char16_t first, char16_t last) {
    return left >= first && left <= last && right >= first && right <= last;
}

/// Folded units in the order of the collation, which for plain letters and digits is that of their codes.
bool Precedes(char16_t left, char16_t right) {
    if (BothBetween(left, right, u'A', u'Z') || BothBetween(left, right, u'0', u'9')) {
        return left < right;
    }
    return left != right && jet::Compare(TextView(&left, 1), TextView(&right, 1)) < 0;
}

}  // namespace

LikePattern::LikePattern(TextView pattern, Wildcards wildcards) {
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == u'[') {
            at = ReadSet(pattern, at);
        } else {
            elements_.push_back(ElementOf(pattern[at], wildcards));
        }
    }
}

LikePattern::Element LikePattern::ElementOf(char16_t unit, Wildcards wildcards) {
    const bool usual = wildcards == Wildcards::Usual;
    Element element;
    if (unit == (usual ? u'*' : u'%')) {
        element.kind = Element::Kind::AnyText;
    } else if (unit == (usual ? u'?' : u'_')) {
        element.kind = Element::Kind::AnyUnit;
    } else if (usual && unit == u'#') {
        element.kind = Element::Kind::Digit;
    } else {
        element.unit = Folded(unit);
    }
    return element;
}

/// Reads the set that starts at `at`; returns the position of its "]".
std::size_t LikePattern::ReadSet(TextView pattern, std::size_t at) {
    const std::size_t end = pattern.find(u']', at);
    if (end == TextView::npos) {
        FailPattern();
    }
    TextView inside = pattern.substr(at + 1, end - at - 1);
    if (inside.empty()) {
        return end;
    }
    Element element;
    element.kind = Element::Kind::Set;
    if (inside.size() > 1 && inside.front() == u'!') {
        element.negated = true;
        inside.remove_prefix(1);
    }
    for (std::size_t i = 0; i < inside.size(); ++i) {
        const bool range = i + 2 < inside.size() && inside[i + 1] == u'-';
        const Range added{Folded(inside[i]), Folded(inside[range ? i + 2 : i])};
        if (Precedes(added.last, added.first)) {
            FailPattern();
        }
        element.ranges.push_back(added);
        i += range ? 2 : 0;
    }
    elements_.push_back(std::move(element));
    return end;
}

bool LikePattern::Accepts(const Element& element, char16_t unit) {
    const char16_t folded = Folded(unit);
    switch (element.kind) {
        case Element::Kind::Unit:
            return folded == element.unit;
        case Element::Kind::Digit:
            return basic::IsDigit(unit);
        case Element::Kind::Set:
            return element.negated !=
                   std::any_of(element.ranges.begin(), element.ranges.end(), [folded](const Range& range) {
                       return !Precedes(folded, range.first) && !Precedes(range.last, folded) &&
                              (range.first != range.last || folded == range.first);
                   });
        default:
            return true;
    }
}

bool LikePattern::Matches(TextView text) const {
    std::size_t at = 0;
    std::size_t element = 0;
    // Where to go on when the text behind the last "*" does not fit: one unit further.
    std::size_t retryElement = elements_.size() + 1;
    std::size_t retryAt = 0;
    while (at < text.size() || element < elements_.size()) {
        if (element < elements_.size() && elements_[element].kind == Element::Kind::AnyText) {
            retryElement = ++element;
            retryAt = at;
        } else if (element < elements_.size() && at < text.size() && Accepts(elements_[element], text[at])) {
            ++element;
            ++at;
        } else if (retryElement <= elements_.size() && retryAt < text.size()) {
            element = retryElement;
            at = ++retryAt;
        } else {
            return false;
        }
    }
    return true;
}

}  // namespace quardele::sql
