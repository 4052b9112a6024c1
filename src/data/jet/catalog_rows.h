// Changing the catalogue: the rows of tables in MSysObjects, and who has rights to them in MSysACEs.
#pragma once

#include "structure_change.h"
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
    /// The table's properties as stored, empty when it has none.
    [[nodiscard]] ByteString Properties(const CatalogTable& table) const;
    void StoreProperties(const CatalogTable& table, const ByteString& properties);
    void RemoveTable(const CatalogTable& table);

 private:
    [[nodiscard]] TableImpl Objects() const;
    [[nodiscard]] TableImpl Rights() const;
    [[nodiscard]] basic::Binary DatabaseOwner() const;
    [[nodiscard]] std::vector<basic::Binary> AccountsOfNewTables() const;

    StructureChange& change_;
};

}  // namespace quardele::jet
