#include <basic/variant.h>

#include <basic/runtime_error.h>

namespace quardele::basic {

bool Variant::IsNumber() const {
    return Is<bool>() || Is<std::uint8_t>() || Is<std::int16_t>() || Is<std::int32_t>() || Is<Currency>() ||
           Is<float>() || Is<double>() || Is<Decimal>();
}

void Variant::ThrowTypeMismatch() {
    throw RuntimeError(error::kTypeMismatch);
}

}  // namespace quardele::basic
