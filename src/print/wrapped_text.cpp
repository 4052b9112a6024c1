#include <print/wrapped_text.h>

namespace quardele::print {
namespace {

QStringList Wrapped(const QString& paragraph, const QFontMetricsF& metrics, qreal width) {
    QStringList lines;
    QString line;
    for (const QString& word : paragraph.split(u' ', Qt::SkipEmptyParts)) {
        const QString longer = line.isEmpty() ? word : line + u' ' + word;
        if (!line.isEmpty() && metrics.horizontalAdvance(longer) > width) {
            lines.push_back(line);
            line = word;
        } else {
            line = longer;
        }
    }
    lines.push_back(line);
    return lines;
}

}  // namespace

QString OnOneLine(const QString& text, const QFontMetricsF& metrics, qreal width) {
    QString line = text;
    for (QChar& unit : line) {
        unit = unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ? QChar(u' ') : unit;
    }
    return metrics.elidedText(line, Qt::ElideRight, width);
}

QStringList OnLines(const QString& text, const QFontMetricsF& metrics, qreal width, int mostLines) {
    QStringList lines;
    for (const QString& paragraph : text.split(u'\n')) {
        lines += Wrapped(paragraph, metrics, width);
    }
    if (lines.size() > mostLines) {
        lines.resize(mostLines);
        lines.back() += u'…';
    }
    for (QString& line : lines) {
        const bool blank = line.isEmpty();
        line = OnOneLine(line, metrics, width);
        if (line.isEmpty() && !blank) {
            return {};
        }
    }
    return lines;
}

}  // namespace quardele::print
