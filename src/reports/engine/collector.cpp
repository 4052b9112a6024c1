#include "collector.h"

#include <basic/conversion.h>

namespace quardele::engine {

using formula::SummaryKind;

void Collector::Add(const Variant& value) {
    if (value.IsNull()) {
        return;
    }
    ++count_;
    if (kind_ == SummaryKind::Sum || kind_ == SummaryKind::Average) {
        sum_ += basic::CDbl(value);
    } else if (kind_ != SummaryKind::Count && (count_ == 1 || IsBeyond(value))) {
        extreme_ = value;
    }
}

Variant Collector::Result() const {
    if (kind_ == SummaryKind::Count) {
        return static_cast<double>(count_);
    }
    if (kind_ == SummaryKind::Sum) {
        return sum_;
    }
    if (count_ == 0) {
        return basic::Null();
    }
    return kind_ == SummaryKind::Average ? Variant(sum_ / static_cast<double>(count_)) : extreme_;
}

bool Collector::IsBeyond(const Variant& value) const {
    const int order = formula::Compare(value, extreme_);
    return kind_ == SummaryKind::Minimum ? order < 0 : order > 0;
}

}  // namespace quardele::engine
