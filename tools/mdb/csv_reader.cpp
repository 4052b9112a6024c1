#include "csv_reader.h"

#include <utility>

#include "failure.h"

namespace quardele::mdb {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr Message kCannotRead{"lecture du fichier impossible", "cannot read the file"};
constexpr Message kStrayQuote{"ligne |1 : guillemet au milieu d'un champ",
                              "line |1: a quote in the middle of a field"};
constexpr Message kTextBehindQuote{"ligne |1 : texte derrière un guillemet fermant",
                                   "line |1: text behind a closing quote"};
constexpr Message kOpenQuote{"ligne |1 : guillemet jamais fermé", "line |1: a quote is never closed"};

}  // namespace

CsvReader::CsvReader(std::FILE* stream) : stream_(stream) {
    SkipByteOrderMark();
}

CsvReader::CsvReader(std::string text) : buffer_(std::move(text)) {
    SkipByteOrderMark();
}

void CsvReader::Fill() {
    position_ = 0;
    if (stream_ == nullptr) {
        buffer_.clear();
        return;
    }
    buffer_.resize(kBufferSize);
    buffer_.resize(std::fread(buffer_.data(), 1, buffer_.size(), stream_));
    if (std::ferror(stream_) != 0) {
        throw Failure(kCannotRead);
    }
}

int CsvReader::Peek() {
    if (position_ == buffer_.size()) {
        Fill();
        if (buffer_.empty()) {
            return kEnd;
        }
    }
    return static_cast<unsigned char>(buffer_[position_]);
}

int CsvReader::Take() {
    const int unit = Peek();
    position_ += unit == kEnd ? 0 : 1;
    return unit;
}

void CsvReader::SkipByteOrderMark() {
    if (Peek() != kEnd && buffer_.starts_with(kByteOrderMark)) {
        position_ = kByteOrderMark.size();
    }
}

bool CsvReader::Next(std::vector<CsvField>& fields) {
    if (Peek() == kEnd) {
        return false;
    }
    recordLine_ = line_;
    std::size_t count = 0;
    do {
        if (fields.size() == count) {
            fields.emplace_back();
        }
        ReadField(fields[count++]);
    } while (TakeSeparator());
    fields.resize(count);
    return true;
}

bool CsvReader::AtFieldEnd() {
    const int unit = Peek();
    return unit == kEnd || unit == ',' || unit == '\n' || unit == '\r';
}

void CsvReader::ReadField(CsvField& field) {
    field.text.clear();
    field.quoted = Peek() == '"';
    if (field.quoted) {
        ReadQuoted(field);
    }
    while (!AtFieldEnd()) {
        if (field.quoted || Peek() == '"') {
            throw Failure(field.quoted ? kTextBehindQuote : kStrayQuote, {std::to_string(line_)});
        }
        field.text += static_cast<char>(Take());
    }
}

void CsvReader::ReadQuoted(CsvField& field) {
    const std::size_t start = line_;
    Take();
    for (;;) {
        const int unit = Take();
        if (unit == kEnd) {
            throw Failure(kOpenQuote, {std::to_string(start)});
        }
        if (unit == '"') {
            if (Peek() != '"') {
                return;
            }
            Take();
        }
        line_ += unit == '\n' ? 1 : 0;
        field.text += static_cast<char>(unit);
    }
}

bool CsvReader::TakeSeparator() {
    const int unit = Take();
    if (unit == ',') {
        return true;
    }
    if (unit == '\r' && Peek() == '\n') {
        Take();
    }
    ++line_;
    return false;
}

}  // namespace quardele::mdb
