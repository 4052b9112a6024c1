#include "grid_columns.h"

#include <algorithm>
#include <array>

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
    return column;
}

}  // namespace

Qt::Alignment GridColumn::Alignment() const {
    if (IsNumber()) {
        return Qt::AlignRight | Qt::AlignVCenter;
    }
    return (type == CellType::Edit ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter;
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
                                    column.locked ? QStringLiteral("locked") : QString(), column.picture}
                            .join(u'|'));
    }
    return lines;
}

}  // namespace quardele::forms
