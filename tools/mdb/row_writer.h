// Rows on their way out, as comma separated values (RFC 4180) or as JSON objects.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <basic/variant.h>
#include <jet/row_cells.h>

#include "output.h"

namespace quardele::mdb {

enum class RowFormat { Csv, Json };

/// The names of columns of a table or of a query.
template <class Columns>
[[nodiscard]] std::vector<jet::Text> NamesOf(const Columns& columns) {
    std::vector<jet::Text> names;
    for (const auto& column : columns) {
        names.push_back(column.name);
    }
    return names;
}

/// Writes row after row, cell after cell. In CSV, Null is nothing at all and an empty text is ""; truth
/// values are 1 and 0. In JSON, numbers and truth values are its own, all else is a text. Lines end with LF.
class RowWriter {
 public:
    /// `names` are those of the columns.
    RowWriter(Output& out, RowFormat format, const std::vector<jet::Text>& names);

    /// Writes a row of a table, all of whose cells were read.
    void Write(const jet::Row& row, std::span<const jet::Cell> cells);

    void BeginRow();
    /// The next cell of the row.
    void WriteCell(const basic::Variant& value);
    void EndRow();
    /// Call it behind the last row.
    void Finish();

 private:
    void BeginCell();
    void WriteStored(const jet::Row& row, int ordinal, const jet::Cell& cell);

    // Each appends a value; Quote what stands on both sides of one that is a text in JSON only.
    void Put(basic::Empty) { PutNull(); }
    void Put(basic::Null) { PutNull(); }
    void Put(bool value);
    void Put(std::uint8_t value) { Put(std::int32_t{value}); }
    void Put(std::int16_t value) { Put(std::int32_t{value}); }
    void Put(std::int32_t value);
    void Put(float value);
    void Put(double value);
    void Put(basic::Currency value);
    void Put(basic::Date value);
    void Put(const basic::Decimal& value);
    void Put(const basic::Guid& value);
    void Put(const basic::Text& value);
    void Put(const basic::Binary& value);
    void Put(std::string_view text);
    void PutNull();
    void Quote();

    Output& out_;
    TextBuffer& buffer_;
    bool isJson_;
    std::vector<std::string> starts_;  ///< what stands before each cell
    std::size_t cell_ = 0;
    bool isFirstRow_ = true;
    std::string memo_;  ///< the last one
};

}  // namespace quardele::mdb
