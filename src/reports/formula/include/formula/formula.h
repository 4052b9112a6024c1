// The language of report formulas: literals, fields, operators, if-then-else, functions. See
// docs/report-format.md. Pure; may be used from any thread.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <basic/variant.h>
#include <formula/reference.h>

namespace quardele::formula {

using basic::Variant;

class Node;

/// The values that a formula's references have at the moment.
class Values {
 public:
    virtual ~Values() = default;
    /// The value of References()[reference]. May throw RuntimeError.
    [[nodiscard]] virtual Variant ValueOf(std::size_t reference) const = 0;
};

enum class Comparison { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

/// A condition that every record has to meet for a formula to be true.
struct Requirement {
    std::size_t reference = 0;  ///< of a field, on the left side
    Comparison comparison = Comparison::Equal;
    Variant value;
};

/// A formula that was read. Copies share it.
class Formula {
 public:
    /// A blank text is a formula without a value. Throws RuntimeError 3075 (what is wrong, and where) for a
    /// text that is no formula, 3085 for an unknown function, 3360 for one too long or nested too deep.
    static Formula Parse(TextView text);

    /// What the formula asks for, in the order of its text.
    [[nodiscard]] const std::vector<Reference>& References() const { return references_; }
    /// Throws RuntimeError 13, 6, 11, 5 and what `values` throws.
    [[nodiscard]] Variant Evaluate(const Values& values) const;
    /// The comparisons of a field with a constant that are joined by "and" at the top of the formula.
    [[nodiscard]] std::vector<Requirement> Requirements() const;
    /// Levels of operators and functions inside each other; evaluating needs stack for each.
    [[nodiscard]] int Depth() const;

 private:
    Formula(std::shared_ptr<const Node> root, std::vector<Reference> references);

    std::shared_ptr<const Node> root_;
    std::vector<Reference> references_;
};

/// Throws 3360: what a formula asks for is too long or too deep.
[[noreturn]] void FailTooComplex();

/// Whether a condition holds: Null does not, numbers other than 0 do. Throws 13 for texts and dates.
[[nodiscard]] bool IsTrue(const Variant& value);

/// How two values stand to each other: below 0, 0, above 0; texts without regard to case. Throws 13 for
/// values of different kinds and for Null.
[[nodiscard]] int Compare(const Variant& left, const Variant& right);

}  // namespace quardele::formula
