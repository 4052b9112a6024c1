#include "literals.h"

namespace quardele::reports {

using basic::Text;
using basic::TextView;

namespace {

/// What stands behind the first double quote, trimmed; empty without one.
Text BehindQuote(TextView text) {
    const std::size_t quote = text.find(u'"');
    return quote == TextView::npos ? Text() : basic::Trim(text.substr(quote + 1));
}

}  // namespace

Text WithTranslatedLiterals(const Text& formula, const std::function<Text(const Text&)>& translate) {
    Text result = formula;
    Text rest = basic::Trim(formula);
    while (rest.find(u'"') != Text::npos) {
        rest = BehindQuote(rest);
        const Text literal = rest.substr(0, rest.find(u'"'));
        if (!literal.empty()) {
            const Text translation = translate(literal);
            if (translation != literal) {
                result = basic::Replace(result, literal, translation);
            }
        }
        rest = BehindQuote(rest);
    }
    return result;
}

}  // namespace quardele::reports
