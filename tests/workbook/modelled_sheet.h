// A sheet as a test wants it to be read, in one form for all readers.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <workbook/workbook.h>

namespace quardele::workbook::test {

/// A cell in words: "s:" and a text in UTF-8, "n:" and a number, "d:YYYY-MM-DD HH:MM:SS"; none when empty.
using CellInWords = std::optional<std::string>;
/// Rows from the headings on. Empty cells behind the last full one of a row are left out.
using SheetInWords = std::vector<std::vector<CellInWords>>;

/// Headings and rows of a workbook that is to be written.
struct ModelledSheet {
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;

    /// What every reader must see.
    [[nodiscard]] SheetInWords InWords() const;
    /// The file.
    [[nodiscard]] std::string File() const;
};

/// A number as all readers here tell it: with as few digits as bring the same number back.
[[nodiscard]] std::string NumberInWords(double value);

}  // namespace quardele::workbook::test
