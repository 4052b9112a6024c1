// Sections with the formulas of their objects read.
#pragma once

#include <optional>
#include <vector>

#include "compiled_formula.h"

namespace quardele::engine {

struct CompiledCell;

struct CompiledObject {
    const ReportObject* object = nullptr;
    std::optional<CompiledFormula> suppress;
    std::optional<CompiledFormula> value;  ///< of fields
    std::vector<CompiledCell> cells;       ///< of flows
};

struct CompiledCell {
    const FlowCell* cell = nullptr;
    std::optional<CompiledFormula> suppress;
    std::vector<CompiledObject> objects;
};

struct CompiledSection {
    const Section* section = nullptr;
    std::optional<CompiledFormula> suppress;
    std::vector<CompiledObject> objects;
};

using CompiledSections = std::vector<CompiledSection>;

/// Throws what FormulaSet::Compile throws, 3001 for a "suppress" that asks for a page number outside page
/// header and footer, or for the number of pages.
[[nodiscard]] CompiledSections CompileSections(const std::vector<std::shared_ptr<Section>>& sections,
                                               FormulaSet& formulas);

}  // namespace quardele::engine
