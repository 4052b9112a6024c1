// The text of the change log.
#pragma once

#include <algorithm>

#include <forms/controls.h>

namespace quardele::shell {

class LogBox : public forms::MemoBox {
    Q_OBJECT
 public:
    using MemoBox::MemoBox;

    /// Leaves so many pixels above its lower edge without text; none for a negative number.
    void KeepFree(int pixels) { setViewportMargins(0, 0, 0, std::max(pixels, 0)); }
};

}  // namespace quardele::shell
