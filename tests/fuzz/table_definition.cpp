// Definitions of tables whose pages say anything.
#include "definitions/table_def.h"
#include "input_pages.h"
#include "rows/row_codec.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

constexpr std::size_t kMostSeeds = 150;
constexpr std::size_t kLongestRow = 80;

void DecodeRow(const jet::TableDef& table, BytesView bytes, const jet::Format& format) {
    const jet::RowLayout row(jet::ByteView(bytes, table.page), table, format);
    for (const jet::StoredColumn& column : table.stored) {
        Attempt([&] { static_cast<void>(row.Field(column)); });
    }
}

}  // namespace

// Format, length and bytes of a row, number of the first page, pages.
void Use(BytesView bytes) {
    InputReader input(bytes);
    const jet::Format& format = ChosenFormat(input);
    const BytesView row = input.Take(input.Byte());
    const std::uint16_t first = input.Word();
    const InputPages pages(format, input);
    const jet::TableDef table = jet::TableDef::Read(pages, first);
    static_cast<void>(table.FindColumn(u"Nom"));
    DecodeRow(table, row, format);
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    ForEachTable([&](const jet::TableImpl& table) {
        jet::RowScan rows = table.Scan();
        const auto row = rows.Next();
        const BytesView stored = row && row->Bytes().size() <= kLongestRow ? row->Bytes() : BytesView();
        Bytes input = {FormatChoice(table.Layout()), static_cast<std::uint8_t>(stored.size())};
        AppendBytes(input, stored);
        AppendWord(input, table.Def().page);
        for (std::uint32_t number = table.Def().page; number != 0;) {
            const jet::PagePtr page = table.Pages().Read(number);
            AppendPage(input, *page);
            number = page->View().U32(table.Layout().def.next);
        }
        seeds.push_back(std::move(input));
    });
    return Thinned(std::move(seeds), kMostSeeds);
}

}  // namespace quardele::fuzz
