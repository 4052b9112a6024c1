// Comma separated values (RFC 4180) as they come in.
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

namespace quardele::mdb {

struct CsvField {
    std::string text;     ///< UTF-8
    bool quoted = false;  ///< tells an empty text from nothing at all
};

/// Reads record after record. A byte order mark at the start is passed over; lines end with LF, CR LF or CR.
class CsvReader {
 public:
    /// The stream must outlive the reader.
    explicit CsvReader(std::FILE* stream);
    /// Reads a text that is there as a whole.
    explicit CsvReader(std::string text);

    /// The fields of the next record, whose memory is used again; false at the end. An empty line is a record
    /// of one field that is nothing at all. Throws Failure, with the line, for quotes in the middle of a
    /// field, for text behind them, for quotes that are not closed, and when the stream cannot be read.
    bool Next(std::vector<CsvField>& fields);
    /// The line on which the last record began, counted from 1.
    [[nodiscard]] std::size_t Line() const { return recordLine_; }

 private:
    static constexpr int kEnd = -1;

    [[nodiscard]] int Peek();
    int Take();
    void Fill();
    void SkipByteOrderMark();
    void ReadField(CsvField& field);
    void ReadQuoted(CsvField& field);
    [[nodiscard]] bool AtFieldEnd();
    /// Passes over a comma (true) or the end of the line.
    bool TakeSeparator();

    std::FILE* stream_ = nullptr;  ///< null when the buffer is all there is
    std::string buffer_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
    std::size_t recordLine_ = 0;
};

}  // namespace quardele::mdb
