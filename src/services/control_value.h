// What a control of any kind holds, as far as a text can be put into it.
#pragma once

#include <QString>
#include <QWidget>

namespace quardele::services {

/// The text of a text box, of a list that is typed into or of a list that is chosen from. Throws RuntimeError
/// 438 for other controls.
[[nodiscard]] QString ControlValue(const QWidget& control);
/// Throws RuntimeError 383 where a list that is chosen from does not offer the text.
void SetControlValue(QWidget& control, const QString& value);

}  // namespace quardele::services
