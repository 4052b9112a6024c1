#include "definitions/relations.h"

#include <algorithm>

#include <basic/runtime_error.h>

#include "indexes/index_walk.h"

namespace quardele::jet {

namespace {

constexpr int kNoParent = 3201;
constexpr int kHasChildren = 3200;

std::size_t IndexOfNumber(const TableDef& table, std::uint32_t number) {
    const auto found = std::find(table.numberOf.begin(), table.numberOf.end(), number);
    if (found == table.numberOf.end()) {
        ThrowDamaged(table.page, u"relation sans son autre table");
    }
    return table.realOf[static_cast<std::size_t>(found - table.numberOf.begin())];
}

// Keys of the two sides can be compared as bytes when they are made alike.
bool SameKeys(const TableDef& left, const RealIndex& leftIndex, const TableDef& right,
              const RealIndex& rightIndex) {
    return std::equal(leftIndex.columns.begin(), leftIndex.columns.end(), rightIndex.columns.begin(),
                      rightIndex.columns.end(), [&](const IndexColumn& mine, const IndexColumn& other) {
                          const StoredColumn& a = left.stored[static_cast<std::size_t>(mine.column)];
                          const StoredColumn& b = right.stored[static_cast<std::size_t>(other.column)];
                          return mine.ascending == other.ascending && a.type == b.type && a.scale == b.scale;
                      });
}

}  // namespace

Partner::Partner(const PageSource& pages, const TableDef& table, const Relation& relation)
    : table_(TableDef::Read(pages, relation.table)), index_(IndexOfNumber(table_, relation.partner)) {
    if (!SameKeys(table, table.realIndexes[relation.realIndex], table_, Index()) || !Index().seekable) {
        throw basic::RuntimeError(
            basic::error::kOperationNotSupported,
            u"Une relation lie des champs de types différents ; ils ne peuvent pas changer ici.");
    }
}

std::vector<RowId> Partner::RowsWith(const PageSource& pages, const RowKey& key) const {
    std::vector<RowId> rows;
    IndexWalk walk(pages, table_.page, Index());
    for (bool found = !key.anyNull && walk.FirstFrom(key.bytes, false);
         found && StartsWith(walk.Entry(), key.bytes); found = walk.Next()) {
        rows.push_back(EntryRow(walk.Entry(), Index().root));
    }
    return rows;
}

// A row with a Null among the columns refers to nothing.
void Relations::CheckParents(const IndexKeys& keys) const {
    for (const Relation& relation : table_.relations) {
        const auto& key = keys[relation.realIndex];
        if (!relation.child || !key || key->anyNull) {
            continue;
        }
        const Partner partner(pages_, table_, relation);
        IndexWalk walk(pages_, partner.Table().page, partner.Index());
        if (walk.FirstFrom(key->bytes, false) && StartsWith(walk.Entry(), key->bytes)) {
            continue;
        }
        const bool refersToItself = relation.table == table_.page && keys[partner.IndexPosition()] &&
                                    keys[partner.IndexPosition()]->bytes == key->bytes;
        if (!refersToItself) {
            throw basic::RuntimeError(kNoParent,
                                      u"La table liée n'a pas d'enregistrement auquel se rapporter ; "
                                      u"l'enregistrement ne peut être ni ajouté ni modifié ainsi.");
        }
    }
}

bool Relations::HasChildren() const {
    return std::any_of(table_.relations.begin(), table_.relations.end(),
                       [](const Relation& relation) { return !relation.child; });
}

bool Relations::HasChanged(const Relation& relation, const IndexKeys& before, const IndexKeys& after) {
    const auto& old = before[relation.realIndex];
    const auto& now = after[relation.realIndex];
    return old && (!now || now->bytes != old->bytes);
}

bool Relations::HasChildrenOf(const IndexKeys& before, const IndexKeys& after) const {
    bool found = false;
    ForChildrenOf(before, after,
                  [&found](const Relation&, const Partner&, const std::vector<RowId>&) { found = true; });
    return found;
}

void ThrowHasChildren() {
    throw basic::RuntimeError(
        kHasChildren,
        u"Des enregistrements d'une table liée se rapportent à cet enregistrement ; il ne "
        u"peut être ni supprimé ni modifié ainsi.");
}

}  // namespace quardele::jet
