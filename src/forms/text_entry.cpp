#include <forms/strings.h>
#include <forms/text_entry.h>

#include "field_text.h"

namespace quardele::forms {

basic::Variant TextEntry::Content() const {
    return ToText(Text());
}

void TextEntry::ShowValue(const basic::Variant& value) {
    SetText(ShownText(value));
}

}  // namespace quardele::forms
