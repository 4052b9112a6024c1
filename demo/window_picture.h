// Windows as the operator sees them, on a platform that gives them no frame.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace quardele::demo {

/// The window's content below its caption.
[[nodiscard]] QPixmap PictureWithCaption(QWidget& window);

/// A window with another one in front of it where that stands on the screen.
[[nodiscard]] QPixmap PictureWithWindowInFront(QWidget& behind, QWidget& front);

}  // namespace quardele::demo
