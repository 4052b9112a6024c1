// Workbooks with any texts: in cells, as headings, as the name of the sheet.
#include <array>
#include <sstream>
#include <stdexcept>

#include <workbook/workbook.h>

#include "harness.h"

namespace quardele::fuzz {

namespace {

constexpr std::size_t kColumns = 3;
constexpr std::size_t kSector = 512;
constexpr std::size_t kHeading = 12;

[[nodiscard]] basic::Text UnitsOf(BytesView input) {
    basic::Text text;
    for (std::size_t at = 0; at + 1 < input.size(); at += 2) {
        text += static_cast<char16_t>(input[at] | input[at + 1] << 8U);
    }
    return text;
}

/// The input, cut at each unit of value 1.
[[nodiscard]] std::vector<basic::Text> TextsOf(BytesView input) {
    std::vector<basic::Text> texts(1);
    for (const char16_t unit : UnitsOf(input)) {
        if (unit == 1) {
            texts.emplace_back();
        } else {
            texts.back() += unit;
        }
    }
    return texts;
}

void CheckFile(const workbook::Workbook& book) {
    std::ostringstream out;
    book.Write(out);
    const std::string file = std::move(out).str();
    if (!file.starts_with("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") || file.size() % kSector != 0) {
        throw std::logic_error("no compound file of whole sectors");
    }
}

}  // namespace

void Use(BytesView input) {
    const std::vector<basic::Text> texts = TextsOf(input);
    Attempt([&] { CheckFile(workbook::Workbook(texts.front(), {})); });
    Attempt([&] {
        workbook::Workbook book(u"Feuille1", {{.heading = texts.front()},
                                              {.heading = texts.back().substr(0, kHeading)},
                                              {.heading = u"Note", .width = 300}});
        std::vector<workbook::Cell> row;
        for (const basic::Text& text : texts) {
            row.emplace_back(text);
            if (row.size() == kColumns) {
                book.AddRow(row);
                row.clear();
            }
        }
        book.AddRow(row);
        CheckFile(book);
    });
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    basic::Text longText(40000, u'é');
    longText[32765] = 0xD83D;
    longText[32766] = 0xDE97;
    for (const basic::Text& text :
         {basic::Text(u"Immatriculation\u0001AB-123-CD\u0001Contrôle technique"),
          basic::Text(u"1E5\u000101000\u0001=A1\u0001\n\r\t\u0001\U0001F697"), longText}) {
        Bytes& seed = seeds.emplace_back();
        for (const char16_t unit : text) {
            seed.push_back(static_cast<std::uint8_t>(unit & 0xFFU));
            seed.push_back(static_cast<std::uint8_t>(unit >> 8U));
        }
    }
    return seeds;
}

}  // namespace quardele::fuzz
