#include "range.h"

#include "story.h"

namespace quardele::word::writer {

std::span<const Member<Range>> Range::Members() {
    static constexpr Member<Range> kMembers[] = {{u"Text", &Range::GetText}};
    return kMembers;
}

Value Range::GetText(const Arguments&) {
    return TextOf(range_);
}

}  // namespace quardele::word::writer
