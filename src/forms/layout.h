// What a layout file cannot say by itself, done once when a form is loaded.
#pragma once

class QWidget;

namespace quardele::forms {

/// Moves the controls marked "inStrip" from their tab pages into the tab strip.
void PlaceInStrips(QWidget& surface);

}  // namespace quardele::forms
