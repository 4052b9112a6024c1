#include "palette.h"

namespace quardele::forms {

QPalette ScreenPalette() {
    using namespace colors;
    QPalette palette;
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, kInk);
    }
    palette.setColor(QPalette::PlaceholderText, kSecondaryInk);
    palette.setColor(QPalette::Window, kWindow);
    palette.setColor(QPalette::Base, kEntry);
    palette.setColor(QPalette::AlternateBase, kEvenRow);
    palette.setColor(QPalette::ToolTipBase, kEntry);
    palette.setColor(QPalette::Button, kButton);
    palette.setColor(QPalette::Light, kEntry);
    palette.setColor(QPalette::Midlight, kHeading);
    palette.setColor(QPalette::Mid, kDecorativeLine);
    palette.setColor(QPalette::Dark, kChildArea);
    palette.setColor(QPalette::Shadow, kBorder);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, kEntry);
    palette.setColor(QPalette::Link, kAccent);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, kSecondaryInk);
    }
    return palette;
}

}  // namespace quardele::forms
