#include <basic/conversion.h>
#include <basic/date.h>

#include "date_pattern.h"

namespace quardele::basic {

Text Format(Date date, TextView pattern) {
    return WriteDate(date, SectionsOf(pattern).front(), {});
}

Text Format(const Variant& value, TextView pattern) {
    if (value.IsEmpty() || value.IsNull()) {
        return {};
    }
    if (value.IsText() && !IsDate(value)) {
        return value.As<Text>();
    }
    return Format(CDate(value), pattern);
}

}  // namespace quardele::basic
