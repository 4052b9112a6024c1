#include "row_writer.h"

#include <cmath>

#include <basic/byte_words.h>

#include "cell_text.h"

namespace quardele::mdb {

namespace {

constexpr char kFirstPrintable = 0x20;

// Whether one of eight characters does. The comma has the highest code of those that need quotes, and most
// texts have none below it.
constexpr bool NeedsQuotes(std::uint64_t word) {
    return basic::HasByteBelow(word, ',' + 1) && (basic::HasByte(word, ',') || basic::HasByte(word, '"') ||
                                                  basic::HasByte(word, '\n') || basic::HasByte(word, '\r'));
}
constexpr bool NeedsEscape(std::uint64_t word) {
    return basic::HasByteBelow(word, kFirstPrintable) || basic::HasByte(word, '"') ||
           basic::HasByte(word, '\\');
}

void AppendEscaped(std::string_view text, TextBuffer& result) {
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

void AppendWithDoubledQuotes(std::string_view text, TextBuffer& result) {
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
        TextBuffer start;
        if (!starts_.empty()) {
            start += ',';
        }
        if (isJson_) {
            start += '"';
            AppendEscaped(basic::ToUtf8(name), start);
            start += "\":";
        }
        starts_.emplace_back(start.View());
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

inline void RowWriter::BeginCell() {
    if (isJson_) {
        buffer_ += starts_[cell_];
    } else if (cell_ > 0) {
        buffer_ += ',';
    }
    ++cell_;
}

inline void RowWriter::WriteStored(const jet::Row& row, int ordinal, const jet::Cell& cell) {
    switch (cell.kind) {
        case jet::Cell::Kind::Null:
            return PutNull();
        case jet::Cell::Kind::Truth:
            return Put(cell.whole != 0);
        case jet::Cell::Kind::Whole:
            return Put(cell.whole);
        case jet::Cell::Kind::Number:
            return Put(cell.number);
        case jet::Cell::Kind::Date:
            return Put(basic::Date{cell.number});
        case jet::Cell::Kind::Utf8:
            return Put(cell.text);
        case jet::Cell::Kind::Memo:
            memo_.clear();
            row.AppendUtf8At(ordinal, memo_);
            return Put(memo_);
        case jet::Cell::Kind::Other:
            return std::visit([this](const auto& value) { Put(value); }, row.Value(ordinal).Stored());
    }
}

void RowWriter::Write(const jet::Row& row, std::span<const jet::Cell> cells) {
    BeginRow();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        BeginCell();
        WriteStored(row, static_cast<int>(i), cells[i]);
    }
    EndRow();
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
    if (std::isfinite(value)) {
        return AppendSingle(value, buffer_);
    }
    Quote();
    AppendSingle(value, buffer_);
    Quote();
}

void RowWriter::Put(double value) {
    if (std::isfinite(value)) {
        return AppendDouble(value, buffer_);
    }
    Quote();
    AppendDouble(value, buffer_);
    Quote();
}

void RowWriter::Put(basic::Currency value) {
    AppendAmount(value, buffer_);
}

void RowWriter::Put(const basic::Decimal& value) {
    AppendDecimal(value, buffer_);
}

void RowWriter::Put(basic::Date value) {
    Quote();
    AppendMoment(value.days, buffer_);
    Quote();
}

void RowWriter::Put(const basic::Guid& value) {
    Quote();
    AppendGuid(value, buffer_);
    Quote();
}

void RowWriter::Put(const basic::Binary& value) {
    if (value.empty()) {
        buffer_ += "\"\"";  // nothing at all would be Null
        return;
    }
    Quote();
    AppendHex(value, buffer_);
    Quote();
}

void RowWriter::Put(const basic::Text& value) {
    Put(std::string_view(basic::ToUtf8(value)));
}

// In CSV a text is put between quotes when a reader could mistake it: for Null, for two cells, for two lines.
void RowWriter::Put(std::string_view text) {
    const bool isPlain =
        isJson_ ? !basic::AnyWord(text, NeedsEscape) : !text.empty() && !basic::AnyWord(text, NeedsQuotes);
    if (isPlain) {
        Quote();
        buffer_ += text;
        return Quote();
    }
    buffer_ += '"';
    if (isJson_) {
        AppendEscaped(text, buffer_);
    } else {
        AppendWithDoubledQuotes(text, buffer_);
    }
    buffer_ += '"';
}

void RowWriter::Quote() {
    if (isJson_) {
        buffer_ += '"';
    }
}

}  // namespace quardele::mdb
