#include "pattern.h"

#include <algorithm>

namespace quardele::basic {

std::vector<PatternUnits> SectionsOf(TextView pattern) {
    std::vector<PatternUnits> sections(1);
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'"') {
            quoted = !quoted;
        } else if (quoted) {
            sections.back().push_back({pattern[i], true});
        } else if (pattern[i] == u'\\') {
            if (++i < pattern.size()) {
                sections.back().push_back({pattern[i], true});
            }
        } else if (pattern[i] == u';') {
            sections.emplace_back();
        } else {
            sections.back().push_back({pattern[i], false});
        }
    }
    return sections;
}

bool HasSign(const PatternUnits& section, TextView signs) {
    return std::any_of(section.begin(), section.end(),
                       [signs](const PatternUnit& unit) { return unit.IsSign(signs); });
}

}  // namespace quardele::basic
