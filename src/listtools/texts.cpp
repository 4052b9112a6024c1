#include "texts.h"

#include <basic/text.h>
#include <forms/strings.h>

namespace quardele::listtools {

QString Trimmed(const QString& text) {
    return forms::ToQString(basic::Trim(forms::ToText(text)));
}

QString UpperCase(const QString& text) {
    return forms::ToQString(basic::UCase(forms::ToText(text)));
}

}  // namespace quardele::listtools
