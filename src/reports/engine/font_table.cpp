#include "font_table.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>

#include "paper.h"

namespace quardele::engine {

namespace {

constexpr double kLeastSpacing = 1.0 / 64;

}  // namespace

QFont PaintFont(const Font& font) {
    QFont result = QGuiApplication::font();
    if (!font.name.isEmpty()) {
        result.setFamily(font.name);
    }
    result.setPixelSize(std::max(1, static_cast<int>(std::lround(font.points * kTwipsPerPoint))));
    result.setBold(font.bold);
    result.setItalic(font.italic);
    result.setUnderline(font.underline);
    // The least spacing there is keeps letters apart that the font would draw as one sign ("fi"): a PDF file
    // is searched and copied from letter by letter.
    result.setLetterSpacing(QFont::AbsoluteSpacing, kLeastSpacing);
    result.setHintingPreference(QFont::PreferNoHinting);
    return result;
}

std::size_t FontTable::NumberOf(const Font& font) {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&font](const Entry& entry) { return entry.asked == font; });
    if (found != entries_.end()) {
        return static_cast<std::size_t>(found - entries_.begin());
    }
    const QFont made = PaintFont(font);
    const QFontMetricsF metrics(made);
    entries_.push_back({font, made, metrics, std::ceil(metrics.height())});
    return entries_.size() - 1;
}

std::vector<QFont> FontTable::Fonts() const {
    std::vector<QFont> fonts;
    for (const Entry& entry : entries_) {
        fonts.push_back(entry.font);
    }
    return fonts;
}

}  // namespace quardele::engine
