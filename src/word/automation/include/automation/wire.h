// Values on their way across the border of bridge_abi.h; both sides use it.
#pragma once

#include <automation/bridge_abi.h>
#include <automation/object.h>

namespace quardele::automation::abi {

[[nodiscard]] inline WireText ToWire(TextView text) {
    return {text.data(), text.size()};
}
[[nodiscard]] inline TextView FromWire(WireText text) {
    return {text.data, text.length};
}

/// A plain or missing value; its text stays the value's own. Throws RuntimeError 13 for binary data and for
/// an object, which each side wraps in its own way.
[[nodiscard]] WireValue ToWire(const Value& value);
/// Anything but an object (13 for one).
[[nodiscard]] Value FromWire(const WireValue& wire);

}  // namespace quardele::automation::abi
