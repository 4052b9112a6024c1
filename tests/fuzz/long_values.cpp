// Long values whose descriptors and pieces say anything.
#include "input_pages.h"
#include "rows/long_value.h"
#include "rows/row_codec.h"
#include "rows/text_codec.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

constexpr std::size_t kMostSeeds = 150;
constexpr int kRowsOfTable = 40;

void DecodeText(BytesView data, const jet::Format& format) {
    const jet::ByteView view(data, 1);
    std::string utf8;
    jet::AppendUtf8(view, format, utf8);
    const basic::Text text = jet::DecodeText(view, format);
    if (basic::ToUtf8(text) != utf8) {
        throw std::logic_error("two ways to decode a text differ");
    }
}

[[nodiscard]] Bytes Seed(const jet::TableImpl& table, const jet::ByteView& field) {
    Bytes input = {FormatChoice(table.Layout()), static_cast<std::uint8_t>(field.Size())};
    AppendBytes(input, field.Span());
    const auto value = jet::LongValueDescriptor::Load(field);
    std::uint32_t last = 0;
    for (const jet::RowPointer piece : jet::PiecesOf(table.Pages(), value)) {
        if (piece.page != last) {
            last = piece.page;
            AppendPage(input, *table.Pages().Read(last));
        }
    }
    return input;
}

}  // namespace

// Format, length and bytes of the field in the row, pages.
void Use(BytesView bytes) {
    InputReader input(bytes);
    const jet::Format& format = ChosenFormat(input);
    const jet::ByteView field(input.Take(input.Byte()), 1);
    const InputPages pages(format, input);
    Attempt([&] { DecodeText(jet::ReadLongValue(pages, field), format); });
    static_cast<void>(jet::PiecesOf(pages, jet::LongValueDescriptor::Load(field)));
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    ForEachTable([&](const jet::TableImpl& table) {
        jet::RowScan rows = table.Scan();
        for (int count = 0; count < kRowsOfTable; ++count) {
            const auto row = rows.Next();
            if (!row) {
                return;
            }
            const jet::RowLayout layout(jet::ByteView(row->Bytes(), 1), table.Def(), table.Layout());
            for (const jet::StoredColumn& column : table.Def().stored) {
                const auto field = layout.Field(column);
                if (column.IsLong() && field && field->Size() >= jet::long_value::kDescriptor &&
                    field->Size() <= 0xFF) {
                    seeds.push_back(Seed(table, *field));
                }
            }
        }
    });
    return Thinned(std::move(seeds), kMostSeeds);
}

}  // namespace quardele::fuzz
