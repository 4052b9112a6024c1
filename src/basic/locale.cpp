#include <basic/locale.h>

namespace quardele::basic {

Locale& SessionLocale() {
    static Locale session;
    return session;
}

}  // namespace quardele::basic
