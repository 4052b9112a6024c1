// The enforced relationships of a table, as a change of one of its rows meets them.
#pragma once

#include "indexes/index_update.h"

namespace quardele::jet {

/// The other table of a relationship and its index of the columns that relate the two.
class Partner {
 public:
    /// Throws 3343 when the other table does not know the relationship, 3251 when its keys are made
    /// otherwise.
    Partner(const PageSource& pages, const TableDef& table, const Relation& relation);

    [[nodiscard]] const TableDef& Table() const { return table_; }
    [[nodiscard]] const RealIndex& Index() const { return table_.realIndexes[index_]; }
    /// Of Index() among the other table's real indexes.
    [[nodiscard]] std::size_t IndexPosition() const { return index_; }
    /// The rows of the other table with a key.
    [[nodiscard]] std::vector<RowId> RowsWith(const PageSource& pages, const RowKey& key) const;

 private:
    TableDef table_;
    std::size_t index_ = 0;
};

class Relations {
 public:
    Relations(const PageSource& pages, const TableDef& table) : pages_(pages), table_(table) {}

    /// Throws 3201 when a row with these keys refers to a row that is not there. A row may refer to itself;
    /// for keys that are left out nothing is asked.
    void CheckParents(const IndexKeys& keys) const;
    /// Whether there may be rows of other tables that refer to rows of this one.
    [[nodiscard]] bool HasChildren() const;
    /// Whether rows refer to a row that had the keys before and has those after now, or none.
    [[nodiscard]] bool HasChildrenOf(const IndexKeys& before, const IndexKeys& after) const;
    /// Calls use(relation, partner, rows) for each relationship with such rows.
    template <class Use>
    void ForChildrenOf(const IndexKeys& before, const IndexKeys& after, const Use& use) const {
        for (const Relation& relation : table_.relations) {
            if (!relation.child && HasChanged(relation, before, after)) {
                const Partner partner(pages_, table_, relation);
                const std::vector<RowId> rows = partner.RowsWith(pages_, *before[relation.realIndex]);
                if (!rows.empty()) {
                    use(relation, partner, rows);
                }
            }
        }
    }

 private:
    [[nodiscard]] static bool HasChanged(const Relation& relation, const IndexKeys& before,
                                         const IndexKeys& after);

    const PageSource& pages_;
    const TableDef& table_;
};

/// Throws 3200: rows of that table refer to the row.
[[noreturn]] void ThrowHasChildren();

}  // namespace quardele::jet
