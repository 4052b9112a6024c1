// Columns of a grid as the layout file describes them.
#pragma once

#include <vector>

#include <QStringList>

#include <forms/grid.h>

namespace quardele::forms {

struct GridColumn {
    QString heading;
    QString field;      ///< empty for a column that is not bound
    double width = 10;  ///< in characters
    CellType type = CellType::Edit;
    bool locked = false;
    QString picture;  ///< icon of button cells

    [[nodiscard]] bool IsTyped() const { return type != CellType::CheckBox && type != CellType::Button; }
    [[nodiscard]] bool IsNumber() const {
        return type == CellType::Number || type == CellType::Float || type == CellType::Integer;
    }
    [[nodiscard]] Qt::Alignment Alignment() const;
};

/// From lines "heading | field | width | kind | locked | picture"; parts at the end may be missing.
[[nodiscard]] std::vector<GridColumn> ColumnsOf(const QStringList& lines);
[[nodiscard]] QStringList LinesOf(const std::vector<GridColumn>& columns);

}  // namespace quardele::forms
