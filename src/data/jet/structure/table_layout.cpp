#include "structure/table_layout.h"

#include <algorithm>

#include "indexes/index_node.h"
#include "structure/definition_pages.h"

namespace quardele::jet {

namespace {

void StoreLongValueMaps(MapRows& maps, std::span<std::uint8_t> record) {
    StoreRowPointer(record.subspan(long_value_map::kOwned), maps.Add());
    StoreRowPointer(record.subspan(long_value_map::kFree), maps.Add());
}

}  // namespace

ByteString NewLongValueMaps(MapRows& maps, std::uint16_t column) {
    ByteString record(long_value_map::kSize);
    StoreLittle(std::span(record), column);
    StoreLongValueMaps(maps, record);
    return record;
}

void LayOutIndex(Transaction& pages, PageAllocator& allocator, MapRows& maps, std::uint32_t table,
                 std::span<std::uint8_t> descriptor) {
    const auto& at = pages.Layout().realIndex;
    const RowPointer map = maps.Add();
    const std::uint32_t root = allocator.Allocate().number;
    allocator.AddToMap(map, root);
    IndexNode{.number = root, .items = {}}.Store(pages, table);
    StoreRowPointer(descriptor.subspan(at.map), map);
    StoreLittle(descriptor.subspan(at.root), root);
}

void LayOutTable(Transaction& pages, PageAllocator& allocator, MapRows& maps, std::uint32_t page,
                 DefinitionParts parts) {
    const auto& at = pages.Layout().def;
    const auto header = std::span(parts.header);
    StoreRowPointer(header.subspan(at.ownedMap), maps.Add());
    StoreRowPointer(header.subspan(at.freeMap), maps.Add());
    // The maps follow each other as the columns do, whatever the order of the records.
    std::vector<ByteString*> records;
    for (ByteString& record : parts.longValueMaps) {
        records.push_back(&record);
    }
    std::sort(records.begin(), records.end(), [](const ByteString* left, const ByteString* right) {
        return ByteView(*left, 0).U16(0) < ByteView(*right, 0).U16(0);
    });
    for (ByteString* record : records) {
        StoreLongValueMaps(maps, *record);
    }
    for (ByteString& index : parts.realIndexes) {
        LayOutIndex(pages, allocator, maps, page, index);
    }
    StoreDefinition(pages, allocator, page, parts.Join());
}

}  // namespace quardele::jet
