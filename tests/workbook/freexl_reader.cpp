#include "freexl_reader.h"

#include <freexl.h>
#include <gtest/gtest.h>

namespace quardele::workbook::test {

namespace {

/// Opens no workbook with a text of three records or more (version 1.0.6).
class FreeXlReader : public WorkbookReader {
 public:
    std::string Name() const override { return "libfreexl"; }
    bool IsHere() const override { return true; }
    bool KnowsLongTexts() const override { return false; }
    /// Its texts end at U+0000.
    Told Tells(Units kind) const override { return kind == Units::Null ? Told::Otherwise : Told::Rightly; }
    SheetInWords Read(const std::filesystem::path& file,
                      const std::filesystem::path& /*folder*/) const override {
        const void* book = nullptr;
        EXPECT_EQ(freexl_open(file.c_str(), &book), FREEXL_OK);
        EXPECT_EQ(freexl_select_active_worksheet(book, 0), FREEXL_OK);
        unsigned rows = 0;
        unsigned short columns = 0;
        EXPECT_EQ(freexl_worksheet_dimensions(book, &rows, &columns), FREEXL_OK);
        SheetInWords sheet(rows);
        for (unsigned row = 0; row < rows; ++row) {
            for (unsigned short column = 0; column < columns; ++column) {
                FreeXL_CellValue value{};
                EXPECT_EQ(freexl_get_cell_value(book, row, column, &value), FREEXL_OK);
                sheet[row].push_back(Words(value));
            }
            while (!sheet[row].empty() && !sheet[row].back()) {
                sheet[row].pop_back();
            }
        }
        freexl_close(book);
        return sheet;
    }

 private:
    static CellInWords Words(const FreeXL_CellValue& cell) {
        switch (cell.type) {
            case FREEXL_CELL_NULL:
                return std::nullopt;
            case FREEXL_CELL_INT:
                return NumberInWords(cell.value.int_value);
            case FREEXL_CELL_DOUBLE:
                return NumberInWords(cell.value.double_value);
            case FREEXL_CELL_DATE:
                return std::string("d:") + cell.value.text_value + " 00:00:00";
            case FREEXL_CELL_DATETIME:
                return std::string("d:") + cell.value.text_value;
            default:
                return std::string("s:") + cell.value.text_value;
        }
    }
};

}  // namespace

const WorkbookReader& FreeXl() {
    static const FreeXlReader reader;
    return reader;
}

}  // namespace quardele::workbook::test
