// What a control of any kind holds, as far as a text can be put into it.
#pragma once

#include <QString>
#include <QWidget>

namespace quardele::services {

/// The text of a text box or of a list that is typed into. Throws RuntimeError 438 for other controls.
[[nodiscard]] QString ControlValue(const QWidget& control);
void SetControlValue(QWidget& control, const QString& value);

}  // namespace quardele::services
