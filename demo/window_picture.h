// Windows as the operator sees them, on a platform that gives them no frame.
#pragma once

#include <QPixmap>
#include <QWidget>

namespace quardele::demo {

/// The window's content below its caption.
[[nodiscard]] QPixmap PictureWithCaption(QWidget& window);

}  // namespace quardele::demo
