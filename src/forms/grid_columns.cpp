#include "grid_columns.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QDate>

#include <basic/conversion.h>
#include <forms/strings.h>

#include "field_text.h"

namespace quardele::forms {
namespace {

struct Kind {
    const char16_t* name;
    CellType type;
};

constexpr std::array kKinds = {
    Kind{u"text", CellType::Edit},       Kind{u"date", CellType::Date},
    Kind{u"number", CellType::Number},   Kind{u"float", CellType::Float},
    Kind{u"integer", CellType::Integer}, Kind{u"check", CellType::CheckBox},
    Kind{u"button", CellType::Button},
};

CellType TypeOf(const QString& name) {
    const auto* found = std::find_if(kKinds.begin(), kKinds.end(),
                                     [&](const Kind& kind) { return name == QStringView(kind.name); });
    return found == kKinds.end() ? CellType::Edit : found->type;
}

QString NameOf(CellType type) {
    const auto* found =
        std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& kind) { return type == kind.type; });
    return QString::fromUtf16(found == kKinds.end() ? kKinds.front().name : found->name);
}

constexpr int kAllDigits = 17;

const QDate& DayZero() {
    static const QDate dayZero(1899, 12, 30);
    return dayZero;
}

double EndOf(const QString& text, CellType type) {
    return type == CellType::Date
               ? static_cast<double>(DayZero().daysTo(QDate::fromString(text, Qt::ISODate)))
               : text.toDouble();
}

QString TextOf(double end, CellType type) {
    return type == CellType::Date ? DayZero().addDays(static_cast<qint64>(end)).toString(Qt::ISODate)
                                  : QString::number(end, 'g', kAllDigits);
}

std::optional<CellRange> RangeOf(const QString& text, CellType type) {
    const QStringList ends = text.split(QStringLiteral(".."));
    return ends.size() == 2 ? std::optional<CellRange>({EndOf(ends[0], type), EndOf(ends[1], type)})
                            : std::nullopt;
}

QString RangeText(const GridColumn& column) {
    return column.range ? TextOf(column.range->lowest, column.type) + QStringLiteral("..") +
                              TextOf(column.range->highest, column.type)
                        : QString();
}

GridColumn ColumnOf(const QString& line) {
    const QStringList parts = line.split(u'|');
    const auto part = [&](qsizetype index) { return parts.value(index).trimmed(); };
    GridColumn column;
    // The program may ask for the heading: it keeps its blanks. A line break is written out.
    column.heading = parts.value(0).replace(QStringLiteral("\\n"), QStringLiteral("\n"));
    column.field = part(1);
    if (!part(2).isEmpty()) {
        column.width = part(2).toDouble();
    }
    column.type = TypeOf(part(3));
    column.locked = part(4) == QStringLiteral("locked");
    column.picture = part(5);
    column.range = RangeOf(part(6), column.type);
    return column;
}

}  // namespace

Qt::Alignment GridColumn::Alignment() const {
    if (IsNumber()) {
        return Qt::AlignRight | Qt::AlignVCenter;
    }
    return (type == CellType::Edit ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter;
}

std::optional<QString> GridColumn::Accepted(const QString& typed) const {
    if (typed.trimmed().isEmpty() || (type != CellType::Date && !IsNumber())) {
        return typed;
    }
    const basic::Text text = ToText(typed);
    const auto inRange = [this](double value) { return !range || range->Contains(value); };
    if (type == CellType::Date) {
        const std::optional<basic::Date> date = basic::ParseDate(text);
        return date && inRange(std::floor(date->days)) ? std::optional<QString>(ShownText(*date))
                                                       : std::nullopt;
    }
    return !basic::IsNumeric(text) || inRange(basic::CDbl(text)) ? std::optional<QString>(typed)
                                                                 : std::nullopt;
}

std::vector<GridColumn> ColumnsOf(const QStringList& lines) {
    std::vector<GridColumn> columns;
    columns.reserve(static_cast<std::size_t>(lines.size()));
    std::transform(lines.begin(), lines.end(), std::back_inserter(columns), ColumnOf);
    return columns;
}

QStringList LinesOf(const std::vector<GridColumn>& columns) {
    QStringList lines;
    for (const GridColumn& column : columns) {
        QString heading = column.heading;
        heading.replace(u'\n', QStringLiteral("\\n"));
        lines.push_back(QStringList{heading, column.field, QString::number(column.width), NameOf(column.type),
                                    column.locked ? QStringLiteral("locked") : QString(), column.picture,
                                    RangeText(column)}
                            .join(u'|'));
    }
    return lines;
}

}  // namespace quardele::forms
