#include "relationships.h"

#include <algorithm>
#include <cstdint>

namespace quardele::mdb {

namespace {

constexpr jet::TextView kList = u"MSysRelationships";

// Bits of its column "grbit", which are the attributes of a relationship in the data objects of Access.
constexpr std::uint32_t kNotEnforced = 0x00000002;
constexpr std::uint32_t kCascadeUpdate = 0x00000100;
constexpr std::uint32_t kCascadeDelete = 0x00001000;

/// A row of the list: one pair of columns of a relationship.
class Pair {
 public:
    Pair(const jet::Table& list, const jet::Row& row) : list_(list), row_(row) {}

    [[nodiscard]] jet::Text TextOf(jet::TextView column) const {
        jet::Text text;
        if (const int ordinal = list_.FindColumn(column); ordinal >= 0) {
            row_.TextAt(ordinal, text);
        }
        return text;
    }
    [[nodiscard]] std::uint32_t NumberOf(jet::TextView column) const {
        const int ordinal = list_.FindColumn(column);
        return ordinal < 0 ? 0
                           : static_cast<std::uint32_t>(static_cast<std::int64_t>(row_.NumberAt(ordinal)));
    }

 private:
    const jet::Table& list_;
    const jet::Row& row_;
};

Relationship Begun(const Pair& pair) {
    const std::uint32_t bits = pair.NumberOf(u"grbit");
    return {.name = pair.TextOf(u"szRelationship"),
            .table = pair.TextOf(u"szObject"),
            .referredTo = pair.TextOf(u"szReferencedObject"),
            .columns = {},
            .referredColumns = {},
            .enforced = (bits & kNotEnforced) == 0,
            .cascadeUpdate = (bits & kCascadeUpdate) != 0,
            .cascadeDelete = (bits & kCascadeDelete) != 0};
}

// The list numbers the pairs of a relationship and may hold them in any order. It has as many as an index may
// have columns: other numbers are damage.
void AddPair(const Pair& pair, Relationship& relationship) {
    constexpr std::size_t kMostPairs = 10;
    const std::size_t place = pair.NumberOf(u"icolumn");
    if (place >= kMostPairs) {
        return;
    }
    const std::size_t count = std::max(relationship.columns.size(), place + 1);
    relationship.columns.resize(count);
    relationship.referredColumns.resize(count);
    relationship.columns[place] = pair.TextOf(u"szColumn");
    relationship.referredColumns[place] = pair.TextOf(u"szReferencedColumn");
}

}  // namespace

std::vector<Relationship> RelationshipsOf(jet::Database& database) {
    std::vector<Relationship> relationships;
    if (!database.HasTable(kList)) {
        return relationships;
    }
    const auto list = database.OpenTable(kList);
    jet::RowScan scan = list->Scan();
    while (const auto row = scan.Next()) {
        const Pair pair(*list, *row);
        const jet::Text name = pair.TextOf(u"szRelationship");
        auto found = std::find_if(relationships.begin(), relationships.end(),
                                  [&name](const Relationship& known) { return known.name == name; });
        if (found == relationships.end()) {
            found = relationships.insert(found, Begun(pair));
        }
        AddPair(pair, *found);
    }
    return relationships;
}

}  // namespace quardele::mdb
