// One index: its tree page by page, and its entries against the rows.
#pragma once

#include <vector>

#include "check/check_entries.h"
#include "indexes/index_page.h"

namespace quardele::jet {

class IndexCheck {
 public:
    /// All must outlive the check.
    IndexCheck(CheckContext& context, CheckPlace place, const TableDef& def, const RealIndex& index);
    IndexCheck(const IndexCheck&) = delete;
    IndexCheck& operator=(const IndexCheck&) = delete;

    void AddRow(const CheckedRow& row, const RowLayout& layout) { entries_.AddRow(row, layout); }
    /// Walks the tree. Call it behind the last row.
    void Run(const std::vector<std::uint32_t>& dataPages);

 private:
    struct Linked {
        std::uint32_t page = 0;
        std::uint32_t previous = 0;
        std::uint32_t next = 0;
    };
    using Level = std::vector<Linked>;  ///< from left to right

    void Descend(std::uint32_t number, std::size_t depth);
    void CheckPage(const IndexPage& page, std::size_t depth);
    void CheckNode(const IndexPage& node, std::size_t depth);
    void CheckLeaf(const IndexPage& leaf);
    void CheckEntry(std::uint32_t page);
    [[nodiscard]] bool IsDuplicate() const;
    void CheckLinks(const Level& level, bool mayBeUnlinked);
    void CheckMapOfTree();
    void WalkLeaves(const EntriesCheck::UseEntry& use) const;
    void Report(FaultCode code, std::uint32_t page, Text detail = {});

    CheckContext& context_;
    CheckPlace place_;
    const TableDef& def_;
    const RealIndex& index_;
    EntriesCheck entries_;
    std::uint32_t owner_;
    std::vector<Level> nodes_;  ///< by depth
    Level leaves_;
    std::vector<std::uint32_t> treePages_;
    Fingerprint found_;
    ByteString previous_;  ///< the entry before, over all leaves
    ByteString bound_;     ///< what the next entry must lie behind as well: its left neighbour in a node
    ByteString entry_;
    std::size_t leafDepth_ = 0;
};

}  // namespace quardele::jet
