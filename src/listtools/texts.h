// Texts as the tools write them into statements.
#pragma once

#include <QString>

namespace quardele::listtools {

/// Without the blanks at both ends.
[[nodiscard]] QString Trimmed(const QString& text);
[[nodiscard]] QString UpperCase(const QString& text);

}  // namespace quardele::listtools
