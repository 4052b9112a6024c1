// The size of a control's font.
#pragma once

#include <QWidget>

namespace quardele::forms {

/// In points.
[[nodiscard]] double FontSize(const QWidget* control);

/// A box of one line and a plain drop-down list take their height from their font and grow with it; all other
/// controls keep their size. A container's font is its own: the controls inside keep theirs.
void SetFontSize(QWidget* control, double points);

}  // namespace quardele::forms
