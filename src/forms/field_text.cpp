#include "field_text.h"

#include <basic/conversion.h>
#include <forms/strings.h>

namespace quardele::forms {

QString ShownText(const basic::Variant& value) {
    return value.Is<basic::Binary>() ? QString() : ToQString(basic::Joined(value));
}

basic::Variant FieldValue(const QString& text, const dao::Field& field) {
    const basic::Text content = ToText(text);
    const bool isText = field.type == dao::FieldType::Text || field.type == dao::FieldType::Memo;
    if (isText) {
        return content.empty() && !field.allowZeroLength ? basic::Variant(basic::Null{})
                                                         : basic::Variant(content);
    }
    if (basic::Trim(content).empty()) {
        return basic::Null{};
    }
    if (field.type == dao::FieldType::Date) {
        return basic::CDate(content);
    }
    if (field.type == dao::FieldType::Boolean) {
        return basic::CBool(content);
    }
    return field.type == dao::FieldType::Guid ? basic::Variant(content)
                                              : basic::Variant(basic::CDbl(content));
}

}  // namespace quardele::forms
