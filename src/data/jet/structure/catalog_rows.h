// Changing the catalogue: the rows of tables in MSysObjects, and who has rights to them in MSysACEs.
#pragma once

#include "structure/named_row.h"
#include "structure/structure_change.h"
#include "table_impl.h"

namespace quardele::jet {

class CatalogRows {
 public:
    explicit CatalogRows(StructureChange& change);

    /// Throws 3010 when a table or a query has the name, case ignored.
    void CheckFree(TextView name) const;
    /// Lists a new table, with the rights that new tables of this file have.
    void AddTable(TextView name, std::uint32_t page, const ByteString& properties);
    /// Notes that a table was changed.
    void NoteChange(const CatalogTable& table);
    /// Writes the rules of a column among the table's properties.
    void StoreRulesOf(const CatalogTable& table, const Column& column);
    /// Whether the table is an end of a relationship, enforced or not.
    [[nodiscard]] bool HasRelationship(TextView table) const;
    void RemoveTable(const CatalogTable& table);

 private:
    [[nodiscard]] TableImpl Objects() const;
    [[nodiscard]] TableImpl Rights() const;
    /// Empty when the table has no properties.
    [[nodiscard]] ByteString Properties(const CatalogTable& table) const;
    void Update(const CatalogTable& table, const NamedValue& value);
    [[nodiscard]] basic::Binary DatabaseOwner() const;
    [[nodiscard]] std::vector<basic::Binary> AccountsOfNewTables() const;

    StructureChange& change_;
};

}  // namespace quardele::jet
