// The rows of the sheet as records.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <workbook/workbook.h>

#include "globals.h"
#include "records.h"
#include "shared_texts.h"

namespace quardele::workbook {

class SheetRecords {
 public:
    /// Adds a row; its texts have the look that is given.
    void AddRow(std::span<const Cell> cells, CellLook textLook);
    [[nodiscard]] std::size_t RowCount() const { return rows_; }
    [[nodiscard]] const SharedTexts& Texts() const { return texts_; }
    /// Puts the whole sheet, with its first row in sight at all times.
    void Put(Records& out, std::span<const Column> columns) const;

 private:
    void PutCell(std::uint16_t column, const Cell& cell, CellLook textLook);
    void PutText(std::uint16_t column, basic::TextView text, CellLook look);
    void PutNumber(std::uint16_t column, double value, CellLook look);
    void PutDate(std::uint16_t column, basic::Date date);
    void BeginCell(std::uint16_t identifier, std::uint16_t column, CellLook look);
    void PutOpenBlock(Records& out) const;

    SharedTexts texts_;
    std::size_t rows_ = 0;
    Records closedBlocks_;
    /// The block in the making: its cells, and for each of its rows the columns that it reaches over.
    Records cells_;
    std::vector<std::uint16_t> widths_;
};

}  // namespace quardele::workbook
