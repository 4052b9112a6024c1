// What the parts of a check share.
#pragma once

#include <functional>
#include <set>
#include <vector>

#include "check/page_ledger.h"
#include "file/page.h"
#include "rows/row_pointer.h"

namespace quardele::jet {

struct CheckContext {
    const PageSource& pages;
    CheckReport& report;
    PageLedger& ledger;
    std::function<void()> pageDone;  ///< called for each data and index page
    std::set<RowPointer> mapRows;    ///< rows of maps that have an owner
};

}  // namespace quardele::jet
