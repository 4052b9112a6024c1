#include "row_writer.h"

#include <cmath>
#include <optional>

#include <basic/byte_words.h>

#include "cell_text.h"

namespace quardele::mdb {

namespace {

constexpr char kFirstPrintable = 0x20;

// Whether one of eight characters does.
constexpr bool NeedsQuotes(std::uint64_t word) {
    return basic::HasByte(word, ',') || basic::HasByte(word, '"') || basic::HasByte(word, '\n') ||
           basic::HasByte(word, '\r');
}
constexpr bool NeedsEscape(std::uint64_t word) {
    return basic::HasByteBelow(word, kFirstPrintable) || basic::HasByte(word, '"') ||
           basic::HasByte(word, '\\');
}

void AppendEscaped(std::string_view text, std::string& result) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    for (const char unit : text) {
        const auto code = static_cast<unsigned char>(unit);
        if (code < kFirstPrintable) {
            result += "\\u00";
            result += kHexDigits[code >> 4];
            result += kHexDigits[code & 0x0F];
            continue;
        }
        if (unit == '"' || unit == '\\') {
            result += '\\';
        }
        result += unit;
    }
}

void AppendWithDoubledQuotes(std::string_view text, std::string& result) {
    for (const char unit : text) {
        if (unit == '"') {
            result += '"';
        }
        result += unit;
    }
}

}  // namespace

RowWriter::RowWriter(Output& out, RowFormat format, const std::vector<jet::Text>& names)
    : out_(out), buffer_(out.Buffer()), isJson_(format == RowFormat::Json) {
    for (const jet::Text& name : names) {
        std::string& start = starts_.emplace_back(starts_.empty() ? "" : ",");
        if (isJson_) {
            start += '"';
            AppendEscaped(basic::ToUtf8(name), start);
            start += "\":";
        }
    }
    if (isJson_) {
        buffer_ += '[';
        return;
    }
    BeginRow();
    for (const jet::Text& name : names) {
        WriteCell(name);
    }
    EndRow();
}

void RowWriter::BeginRow() {
    cell_ = 0;
    if (isJson_) {
        buffer_ += isFirstRow_ ? "\n{" : ",\n{";
        isFirstRow_ = false;
    }
}

void RowWriter::EndRow() {
    buffer_ += isJson_ ? '}' : '\n';
    out_.FlushIfLarge();
}

void RowWriter::Finish() {
    if (isJson_) {
        buffer_ += "\n]\n";
    }
}

void RowWriter::BeginCell() {
    if (isJson_) {
        buffer_ += starts_[cell_];
    } else if (cell_ > 0) {
        buffer_ += ',';
    }
    ++cell_;
}

void RowWriter::Write(const jet::Table& table, const jet::Row& row) {
    BeginRow();
    const std::vector<jet::Column>& columns = table.Columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        BeginCell();
        WriteStored(row, static_cast<int>(i), columns[i].type);
    }
    EndRow();
}

// The common types go without a Variant.
void RowWriter::WriteStored(const jet::Row& row, int ordinal, jet::ColumnType type) {
    switch (type) {
        case jet::ColumnType::Boolean:
            return Put(row.NumberAt(ordinal) != 0);
        case jet::ColumnType::Text:
        case jet::ColumnType::Memo: {
            const std::size_t start = buffer_.size();
            return row.AppendUtf8At(ordinal, buffer_) ? FinishText(start) : PutNull();
        }
        case jet::ColumnType::Byte:
        case jet::ColumnType::Integer:
        case jet::ColumnType::Long:
        case jet::ColumnType::Double:
        case jet::ColumnType::Date:
            return WriteNumber(row, ordinal, type);
        default:
            return std::visit([this](const auto& value) { Put(value); }, row.Value(ordinal).Stored());
    }
}

void RowWriter::WriteNumber(const jet::Row& row, int ordinal, jet::ColumnType type) {
    const std::optional<double> number = row.Number(ordinal);
    if (!number) {
        return PutNull();
    }
    switch (type) {
        case jet::ColumnType::Double:
            return Put(*number);
        case jet::ColumnType::Date:
            return Put(basic::Date{*number});
        default:
            return Put(static_cast<std::int32_t>(*number));
    }
}

void RowWriter::WriteCell(const basic::Variant& value) {
    BeginCell();
    std::visit([this](const auto& stored) { Put(stored); }, value.Stored());
}

void RowWriter::PutNull() {
    if (isJson_) {
        buffer_ += "null";
    }
}

void RowWriter::Put(bool value) {
    if (isJson_) {
        buffer_ += value ? "true" : "false";
    } else {
        buffer_ += value ? '1' : '0';
    }
}

void RowWriter::Put(std::int32_t value) {
    AppendInteger(value, buffer_);
}

// JSON has no numbers for what is none: there it becomes a text.
void RowWriter::Put(float value) {
    const std::size_t start = buffer_.size();
    AppendSingle(value, buffer_);
    if (!std::isfinite(value)) {
        FinishPlain(start);
    }
}

void RowWriter::Put(double value) {
    const std::size_t start = buffer_.size();
    AppendDouble(value, buffer_);
    if (!std::isfinite(value)) {
        FinishPlain(start);
    }
}

void RowWriter::Put(basic::Currency value) {
    AppendAmount(value, buffer_);
}

void RowWriter::Put(const basic::Decimal& value) {
    AppendDecimal(value, buffer_);
}

void RowWriter::Put(basic::Date value) {
    const std::size_t start = buffer_.size();
    AppendMoment(value.days, buffer_);
    FinishPlain(start);
}

void RowWriter::Put(const basic::Guid& value) {
    const std::size_t start = buffer_.size();
    AppendGuid(value, buffer_);
    FinishPlain(start);
}

void RowWriter::Put(const basic::Binary& value) {
    const std::size_t start = buffer_.size();
    AppendHex(value, buffer_);
    if (!isJson_ && value.empty()) {
        buffer_ += "\"\"";  // nothing at all would be Null
    }
    FinishPlain(start);
}

void RowWriter::Put(const basic::Text& value) {
    const std::size_t start = buffer_.size();
    buffer_ += basic::ToUtf8(value);
    FinishText(start);
}

void RowWriter::FinishPlain(std::size_t start) {
    if (isJson_) {
        buffer_.insert(start, 1, '"');
        buffer_ += '"';
    }
}

// In CSV a text is put between quotes when a reader could mistake it: for Null, for two cells, for two lines.
void RowWriter::FinishText(std::size_t start) {
    const std::string_view text = std::string_view(buffer_).substr(start);
    const bool isPlain =
        isJson_ ? !basic::AnyWord(text, NeedsEscape) : !text.empty() && !basic::AnyWord(text, NeedsQuotes);
    if (isPlain) {
        return FinishPlain(start);
    }
    copy_ = text;
    buffer_.resize(start);
    buffer_ += '"';
    if (isJson_) {
        AppendEscaped(copy_, buffer_);
    } else {
        AppendWithDoubledQuotes(copy_, buffer_);
    }
    buffer_ += '"';
}

}  // namespace quardele::mdb
