// Tables as comma separated values, and whether our rows say the same.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <jet/table.h>

namespace quardele::jet::test {

/// A field; none when it is empty and has no quotes, which stands for Null.
using CsvField = std::optional<std::string>;
using CsvLine = std::vector<CsvField>;

/// The lines of a file after RFC 4180.
[[nodiscard]] std::vector<CsvLine> ParseCsv(const std::string& content);

/// What a comparison leaves open because the other reader cannot say it.
struct CsvLimits {
    bool emptyIsNull = false;  ///< Null and the empty text look the same
    bool noBinary = false;     ///< binary data are left out
};

/// Compares a row with a line of a dump by the columns' types, dates to the second; gives the first
/// difference in words, an empty text when there is none.
[[nodiscard]] std::string Difference(const Table& table, const Row& row, const CsvLine& line,
                                     CsvLimits limits);

}  // namespace quardele::jet::test
