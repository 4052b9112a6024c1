#include "definitions/catalog.h"

#include <algorithm>
#include <memory>

#include <basic/runtime_error.h>

#include "definitions/catalog_format.h"
#include "definitions/properties.h"
#include "engine.h"
#include "rows/long_value.h"
#include "table_impl.h"

namespace quardele::jet {

namespace {

using namespace catalog_format;

TableImpl CatalogTableOf(Engine& engine) {
    return {engine, nullptr, u"MSysObjects", TableDef::Read(engine.Pages(), kCatalogPage)};
}

/// A column of the catalogue, found by its name.
class Reader {
 public:
    explicit Reader(const TableImpl& table) : table_(table) {}

    [[nodiscard]] basic::Variant Value(const Row& row, TextView column) const {
        return row.Value(Ordinal(column));
    }
    [[nodiscard]] Text TextOf(const Row& row, TextView column) const {
        const basic::Variant value = Value(row, column);
        return value.IsText() ? value.As<Text>() : Text();
    }
    [[nodiscard]] std::uint32_t Number(const Row& row, TextView column) const {
        return static_cast<std::uint32_t>(static_cast<std::int64_t>(row.NumberAt(Ordinal(column))));
    }
    [[nodiscard]] int Ordinal(TextView column) const {
        const int ordinal = table_.Def().FindColumn(column);
        if (ordinal < 0) {
            ThrowDamaged(kCatalogPage, u"catalogue sans ses colonnes");
        }
        return ordinal;
    }

 private:
    const TableImpl& table_;
};

bool StartsWith(TextView name, TextView prefix) {
    return name.size() >= prefix.size() && basic::EqualNoCase(name.substr(0, prefix.size()), prefix);
}

bool IsSystem(TextView name, std::uint32_t flags) {
    return (flags & (kSystemFlags | kHiddenFlag)) != 0 || StartsWith(name, u"MSys") ||
           StartsWith(name, u"USys") || StartsWith(name, u"~TMP");
}

CatalogTable ReadTable(const Reader& read, const Row& row, int type) {
    CatalogTable table;
    table.name = read.TextOf(row, u"Name");
    table.row = row.Id();
    table.changed = row.NumberAt(read.Ordinal(u"DateUpdate"));
    table.system = IsSystem(table.name, read.Number(row, u"Flags"));
    table.linked = type != kLocalTable;
    table.odbc = type == kOdbcTable;
    if (table.linked) {
        table.linkedFile = read.TextOf(row, u"Database");
        table.linkedName = read.TextOf(row, u"ForeignName");
        table.connect = read.TextOf(row, u"Connect");
    } else {
        table.page = read.Number(row, u"Id") & kPageMask;
    }
    return table;
}

}  // namespace

Catalog Catalog::Read(Engine& engine) {
    const TableImpl objects = CatalogTableOf(engine);
    const Reader read(objects);
    Catalog catalog;
    RowScan scan = objects.Scan();
    while (const auto row = scan.Next()) {
        const int type = static_cast<int>(row->NumberAt(read.Ordinal(u"Type")));
        if (type == kLocalTable || type == kOdbcTable || type == kLinkedTable) {
            catalog.tables_.push_back(ReadTable(read, *row, type));
        }
    }
    return catalog;
}

const CatalogTable* Catalog::Find(TextView name) const {
    const auto found = std::find_if(tables_.begin(), tables_.end(), [name](const CatalogTable& table) {
        return basic::EqualNoCase(table.name, name);
    });
    return found == tables_.end() ? nullptr : &*found;
}

TableDef Catalog::Define(Engine& engine, const CatalogTable& table) const {
    TableDef def = TableDef::Read(engine.Pages(), table.page);
    const TableImpl objects = CatalogTableOf(engine);
    const int properties = objects.Def().FindColumn(u"LvProp");
    const auto row = objects.Fetch(table.row);
    if (properties < 0 || !row || row->IsNull(properties)) {
        return def;
    }
    const basic::Binary blob = row->Value(properties).As<basic::Binary>();
    if (!blob.empty()) {
        ApplyProperties({blob, table.row.page}, engine.Layout(), def);
    }
    return def;
}

}  // namespace quardele::jet
