// What stands behind a Table.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <jet/table.h>

#include "definitions/table_def.h"
#include "engine.h"
#include "structure/table_use.h"

namespace quardele::jet {

using PageList = std::shared_ptr<const std::vector<std::uint32_t>>;

class TableImpl {
 public:
    /// `database` keeps the engine alive; the engine's own use gives none.
    TableImpl(Engine& engine, std::shared_ptr<Database> database, Text name, TableDef def);

    [[nodiscard]] const Text& Name() const { return name_; }
    [[nodiscard]] const TableDef& Def() const { return def_; }
    [[nodiscard]] Engine& Owner() const { return engine_; }
    [[nodiscard]] Database& Home() const { return *database_; }
    [[nodiscard]] const Format& Layout() const { return engine_.Layout(); }
    [[nodiscard]] const PageSource& Pages() const { return engine_.Pages(); }

    /// The table's data pages in ascending order.
    [[nodiscard]] PageList DataPages() const;
    [[nodiscard]] RowScan Scan() const;
    [[nodiscard]] std::optional<Row> Fetch(RowId id) const;
    /// Whether a page belongs to the table now, and has such a slot.
    [[nodiscard]] bool HasSlot(const Page& page, int slotNumber) const;
    /// The row of a slot that a page shows; empty for a deleted slot and for the target of a moved row.
    [[nodiscard]] std::optional<Row> RowAt(const PagePtr& page, int slotNumber) const;
    /// The same into a row of this table; false for these.
    [[nodiscard]] bool RowAt(const PagePtr& page, int slotNumber, Row& row) const;

    [[nodiscard]] IndexCursor OpenIndex(int index) const;
    void Update(RowId id, std::span<const ColumnChange> changes);
    RowId Insert(std::span<const ColumnChange> values);
    [[nodiscard]] Variant TakeAutoValue(int column);
    void Delete(RowId id);
    /// As the definition records it now.
    [[nodiscard]] std::size_t RowCount() const;

 private:
    /// Runs a change as a step of its own or within the open one, and gives the row that it returns.
    template <class Change>
    RowId Changed(const Change& change);
    /// Throws 3197 when the table is not made any more as it was when it was opened.
    void CheckStructure(const PageSource& pages) const;
    [[nodiscard]] Row Moved(RowId id, const ByteView& pointer) const;

    Engine& engine_;
    std::shared_ptr<Database> database_;
    Text name_;
    TableDef def_;
    std::optional<TableUse> use_;
    mutable PageList dataPages_;
    mutable std::uint64_t dataPagesGeneration_ = 0;
};

}  // namespace quardele::jet
