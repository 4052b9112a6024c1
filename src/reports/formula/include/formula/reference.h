// What a formula asks its report for.
#pragma once

#include <optional>
#include <variant>

#include <basic/text.h>

namespace quardele::formula {

using basic::Text;
using basic::TextView;

/// {table.field}. Names are compared without regard to case.
struct FieldReference {
    Text table;
    Text field;
};

/// {@name}.
struct FormulaReference {
    Text name;  ///< without the @
};

/// Words that depend on where a text stands.
enum class Special {
    PageNumber,
    TotalPageCount,
    RecordNumber,  ///< counted from 1
};

enum class SummaryKind { Sum, Count, Average, Minimum, Maximum };

/// Sum({T.F}) over all records, Sum({T.F}, {T.G}) over those of the current group on {T.G}.
struct SummaryReference {
    SummaryKind kind = SummaryKind::Sum;
    std::variant<FieldReference, FormulaReference> of;
    std::optional<FieldReference> group;
};

using Reference = std::variant<FieldReference, FormulaReference, Special, SummaryReference>;

}  // namespace quardele::formula
