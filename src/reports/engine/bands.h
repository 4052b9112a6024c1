// The body of a report before it is put on pages: one strip below the other.
#pragma once

#include <optional>
#include <vector>

#include "section_layout.h"

namespace quardele::engine {

struct CompiledGroup {
    const Group* group = nullptr;
    CompiledSections header;
    CompiledSections footer;
};

struct CompiledBody {
    CompiledSections reportHeader;
    std::vector<CompiledGroup> groups;
    CompiledSections details;
    CompiledSections reportFooter;
};

struct Band {
    Strip strip{};
    std::optional<std::size_t> record{};
    SectionKind kind = SectionKind::Details;
    bool keepTogether = true;
    bool newPageBefore = false;
    bool newPageAfter = false;
    /// Number of groups that it stands in, whose headers may be repeated above it.
    std::size_t depth = 0;
    /// The group that begins here. It is a band of its own, without height, before the headers.
    std::optional<std::size_t> starts{};
};

/// All bands in the order of the report.
[[nodiscard]] std::vector<Band> BandsOf(const CompiledBody& body, const Evaluator& evaluator,
                                        std::size_t records, const SectionLayout& layout);

}  // namespace quardele::engine
