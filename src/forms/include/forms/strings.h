// Texts below this room are UTF-16 std::u16string, above it QString; both are UTF-16, so converting is a
// copy.
#pragma once

#include <QString>

#include <basic/text.h>

namespace quardele::forms {

[[nodiscard]] inline QString ToQString(basic::TextView text) {
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}
[[nodiscard]] inline basic::Text ToText(const QString& text) {
    return text.toStdU16String();
}

}  // namespace quardele::forms
