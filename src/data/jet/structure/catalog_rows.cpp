#include "structure/catalog_rows.h"

#include <algorithm>

#include <basic/date.h>
#include <basic/runtime_error.h>

#include "definitions/catalog_format.h"
#include "definitions/properties.h"
#include "rows/row_delete.h"
#include "rows/row_update.h"

namespace quardele::jet {

namespace {

using namespace catalog_format;

constexpr TextView kRightsTable = u"MSysACEs";
constexpr TextView kRelationshipsTable = u"MSysRelationships";

[[nodiscard]] int Ordinal(const TableImpl& table, TextView column) {
    const int ordinal = table.Def().FindColumn(column);
    if (ordinal < 0) {
        ThrowDamaged(table.Def().page, u"table du système sans ses colonnes");
    }
    return ordinal;
}

[[nodiscard]] std::int32_t NumberOf(const Row& row, int column) {
    return static_cast<std::int32_t>(row.NumberAt(column));
}

[[nodiscard]] basic::Binary BytesOf(const Row& row, int column) {
    const Variant value = row.Value(column);
    return value.Is<basic::Binary>() ? value.As<basic::Binary>() : basic::Binary();
}

// Later than the last change even when the clock was set back: others notice a change by its date.
[[nodiscard]] basic::Date DateAfter(double last) {
    constexpr double kMillisecond = 1.0 / 86400 / 1000;
    return {std::max(basic::Now().days, last + kMillisecond)};
}

}  // namespace

CatalogRows::CatalogRows(StructureChange& change) : change_(change) {}

TableImpl CatalogRows::Objects() const {
    return change_.TableOn(kCatalogPage);
}

TableImpl CatalogRows::Rights() const {
    const CatalogTable* table = change_.Objects().Find(kRightsTable);
    if (table == nullptr) {
        ThrowDamaged(kCatalogPage, u"catalogue sans la table des droits");
    }
    return change_.TableOn(table->page);
}

void CatalogRows::CheckFree(TextView name) const {
    const TableImpl objects = Objects();
    const int parent = Ordinal(objects, u"ParentId");
    const int nameColumn = Ordinal(objects, u"Name");
    RowScan scan = objects.Scan();
    Text other;
    while (const auto row = scan.Next()) {
        if (NumberOf(*row, parent) == kTables && row->TextAt(nameColumn, other) &&
            basic::EqualNoCase(other, name)) {
            throw basic::RuntimeError(basic::error::kTableExists,
                                      basic::Describe(basic::error::kTableExists, name));
        }
    }
}

basic::Binary CatalogRows::DatabaseOwner() const {
    const TableImpl objects = Objects();
    const int type = Ordinal(objects, u"Type");
    const int id = Ordinal(objects, u"Id");
    RowScan scan = objects.Scan();
    while (const auto row = scan.Next()) {
        if (NumberOf(*row, type) == kDocument && NumberOf(*row, id) == kDatabaseDocument) {
            return BytesOf(*row, Ordinal(objects, u"Owner"));
        }
    }
    ThrowDamaged(kCatalogPage, u"catalogue sans base de données");
}

// The owner, and all whose rights to the container of the tables are handed down.
std::vector<basic::Binary> CatalogRows::AccountsOfNewTables() const {
    const TableImpl rights = Rights();
    const int object = Ordinal(rights, u"ObjectId");
    const int inherited = Ordinal(rights, u"FInheritable");
    std::vector<basic::Binary> accounts;
    RowScan scan = rights.Scan();
    while (const auto row = scan.Next()) {
        if (NumberOf(*row, object) == kTables && NumberOf(*row, inherited) != 0) {
            accounts.push_back(BytesOf(*row, Ordinal(rights, u"SID")));
        }
    }
    const basic::Binary owner = DatabaseOwner();
    std::erase(accounts, owner);
    std::sort(accounts.begin(), accounts.end(), [](const basic::Binary& left, const basic::Binary& right) {
        return CompareBytes(left, right) < 0;
    });
    accounts.erase(std::unique(accounts.begin(), accounts.end()), accounts.end());
    accounts.insert(accounts.begin(), owner);
    return accounts;
}

void CatalogRows::AddTable(TextView name, std::uint32_t page, const ByteString& properties) {
    const basic::Date now = basic::Now();
    const auto id = static_cast<std::int32_t>(page);
    const std::vector<NamedValue> object = {
        {u"Id", id},
        {u"ParentId", kTables},
        {u"Name", name},
        {u"Type", std::int16_t{kLocalTable}},
        {u"DateCreate", now},
        {u"DateUpdate", now},
        {u"Flags", 0},
        {u"Owner", DatabaseOwner()},
        {u"LvProp", properties.empty() ? Variant(basic::Null{}) : Variant(properties)}};
    InsertNamed(change_.Pages(), kCatalogPage, object);
    const std::uint32_t rightsPage = Rights().Def().page;
    for (const basic::Binary& account : AccountsOfNewTables()) {
        const std::vector<NamedValue> right = {
            {u"ObjectId", id}, {u"ACM", kAllRights}, {u"FInheritable", false}, {u"SID", account}};
        InsertNamed(change_.Pages(), rightsPage, right);
    }
}

void CatalogRows::Update(const CatalogTable& table, const NamedValue& value) {
    const TableDef def = TableDef::Read(change_.Pages(), kCatalogPage);
    RowUpdate(change_.Pages(), def).Run(table.row, ChangesOf(def, {&value, 1}));
}

void CatalogRows::NoteChange(const CatalogTable& table) {
    Update(table, {u"DateUpdate", DateAfter(table.changed)});
}

ByteString CatalogRows::Properties(const CatalogTable& table) const {
    const TableImpl objects = Objects();
    const auto row = objects.Fetch(table.row);
    return row ? BytesOf(*row, Ordinal(objects, u"LvProp")) : ByteString();
}

void CatalogRows::StoreRulesOf(const CatalogTable& table, const Column& column) {
    const ByteString stored = Properties(table);
    PropertyBlob properties =
        stored.empty() ? PropertyBlob() : PropertyBlob({stored, table.row.page}, change_.Pages().Layout());
    StoreRules(column, properties);
    Update(table, {u"LvProp", properties.Bytes()});
}

bool CatalogRows::HasRelationship(TextView table) const {
    const CatalogTable* found = change_.Objects().Find(kRelationshipsTable);
    if (found == nullptr) {
        return false;
    }
    const TableImpl relationships = change_.TableOn(found->page);
    RowScan scan = relationships.Scan();
    Text end;
    while (const auto row = scan.Next()) {
        for (const TextView column : {u"szObject", u"szReferencedObject"}) {
            if (row->TextAt(Ordinal(relationships, column), end) && basic::EqualNoCase(end, table)) {
                return true;
            }
        }
    }
    return false;
}

void CatalogRows::RemoveTable(const CatalogTable& table) {
    const TableImpl rights = Rights();
    const int object = Ordinal(rights, u"ObjectId");
    std::vector<RowId> rows;
    RowScan scan = rights.Scan();
    while (const auto row = scan.Next()) {
        if ((static_cast<std::uint32_t>(NumberOf(*row, object)) & kPageMask) == table.page &&
            NumberOf(*row, object) >= 0 && NumberOf(*row, object) < kRoot) {
            rows.push_back(row->Id());
        }
    }
    for (const RowId row : rows) {
        RowDelete(change_.Pages(), rights.Def()).Run(row);
    }
    const TableDef objects = TableDef::Read(change_.Pages(), kCatalogPage);
    RowDelete(change_.Pages(), objects).Run(table.row);
}

}  // namespace quardele::jet
