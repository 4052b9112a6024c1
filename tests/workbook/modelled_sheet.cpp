#include "modelled_sheet.h"

#include <charconv>
#include <sstream>

#include <basic/date.h>

namespace quardele::workbook::test {

namespace {

CellInWords Words(const Cell& cell) {
    if (const auto* text = std::get_if<basic::Text>(&cell)) {
        return text->empty() ? CellInWords() : "s:" + basic::ToUtf8(*text);
    }
    if (const auto* number = std::get_if<double>(&cell)) {
        return NumberInWords(*number);
    }
    if (const auto* date = std::get_if<basic::Date>(&cell)) {
        return "d:" + basic::ToUtf8(basic::Format(*date, u"yyyy-mm-dd hh:nn:ss"));
    }
    return std::nullopt;
}

std::vector<CellInWords> Words(const std::vector<Cell>& row) {
    std::vector<CellInWords> words;
    for (const Cell& cell : row) {
        words.push_back(Words(cell));
    }
    while (!words.empty() && !words.back()) {
        words.pop_back();
    }
    return words;
}

}  // namespace

SheetInWords ModelledSheet::InWords() const {
    SheetInWords words;
    std::vector<Cell> headings;
    for (const Column& column : columns) {
        headings.emplace_back(column.heading);
    }
    words.push_back(Words(headings));
    for (const auto& row : rows) {
        words.push_back(Words(row));
    }
    return words;
}

std::string ModelledSheet::File() const {
    Workbook workbook(u"Feuille1", columns);
    for (const auto& row : rows) {
        workbook.AddRow(row);
    }
    std::ostringstream file;
    workbook.Write(file);
    return std::move(file).str();
}

std::string NumberInWords(double value) {
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    return "n:" + std::string(digits.data(), end.ptr);
}

}  // namespace quardele::workbook::test
