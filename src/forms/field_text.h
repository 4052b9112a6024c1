// Between the values of fields and the texts that controls show.
#pragma once

#include <QString>

#include <basic/variant.h>
#include <dao/field.h>

namespace quardele::forms {

/// What a control shows: nothing for Null and Empty, dates as the short date with the time behind it when
/// there is one, numbers with the locale's decimal separator.
[[nodiscard]] QString ShownText(const basic::Variant& value);

/// What a text becomes in a field. A blank one is Null, except in a text field that allows zero length. Dates
/// and numbers are read by the session's rules: throws RuntimeError 13 for what is neither.
[[nodiscard]] basic::Variant FieldValue(const QString& text, const dao::Field& field);

}  // namespace quardele::forms
