// Excel 97-2003 workbooks: one sheet with a row of headings and rows of cells. Written only, never read.
//
//   Workbook workbook(u"Feuille1", {{.heading = u"Immatriculation", .width = 16}, {.heading = u"Km"}});
//   workbook.AddRow(std::array<Cell, 2>{basic::Text(u"1E5"), 120000.0});
//   workbook.Write(file);
//
// Facts of the format: Microsoft's published [MS-XLS] (BIFF8 records) and [MS-CFB] (compound file).
#pragma once

#include <memory>
#include <ostream>
#include <span>
#include <variant>
#include <vector>

#include <basic/text.h>
#include <basic/variant.h>

namespace quardele::workbook {

/// What a cell holds: nothing, a text, a number or a moment. A text stays a text whatever it
/// looks like (1E5, 01000, =A1). A moment before 01/01/1900, which the format cannot count, is written as a
/// text; a number that is infinite or no number as the error #NUM!.
using Cell = std::variant<std::monostate, basic::Text, double, basic::Date>;

struct Column {
    basic::Text heading;
    /// In characters of the default font, 0 to 255; 0 for the width that Excel gives by itself.
    double width = 0;
};

class SheetRecords;

/// A workbook in the making. Holds its rows in memory, about 20 bytes per cell and each different text once.
/// Not to be shared between threads.
class Workbook {
 public:
    /// Limits of the format; the row of headings is one of the rows. Lengths are in UTF-16 units.
    static constexpr std::size_t kMaxRows = 65536;
    static constexpr std::size_t kMaxColumns = 256;
    static constexpr std::size_t kMaxTextLength = 32767;
    static constexpr std::size_t kMaxNameLength = 31;

    /// Throws RuntimeError 5 when the name is empty, too long or has one of : \ / ? * [ ], or when there are
    /// too many columns.
    Workbook(basic::TextView sheetName, std::vector<Column> columns);
    ~Workbook();
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    /// Adds a row below the last one. Texts beyond kMaxTextLength are cut and end in "…". Throws RuntimeError
    /// 6 when the sheet is full, 5 when the row has more cells than there are columns; the row is not added
    /// then.
    void AddRow(std::span<const Cell> cells);
    /// Rows added, without the headings.
    [[nodiscard]] std::size_t RowCount() const;

    /// Writes the whole file. May be called more than once. Does not throw: the stream tells of failures.
    void Write(std::ostream& out) const;

 private:
    basic::Text name_;
    std::vector<Column> columns_;
    std::unique_ptr<SheetRecords> records_;
};

}  // namespace quardele::workbook
