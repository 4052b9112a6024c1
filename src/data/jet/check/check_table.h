// One table with everything that belongs to it.
#pragma once

#include <deque>
#include <vector>

#include "check/check_index.h"
#include "check/check_values.h"

namespace quardele::jet {

class TableCheck {
 public:
    /// Takes the pages of the definition. `context` must outlive the check. Throws 3343 when there is none.
    TableCheck(CheckContext& context, Text name, std::uint32_t page);
    TableCheck(const TableCheck&) = delete;
    TableCheck& operator=(const TableCheck&) = delete;

    void Run();
    [[nodiscard]] const TableDef& Def() const { return def_; }

 private:
    void ClaimDataPages();
    void CheckRows();

    CheckContext& context_;
    CheckPlace place_;
    TableDef def_;
    std::uint32_t owner_;
    std::vector<std::uint32_t> dataPages_;
    std::deque<IndexCheck> indexes_;
};

}  // namespace quardele::jet
