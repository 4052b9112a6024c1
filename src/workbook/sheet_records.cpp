#include "sheet_records.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <basic/date.h>

#include "record_names.h"

namespace quardele::workbook {

namespace {

/// The heights of the rows of a block stand before their cells.
constexpr std::size_t kRowsPerBlock = 32;
constexpr std::uint16_t kRowHeight = 255;  // twips
constexpr std::uint8_t kNumberError = 0x24;

/// Excel counts days from 1900 as if that year had a 29 February, so days before 01/03/1900 have one less
/// than the platform's.
std::optional<double> ExcelDays(basic::Date date) {
    constexpr double kFirstOfMarch1900 = 61;
    constexpr double kFirstOfJanuary1900 = 2;
    if (date.days >= kFirstOfMarch1900) {
        return date.days;
    }
    if (date.days >= kFirstOfJanuary1900) {
        return date.days - 1;
    }
    return std::nullopt;
}

/// Numbers that fit have a form of four bytes: 30 bits of a whole number, which may count hundredths.
std::optional<std::uint32_t> ShortForm(double value) {
    constexpr double kLimit = 536870912;  // 2^29
    constexpr std::uint32_t kWhole = 2;
    constexpr std::uint32_t kHundredths = 1;
    const auto coded = [](double whole) {
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(whole)) << 2;
    };
    const bool negativeZero = value == 0 && std::signbit(value);
    if (value == std::trunc(value) && value >= -kLimit && value < kLimit && !negativeZero) {
        return coded(value) | kWhole;
    }
    const double hundredths = value * 100;
    if (hundredths == std::trunc(hundredths) && std::abs(hundredths) < kLimit && hundredths / 100 == value &&
        !negativeZero) {
        return coded(hundredths) | kWhole | kHundredths;
    }
    return std::nullopt;
}

void PutColumnWidths(Records& out, std::span<const Column> columns) {
    out.Begin(record::kDefaultColumnWidth);
    out.PutShort(10);
    for (std::size_t column = 0; column < columns.size(); ++column) {
        if (columns[column].width <= 0) {
            continue;
        }
        out.Begin(record::kColumns);
        out.PutShort(static_cast<std::uint16_t>(column));
        out.PutShort(static_cast<std::uint16_t>(column));
        out.PutShort(static_cast<std::uint16_t>(std::min(columns[column].width, 255.0) * 256));
        out.PutShort(static_cast<std::uint16_t>(CellLook::Plain));
        out.PutShort(0);
        out.PutShort(0);
    }
}

void PutDimensions(Records& out, std::size_t rows, std::size_t columns) {
    out.Begin(record::kDimensions);
    out.PutLong(0);
    out.PutLong(static_cast<std::uint32_t>(rows));
    out.PutShort(0);
    out.PutShort(static_cast<std::uint16_t>(columns));
    out.PutShort(0);
}

/// The window onto the sheet, divided below the headings, which do not scroll.
void PutWindow(Records& out) {
    constexpr std::uint8_t kLowerPane = 2;
    out.Begin(record::kSheetWindow);
    out.PutShort(0x07BE);  // grid lines, headers, zeros shown; panes frozen; selected and in view
    out.PutShort(0);
    out.PutShort(0);
    out.PutLong(0x40);
    out.PutShort(0);
    out.PutShort(0);
    out.PutLong(0);
    out.Begin(record::kPane);
    out.PutShort(0);
    out.PutShort(1);
    out.PutShort(1);
    out.PutShort(0);
    out.PutShort(kLowerPane);
    out.Begin(record::kSelection);
    out.PutByte(kLowerPane);
    out.PutShort(1);
    out.PutShort(0);
    out.PutShort(0);
    out.PutShort(1);
    out.PutShort(1);
    out.PutShort(1);
    out.PutByte(0);
    out.PutByte(0);
}

}  // namespace

void SheetRecords::AddRow(std::span<const Cell> cells, CellLook textLook) {
    for (std::size_t column = 0; column < cells.size(); ++column) {
        PutCell(static_cast<std::uint16_t>(column), cells[column], textLook);
    }
    cells_.End();
    widths_.push_back(static_cast<std::uint16_t>(cells.size()));
    ++rows_;
    if (widths_.size() == kRowsPerBlock) {
        PutOpenBlock(closedBlocks_);
        cells_ = {};
        widths_.clear();
    }
}

void SheetRecords::Put(Records& out, std::span<const Column> columns) const {
    PutStart(out, Part::Sheet);
    out.Begin(record::kDefaultRowHeight);
    out.PutShort(0);
    out.PutShort(kRowHeight);
    PutColumnWidths(out, columns);
    PutDimensions(out, rows_, columns.size());
    out.End();
    out.Append(closedBlocks_);
    PutOpenBlock(out);
    PutWindow(out);
    out.Begin(record::kEnd);
    out.End();
}

void SheetRecords::PutCell(std::uint16_t column, const Cell& cell, CellLook textLook) {
    if (const auto* text = std::get_if<basic::Text>(&cell)) {
        PutText(column, *text, textLook);
    } else if (const auto* number = std::get_if<double>(&cell)) {
        PutNumber(column, *number, CellLook::Plain);
    } else if (const auto* date = std::get_if<basic::Date>(&cell)) {
        PutDate(column, *date);
    }
}

void SheetRecords::PutText(std::uint16_t column, basic::TextView text, CellLook look) {
    if (text.empty()) {
        return;
    }
    BeginCell(record::kSharedText, column, look);
    cells_.PutLong(texts_.NumberOf(text));
}

void SheetRecords::PutNumber(std::uint16_t column, double value, CellLook look) {
    if (!std::isfinite(value)) {
        BeginCell(record::kErrorValue, column, look);
        cells_.PutByte(kNumberError);
        cells_.PutByte(1);
    } else if (const auto coded = ShortForm(value)) {
        BeginCell(record::kShortNumber, column, look);
        cells_.PutLong(*coded);
    } else {
        BeginCell(record::kNumber, column, look);
        cells_.PutDouble(value);
    }
}

void SheetRecords::PutDate(std::uint16_t column, basic::Date date) {
    const bool hasTime = date.days != std::floor(date.days);
    if (const auto days = ExcelDays(date)) {
        PutNumber(column, *days, hasTime ? CellLook::DayAndTime : CellLook::Day);
    } else {
        PutText(column, basic::Format(date, hasTime ? u"dd/mm/yyyy hh:nn:ss" : u"dd/mm/yyyy"),
                CellLook::Plain);
    }
}

void SheetRecords::BeginCell(std::uint16_t identifier, std::uint16_t column, CellLook look) {
    cells_.Begin(identifier);
    cells_.PutShort(static_cast<std::uint16_t>(rows_));
    cells_.PutShort(column);
    cells_.PutShort(static_cast<std::uint16_t>(look));
}

void SheetRecords::PutOpenBlock(Records& out) const {
    std::size_t row = rows_ - widths_.size();
    for (const std::uint16_t width : widths_) {
        out.Begin(record::kRow);
        out.PutShort(static_cast<std::uint16_t>(row++));
        out.PutShort(0);
        out.PutShort(width);
        out.PutShort(kRowHeight);
        out.PutLong(0);
        out.PutShort(0x0100);
        out.PutShort(static_cast<std::uint16_t>(CellLook::Plain));
    }
    out.End();
    out.Append(cells_);
}

}  // namespace quardele::workbook
