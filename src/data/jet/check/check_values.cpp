#include "check/check_values.h"

#include <algorithm>

#include "rows/text_codec.h"

namespace quardele::jet {

ValuesCheck::ValuesCheck(CheckContext& context, const CheckPlace& place, const TableDef& def)
    : context_(context), place_(place), def_(def) {
    for (std::size_t i = 0; i < def.stored.size(); ++i) {
        columnPlaces_.push_back({place.table, def.columns[i].name});
    }
    for (std::size_t i = 0; i < def.stored.size(); ++i) {
        if (def.stored[i].IsLong()) {
            longValues_.try_emplace(i, context, columnPlaces_[i], def.stored[i]);
        }
    }
}

void ValuesCheck::Check(const CheckedRow& row, const RowLayout& layout) {
    CheckShape(row, layout.Shape());
    for (std::size_t i = 0; i < def_.stored.size(); ++i) {
        if (def_.stored[i].type == ColumnType::Boolean) {
            continue;
        }
        context_.report.Guard(FaultCode::Value, columnPlaces_[i], row.data.page, [&] {
            if (const auto field = layout.Field(def_.stored[i])) {
                CheckField(i, *field);
            }
        });
    }
}

void ValuesCheck::CheckShape(const CheckedRow& row, const RowShape& shape) const {
    if (shape.columnCount > def_.maxColumns || shape.variableCount > def_.variableColumns) {
        ThrowDamaged(row.data.page, u"ligne de plus de colonnes que sa table");
    }
    if (context_.pages.Layout().wideText && shape.firstOffset != 0) {
        CheckOffsets(row, shape);
    }
}

// The offsets stand in the row from the last to the first, the end of the data before them.
void ValuesCheck::CheckOffsets(const CheckedRow& row, const RowShape& shape) const {
    std::size_t previous = 2;
    for (std::size_t i = 0; i <= shape.variableCount; ++i) {
        const std::size_t offset = row.bytes.U16(shape.firstOffset - 2 * i);
        if (offset < previous) {
            ThrowDamaged(row.data.page, u"positions des colonnes en désordre");
        }
        previous = offset;
    }
    if (previous > shape.firstOffset - 2u * shape.variableCount) {
        ThrowDamaged(row.data.page, u"colonne hors de sa ligne");
    }
}

void ValuesCheck::CheckField(std::size_t ordinal, const ByteView& field) {
    const StoredColumn& column = def_.stored[ordinal];
    if (column.IsLong()) {
        longValues_.at(ordinal).Check(field);
        return;
    }
    const auto natural = NaturalSize(column.type);
    const bool fits = natural           ? field.IsEmpty() || field.Size() == *natural
                      : column.IsText() ? IsWholeText(field, context_.pages.Layout())
                                        : field.Size() <= column.length;
    if (!fits) {
        context_.report.Add(FaultCode::Value, columnPlaces_[ordinal], field.Page());
    } else if (column.autoNumber && column.type == ColumnType::Long && !field.IsEmpty()) {
        const auto number = static_cast<std::uint32_t>(std::max(field.I32(0), 0));
        largestNumber_ = std::max(largestNumber_, number);
    }
}

void ValuesCheck::Finish() {
    for (auto& [ordinal, values] : longValues_) {
        values.ReportOrphans();
    }
    if (def_.lastAutoNumber < largestNumber_) {
        context_.report.AddNote(FaultCode::AutoNumber, place_, def_.page, NumberText(largestNumber_));
    }
}

}  // namespace quardele::jet
