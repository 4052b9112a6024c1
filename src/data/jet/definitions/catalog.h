// The catalogue of a file: the table MSysObjects.
#pragma once

#include <vector>

#include <basic/text.h>

#include "definitions/table_def.h"

namespace quardele::jet {

class Engine;

/// A table, local or linked, as the catalogue lists it.
struct CatalogTable {
    Text name;
    std::uint32_t page = 0;  ///< of its definition; 0 for a linked table
    RowId row;               ///< its row in the catalogue
    double changed = 0;      ///< when its structure was changed last; differs after each change
    bool system = false;
    bool linked = false;
    bool odbc = false;
    Text linkedFile;  ///< Windows path
    Text linkedName;  ///< name in that file
    Text connect;     ///< empty for plain Access files
};

class Catalog {
 public:
    static Catalog Read(Engine& engine);

    [[nodiscard]] const std::vector<CatalogTable>& Tables() const { return tables_; }
    /// The table of this name, case ignored; null when there is none.
    [[nodiscard]] const CatalogTable* Find(TextView name) const;
    /// The table's definition with its properties.
    [[nodiscard]] TableDef Define(Engine& engine, const CatalogTable& table) const;

 private:
    std::vector<CatalogTable> tables_;
};

}  // namespace quardele::jet
