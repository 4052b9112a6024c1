// Values on their way into a field.
#pragma once

#include <dao/field.h>

namespace quardele::dao {

/// The value in the field's type: Empty becomes Null, and a truth field has no Null. Throws RuntimeError 3421
/// when it cannot be converted.
[[nodiscard]] Variant ConvertedFor(FieldType type, const Variant& value);
/// ConvertedFor, with the field's rules for texts: 3163 too long, 3315 empty where that is not allowed.
[[nodiscard]] Variant CheckedFor(const Field& field, const Variant& value);

}  // namespace quardele::dao
