// The fonts of a document, each once, with their measures.
#pragma once

#include <vector>

#include <QFont>
#include <QFontMetricsF>

#include <engine/report_object.h>

namespace quardele::engine {

/// The font that paints with one unit to a twip. Without hinting, widths are the same at all resolutions.
[[nodiscard]] QFont PaintFont(const Font& font);

class FontTable {
 public:
    std::size_t NumberOf(const Font& font);
    [[nodiscard]] const QFontMetricsF& Metrics(std::size_t number) const { return entries_[number].metrics; }
    [[nodiscard]] qreal LineHeight(std::size_t number) const { return entries_[number].lineHeight; }
    [[nodiscard]] std::vector<QFont> Fonts() const;

 private:
    struct Entry {
        Font asked;
        QFont font;
        QFontMetricsF metrics;
        qreal lineHeight;
    };
    std::vector<Entry> entries_;
};

}  // namespace quardele::engine
