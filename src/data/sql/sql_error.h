// The errors of statements: numbers that only this room raises, and descriptions that name the place.
#pragma once

#include <map>

#include <basic/runtime_error.h>
#include <basic/text.h>

namespace quardele::sql {

using basic::Text;
using basic::TextView;

namespace error {
using namespace basic::error;
inline constexpr int kDuplicateTarget = 3063;
inline constexpr int kCannotExecuteSelect = 3065;
inline constexpr int kNotUpdatable = 3073;
inline constexpr int kSyntaxInCondition = 3077;
inline constexpr int kAmbiguousName = 3079;
inline constexpr int kDuplicateSource = 3081;
inline constexpr int kOrderOutsideDistinct = 3093;
inline constexpr int kNestedAggregate = 3095;
inline constexpr int kAggregateInWhere = 3096;
inline constexpr int kAggregateInJoin = 3098;
inline constexpr int kAggregateInGroupBy = 3099;
inline constexpr int kCircularAlias = 3103;
inline constexpr int kUnknownInsertField = 3127;
inline constexpr int kSyntaxInDelete = 3128;
inline constexpr int kInvalidStatement = 3129;
inline constexpr int kSyntaxInInsert = 3134;
inline constexpr int kSyntaxInOrderBy = 3138;
inline constexpr int kTextAfterStatement = 3142;
inline constexpr int kSyntaxInUpdate = kSyntaxInSql;
inline constexpr int kSyntaxInConstraint = 3289;
inline constexpr int kSyntaxInCreateTable = 3290;
inline constexpr int kSyntaxInCreateIndex = 3291;
inline constexpr int kSyntaxInFieldDefinition = 3292;
inline constexpr int kSyntaxInAlterTable = 3293;
inline constexpr int kSyntaxInDefinition = 3295;
inline constexpr int kSubqueryColumns = 3306;
inline constexpr int kUnionColumns = 3307;
inline constexpr int kValueCount = 3346;
inline constexpr int kSubqueryRows = 3354;
inline constexpr int kTooComplex = 3360;
}  // namespace error

/// A name or a piece of a statement between quotation marks, cut where it is too long for a message box.
[[nodiscard]] Text Quoted(TextView text);

/// Throws the number with its general description and the place it concerns.
[[noreturn]] void FailNaming(int number, TextView name);

/// Throws a syntax error. `expression` is the text that was read, `reason` what is wrong with it, `stop` the
/// word or sign where reading stopped (empty at the end of the text).
[[noreturn]] void FailSyntax(int number, TextView reason, TextView expression, TextView stop);

/// Throws 3360, naming what there is too much of.
[[noreturn]] void FailTooComplex(TextView what);

/// Throws the failure on, inside a handler of it. One of calculating or comparing that names nothing yet
/// names the expression.
[[noreturn]] void FailIn(const basic::RuntimeError& failure, TextView expression);

/// Names that nothing knows, by their capitals, as they are written.
using UnknownNames = std::map<Text, Text>;

/// Error 3061: the names count as parameters for which no values are given.
class MissingParameters : public basic::RuntimeError {
 public:
    explicit MissingParameters(UnknownNames names);

    [[nodiscard]] const UnknownNames& Names() const { return names_; }

 private:
    UnknownNames names_;
};

}  // namespace quardele::sql
