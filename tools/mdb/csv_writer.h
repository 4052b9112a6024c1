// Comma separated values after RFC 4180, UTF-8, lines ended by LF.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include <jet/table.h>

namespace quardele::mdb {

/// Writes rows as lines. A Null is nothing at all, an empty text is "", dates are YYYY-MM-DD HH:MM:SS, truth
/// values 1 and 0, binary data hexadecimal digits.
class CsvWriter {
 public:
    explicit CsvWriter(std::ostream& out) : out_(out) {}
    ~CsvWriter() { Flush(); }
    CsvWriter(const CsvWriter&) = delete;
    CsvWriter& operator=(const CsvWriter&) = delete;

    void WriteHeader(const jet::Table& table);
    void WriteRow(const jet::Table& table, const jet::Row& row);
    void Flush();

 private:
    void Append(const jet::Row& row, int ordinal, const jet::Column& column);
    void AppendMoment(double days);
    void AppendText(std::string_view utf8);
    void EndLine();

    std::ostream& out_;
    std::string buffer_;
    std::string utf8_;
};

}  // namespace quardele::mdb
