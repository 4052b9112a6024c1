#include "formula_error.h"

#include <algorithm>

#include <basic/conversion.h>
#include <formula/formula.h>

namespace quardele::formula {
namespace {

/// Descriptions stand in a message box.
constexpr std::size_t kMostShown = 80;

Text Shown(TextView formula, std::size_t position) {
    const std::size_t start = position > kMostShown / 2 ? position - kMostShown / 2 : 0;
    Text shown = start > 0 ? u"…" : u"";
    shown += formula.substr(std::min(start, formula.size()), kMostShown);
    return start + kMostShown < formula.size() ? shown + u"…" : shown;
}

}  // namespace

void FailSyntax(TextView reason, TextView formula, std::size_t position) {
    throw basic::RuntimeError(error::kSyntaxError,
                              basic::Describe(error::kSyntaxError, Shown(formula, position)) + u" " +
                                  Text(reason) + u" (caractère " +
                                  basic::NumberText(static_cast<double>(position + 1)) + u").");
}

void FailUnknownFunction(TextView name) {
    throw basic::RuntimeError(error::kUndefinedFunction, basic::Describe(error::kUndefinedFunction, name));
}

void FailTooComplex() {
    throw basic::RuntimeError(error::kTooComplex, u"L'expression est trop longue ou trop complexe.");
}

}  // namespace quardele::formula
