// Property blobs that say anything.
#include "definitions/properties.h"

#include "input_reader.h"
#include "seed_files.h"

namespace quardele::fuzz {

namespace {

constexpr std::size_t kMostSeeds = 150;

// Columns of names that blobs of the seeds use, and some that they do not.
[[nodiscard]] jet::TableDef TableOfColumns() {
    jet::TableDef table;
    for (const char16_t* name : {u"ID", u"Id", u"Nom", u"Name", u"TSITE_CODE", u"Type", u"A", u""}) {
        table.columns.emplace_back().name = name;
    }
    table.stored.resize(table.columns.size());
    return table;
}

}  // namespace

// The blob in both formats.
void Use(BytesView input) {
    for (const jet::Format* format : {&jet::kJet4, &jet::kJet3}) {
        Attempt([&] {
            jet::TableDef table = TableOfColumns();
            jet::ApplyProperties(jet::ByteView(input, 1), *format, table);
        });
    }
}

std::vector<Bytes> Seeds() {
    std::vector<Bytes> seeds;
    ForEachTable([&](const jet::TableImpl& table) {
        if (table.Name() != u"MSysObjects") {
            return;
        }
        const int blob = table.Def().FindColumn(u"LvProp");
        jet::RowScan rows = table.Scan();
        while (const auto row = rows.Next()) {
            if (!row->IsNull(blob)) {
                seeds.push_back(row->Value(blob).As<basic::Binary>());
            }
        }
    });
    return Thinned(std::move(seeds), kMostSeeds);
}

}  // namespace quardele::fuzz
