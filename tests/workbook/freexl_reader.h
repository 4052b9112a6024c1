// libfreexl, a library that is linked, where the others are programs that are started.
#pragma once

#include "workbook_readers.h"

namespace quardele::workbook::test {

/// Not here when the library was missing as the tests were built.
[[nodiscard]] const WorkbookReader& FreeXl();

}  // namespace quardele::workbook::test
