// Tables that lie in another file.
#pragma once

#include <memory>

#include "definitions/catalog.h"

namespace quardele::jet {

class Table;

/// Opens the table that a link leads to, in a Database of its own. The stored path is tried first, then a
/// file of that name beside the linking file. Throws 3011 when file or table are missing, 3251 for links to
/// anything else than Access files.
[[nodiscard]] std::shared_ptr<Table> OpenLinkedTable(const Engine& engine, const CatalogTable& link);

}  // namespace quardele::jet
