// The controls of a form, taken down once: bringing a control to the front changes the order of Qt's
// children.
#pragma once

#include <vector>

#include <QPointer>
#include <QWidget>

namespace quardele::forms {

/// In the order of the layout file, those inside containers behind their container.
[[nodiscard]] std::vector<QPointer<QWidget>> ControlsOn(const QWidget& surface);

}  // namespace quardele::forms
