#include "paper_font.h"

#include <cmath>

#include <QFontMetricsF>
#include <QGuiApplication>

#include <print/cell_font.h>

namespace quardele::print {

QFont PaperFont(int points, bool bold, bool italic) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(static_cast<int>(points * kTwipsPerPoint));
    font.setBold(bold);
    font.setItalic(italic);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int HeightOf(const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).height()));
}

QFont CellFont(bool bold, bool italic) {
    constexpr int kPoints = 9;
    return PaperFont(kPoints, bold, italic);
}

}  // namespace quardele::print
