#include "text_lines.h"

#include <limits>

#include <forms/line_feeds.h>
#include <print/wrapped_text.h>

namespace quardele::engine {
namespace {

/// The most units of a word that fit; at least one, and no surrogate pair is parted.
qsizetype FittingLength(QStringView word, const QFontMetricsF& metrics, qreal width) {
    qsizetype fits = 0;
    while (fits < word.size()) {
        const qsizetype next = fits + (word[fits].isHighSurrogate() && fits + 1 < word.size() ? 2 : 1);
        if (fits > 0 && metrics.horizontalAdvance(word.first(next).toString()) > width) {
            break;
        }
        fits = next;
    }
    return fits;
}

/// Puts line breaks into words that are too wide for a line.
QString WithBrokenWords(const QString& text, const QFontMetricsF& metrics, qreal width) {
    QStringList paragraphs;
    for (const QString& paragraph : text.split(u'\n')) {
        QStringList words;
        for (const QString& word : paragraph.split(u' ')) {
            QStringView rest = word;
            while (!rest.isEmpty() && metrics.horizontalAdvance(rest.toString()) > width) {
                const qsizetype length = FittingLength(rest, metrics, width);
                words.push_back(rest.first(length).toString() + u'\n');
                rest = rest.sliced(length);
            }
            words.push_back(rest.toString());
        }
        paragraphs.push_back(words.join(u' ').replace(QStringLiteral("\n "), QStringLiteral("\n")));
    }
    return paragraphs.join(u'\n');
}

}  // namespace

QStringList AllLines(const QString& text, const QFontMetricsF& metrics, qreal width) {
    const QString plain = forms::WithLineFeeds(text);
    if (!plain.contains(u'\n') && metrics.horizontalAdvance(plain) <= width) {
        return {plain};
    }
    return print::OnLines(WithBrokenWords(plain, metrics, width), metrics, width,
                          std::numeric_limits<int>::max());
}

QStringList FittingLines(const QString& text, const QFontMetricsF& metrics, qreal width, int mostLines) {
    const QString plain = forms::WithLineFeeds(text);
    if (!plain.contains(u'\n') && metrics.horizontalAdvance(plain) <= width) {
        return {print::OnOneLine(plain, metrics, width)};
    }
    return print::OnLines(plain, metrics, width, mostLines);
}

}  // namespace quardele::engine
