// The descriptors of an index in a table definition: its tree, and its name.
#pragma once

#include <span>

#include "definitions/definition_parts.h"

namespace quardele::jet {

/// Adds an index to a definition, with a tree of its own that has neither map nor root yet. Throws 3125 for
/// its name, 3284 when the name is taken, 3283 for a second primary key, 3409 for a column that is unknown,
/// named twice or cannot be indexed, and for none or more than ten of them, 3626 for too many indexes.
void AppendIndex(const IndexDesign& design, DefinitionParts& parts);

}  // namespace quardele::jet
