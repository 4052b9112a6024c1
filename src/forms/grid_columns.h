// Columns of a grid as the layout file describes them.
#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include <forms/grid.h>

namespace quardele::forms {

/// What a cell takes of what is typed, both ends included: numbers, or dates as days since 30/12/1899.
struct CellRange {
    double lowest = 0;
    double highest = 0;

    [[nodiscard]] bool Contains(double value) const { return value >= lowest && value <= highest; }
};

struct GridColumn {
    QString heading;
    QString field;      ///< empty for a column that is not bound
    double width = 10;  ///< in characters
    CellType type = CellType::Edit;
    bool locked = false;
    QString picture;  ///< icon of button cells
    std::optional<CellRange> range;

    [[nodiscard]] bool IsTyped() const { return type != CellType::CheckBox && type != CellType::Button; }
    [[nodiscard]] bool IsNumber() const {
        return type == CellType::Number || type == CellType::Float || type == CellType::Integer;
    }
    [[nodiscard]] Qt::Alignment Alignment() const;
    /// What the cell holds when an operator has typed a text into it: dates in their short form. Empty for
    /// what the cell refuses: no date in a date cell, anything outside its range. A text that is no number is
    /// taken by a number cell, for the program to judge.
    [[nodiscard]] std::optional<QString> Accepted(const QString& typed) const;
};

/// From lines "heading | field | width | kind | locked | picture | range"; parts at the end may be missing.
/// A range is "lowest..highest", its dates as yyyy-mm-dd.
[[nodiscard]] std::vector<GridColumn> ColumnsOf(const QStringList& lines);
[[nodiscard]] QStringList LinesOf(const std::vector<GridColumn>& columns);

}  // namespace quardele::forms
