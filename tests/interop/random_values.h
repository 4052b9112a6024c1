// Values that a column may hold: ordinary ones, and those at the edges.
#pragma once

#include <jet/table.h>

#include "random.h"

namespace quardele::jet::test {

/// How the values of a column are limited beyond its type.
struct ValueLimits {
    bool keyText = false;  ///< texts whose key is known, and short, for columns of indexes
    bool noNull = false;
    int longestText = 255;  ///< of a Text or Binary, so that rows of many columns fit a page
};

/// A value of exactly the type that reading gives. Memos and OLE values lie around the sizes at which they
/// move from the row to a page of their own and on to chains of pages, some are larger.
[[nodiscard]] Variant RandomValue(Random& random, const Column& column, const ValueLimits& limits);

}  // namespace quardele::jet::test
