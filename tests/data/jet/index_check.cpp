#include "index_check.h"

#include <algorithm>

#include "indexes/index_node.h"
#include "indexes/row_key.h"
#include "pages/data_page.h"
#include "pages/usage_map.h"
#include "rows/row_codec.h"
#include "table_impl.h"

namespace quardele::jet::test {

namespace {

using Entries = std::vector<ByteString>;

ByteString Entry(std::span<const std::uint8_t> key, RowId row) {
    ByteString entry(key.begin(), key.end());
    for (const std::uint32_t part : {row.page >> 16, row.page >> 8, row.page, std::uint32_t{row.slot}}) {
        entry.push_back(static_cast<std::uint8_t>(part & 0xFF));
    }
    return entry;
}

Entries Expected(const Table& table, const RealIndex& index) {
    const TableDef& def = table.Impl().Def();
    Entries entries;
    RowScan scan = table.Scan();
    while (const auto row = scan.Next()) {
        const RowLayout layout({row->Bytes(), row->Id().page}, def, table.Impl().Layout());
        std::vector<std::optional<ByteString>> values;
        for (const IndexColumn& part : index.columns) {
            values.push_back(
                ColumnData(table.Impl().Pages(), def.stored[static_cast<std::size_t>(part.column)], layout));
        }
        const RowKey key = MakeKey(def, index, table.Impl().Layout(), values);
        if (!(index.ignoreNulls && key.allNull)) {
            entries.push_back(Entry(key.bytes, row->Id()));
        }
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

Entries Walked(const Table& table, int index, bool forward) {
    Entries entries;
    IndexCursor cursor = table.OpenIndex(index);
    for (bool found = forward ? cursor.First() : cursor.Last(); found;
         found = forward ? cursor.Next() : cursor.Previous()) {
        entries.push_back(Entry(cursor.KeyBytes(), cursor.Current()));
    }
    return entries;
}

/// The pages of a tree, and whether each entry of a node is the last one below its child.
class TreeCheck {
 public:
    TreeCheck(const Table& table, const RealIndex& index) : impl_(table.Impl()), index_(index) {}

    std::string Run() {
        static_cast<void>(LastBelow(index_.root));
        std::sort(pages_.begin(), pages_.end());
        if (fault_.empty() && pages_ != ReadUsageMap(impl_.Pages(), index_.map)) {
            fault_ = "map of the index and pages of the tree differ";
        }
        return fault_;
    }

 private:
    ByteString LastBelow(std::uint32_t page) {
        pages_.push_back(page);
        const IndexNode node = IndexNode::Load(impl_.Pages(), page, impl_.Def().page);
        if (node.leaf) {
            return node.items.empty() ? ByteString() : node.items.back().entry;
        }
        if (node.items.empty()) {
            fault_ = "node without items, page " + std::to_string(page);
        }
        ByteString last;
        for (const IndexItem& item : node.items) {
            last = LastBelow(item.child);
            if (last != item.entry) {
                fault_ = "entry of a node is not the last one below, page " + std::to_string(page);
            }
        }
        return node.tail != 0 ? LastBelow(node.tail) : last;
    }

    const TableImpl& impl_;
    const RealIndex& index_;
    std::vector<std::uint32_t> pages_;
    std::string fault_;
};

std::string PageFaults(const Table& table) {
    const TableImpl& impl = table.Impl();
    const auto free = ReadUsageMap(impl.Pages(), {.page = kGlobalMapPage, .slot = 0});
    const auto owned = *impl.DataPages();
    for (const std::uint32_t page : owned) {
        if (std::binary_search(free.begin(), free.end(), page)) {
            return "page " + std::to_string(page) + " is owned and free";
        }
    }
    const auto withRoom = ReadUsageMap(impl.Pages(), impl.Def().freeMap);
    if (!std::includes(owned.begin(), owned.end(), withRoom.begin(), withRoom.end())) {
        return "pages with room are not owned";
    }
    for (const StoredColumn& column : impl.Def().stored) {
        for (const std::uint32_t page : ReadUsageMap(impl.Pages(), column.ownedMap)) {
            if (std::binary_search(free.begin(), free.end(), page)) {
                return "long value page " + std::to_string(page) + " is owned and free";
            }
        }
    }
    return {};
}

}  // namespace

std::string FaultsOf(const Table& table) {
    for (std::size_t i = 0; i < table.Indexes().size(); ++i) {
        const TableDef& def = table.Impl().Def();
        const RealIndex& index = def.realIndexes[def.realOf[i]];
        const std::string name = basic::ToUtf8(table.Indexes()[i].name);
        const Entries expected = Expected(table, index);
        if (Walked(table, static_cast<int>(i), true) != expected) {
            return name + ": entries differ from the rows";
        }
        auto backward = Walked(table, static_cast<int>(i), false);
        std::reverse(backward.begin(), backward.end());
        if (backward != expected) {
            return name + ": entries differ from the rows, walked backward";
        }
        if (const std::string fault = TreeCheck(table, index).Run(); !fault.empty()) {
            return name + ": " + fault;
        }
    }
    return PageFaults(table);
}

}  // namespace quardele::jet::test
