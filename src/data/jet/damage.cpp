#include "damage.h"

#include <string>

#include <basic/runtime_error.h>

namespace quardele::jet {

void ThrowDamaged(std::uint32_t page, basic::TextView what) {
    basic::Text description = u"Le fichier de données est endommagé : page ";
    description += basic::FromUtf8(std::to_string(page));
    description += u", ";
    description += what;
    description += u".";
    throw basic::RuntimeError(basic::error::kNotADatabase, std::move(description));
}

}  // namespace quardele::jet
