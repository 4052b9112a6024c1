// The four tables that every file has: how they are made, and what stands in them at first.
#pragma once

#include <vector>

#include "definitions/definition_parts.h"
#include "structure/named_row.h"

namespace quardele::jet {

inline constexpr std::uint32_t kRightsPage = 3;
inline constexpr std::uint32_t kQueriesPage = 4;
inline constexpr std::uint32_t kRelationshipsPage = 5;

/// The definitions on pages 2 to 5, without maps and roots.
[[nodiscard]] std::vector<DefinitionParts> SystemDefinitions();

/// The first rows of MSysObjects and of MSysACEs.
[[nodiscard]] std::vector<std::vector<NamedValue>> FirstObjects(basic::Date created);
[[nodiscard]] std::vector<std::vector<NamedValue>> FirstRights();

}  // namespace quardele::jet
