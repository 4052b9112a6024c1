// Texts on lines.
#pragma once

#include <QFontMetricsF>
#include <QStringList>

namespace quardele::engine {

/// As many lines as the text needs: broken at its own line breaks, between words, and inside a word that is
/// wider than the width alone. No word is left out; several blanks between words become one.
[[nodiscard]] QStringList AllLines(const QString& text, const QFontMetricsF& metrics, qreal width);
/// The lines that fit; what is left out is replaced by "…".
[[nodiscard]] QStringList FittingLines(const QString& text, const QFontMetricsF& metrics, qreal width,
                                       int mostLines);

}  // namespace quardele::engine
