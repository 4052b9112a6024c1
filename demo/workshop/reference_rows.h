// Rows that do not depend on the scale: parameters, countries, types of work, sites, paths, changes,
// translations.
#pragma once

#include <memory>

#include <jet/database.h>

namespace quardele::workshop {

using DatabasePtr = std::shared_ptr<jet::Database>;

void WriteParameters(const DatabasePtr& data);
void WriteCountries(const DatabasePtr& data);
void WriteWorkTypes(const DatabasePtr& data);
void WriteSites(const DatabasePtr& stock);
void WritePaths(const DatabasePtr& paths);
void WriteChanges(const DatabasePtr& changes);
void WriteTranslations(const DatabasePtr& translations);

}  // namespace quardele::workshop
