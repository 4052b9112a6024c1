// Texts that must fit into a width.
#pragma once

#include <QFontMetricsF>
#include <QStringList>

namespace quardele::print {

/// A text on one line; what does not fit is replaced by "…". Empty when not even that fits.
[[nodiscard]] QString OnOneLine(const QString& text, const QFontMetricsF& metrics, qreal width);
/// A text on as many lines as it needs, broken between words and at its own line breaks. What does not fit
/// into the width, or comes after the last line allowed, is replaced by "…". Empty when not even that fits
/// into the width.
[[nodiscard]] QStringList OnLines(const QString& text, const QFontMetricsF& metrics, qreal width,
                                  int mostLines);

}  // namespace quardele::print
