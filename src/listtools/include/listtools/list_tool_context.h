// What the dialogs of the list tools know of the list that they work on.
#pragma once

#include <QString>

#include <forms/data_control.h>
#include <forms/grid.h>

namespace quardele::listtools {

/// In force from the start of a tool until the start of the next one.
struct ListToolContext {
    /// Nothing reads it.
    QString ListKind;
    /// Set while a dialog is open only.
    forms::Grid* Grid = nullptr;
    forms::DataControl* DataCtl = nullptr;
    /// The cursor's cell when the tool was started.
    int ActiveCol = 0;
    int ActiveRow = 0;
    /// The column's field, never empty while a dialog is open, and its header text.
    QString FieldName;
    QString ColumnTitle;
    forms::CellType ColumnType = forms::CellType::Date;
    /// The three clauses of the data control's RecordSource, in capitals, without their keywords.
    QString SelectPart;
    QString WherePart;
    QString OrderPart;
};
[[nodiscard]] ListToolContext& TheListToolContext();

/// The list's grid and data control; throw RuntimeError 91 while no dialog is open.
[[nodiscard]] forms::Grid& GridOf(const ListToolContext& context);
[[nodiscard]] forms::DataControl& DataOf(const ListToolContext& context);

/// Tag of a form whose list started without a filter.
inline constexpr QStringView kNoFilter = u"***";

}  // namespace quardele::listtools
