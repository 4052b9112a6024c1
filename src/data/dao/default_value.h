// What a new record starts with.
#pragma once

#include <memory>

#include <dao/field.h>
#include <jet/database.h>

namespace quardele::dao {

/// The value of a field's default expression now, in the field's type; Null (false for a truth field) without
/// one. Throws the errors of the expression.
[[nodiscard]] Variant DefaultOf(const std::shared_ptr<jet::Database>& file, const Field& field);

}  // namespace quardele::dao
