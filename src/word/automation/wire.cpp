#include <automation/wire.h>
#include <basic/conversion.h>

namespace quardele::automation::abi {

namespace {

[[noreturn]] void ThrowTypeMismatch() {
    throw basic::RuntimeError(basic::error::kTypeMismatch);
}

WireValue OfKind(WireKind kind) {
    return {kind, 0, 0, {nullptr, 0}, nullptr};
}

WireValue Number(WireKind kind, double number) {
    WireValue wire = OfKind(kind);
    wire.number = number;
    return wire;
}

WireValue Integer(WireKind kind, std::int32_t integer) {
    WireValue wire = OfKind(kind);
    wire.integer = integer;
    return wire;
}

}  // namespace

WireValue ToWire(const Value& value) {
    if (value.IsMissing()) {
        return OfKind(kMissing);
    }
    const Variant* plain = value.PlainInPlace();
    if (plain == nullptr) {
        ThrowTypeMismatch();
    }
    return std::visit(
        [](const auto& stored) -> WireValue {
            using T = std::decay_t<decltype(stored)>;
            if constexpr (std::is_same_v<T, basic::Empty>) {
                return OfKind(kEmpty);
            } else if constexpr (std::is_same_v<T, basic::Null>) {
                return OfKind(kNull);
            } else if constexpr (std::is_same_v<T, bool>) {
                return Integer(kBoolean, stored ? -1 : 0);
            } else if constexpr (std::is_integral_v<T>) {
                return Integer(kInteger, stored);
            } else if constexpr (std::is_same_v<T, basic::Date>) {
                return Number(kDate, stored.days);
            } else if constexpr (std::is_same_v<T, Text>) {
                WireValue wire = OfKind(kText);
                wire.text = ToWire(TextView(stored));
                return wire;
            } else if constexpr (std::is_same_v<T, basic::Guid> || std::is_same_v<T, basic::Binary>) {
                ThrowTypeMismatch();
            } else {
                return Number(kDouble, *basic::NumberOf(Variant(stored)));
            }
        },
        plain->Stored());
}

Value FromWire(const WireValue& wire) {
    switch (wire.kind) {
        case kEmpty:
            return {};
        case kNull:
            return Variant(basic::Null{});
        case kMissing:
            return Missing{};
        case kBoolean:
            return wire.integer != 0;
        case kInteger:
            return wire.integer;
        case kDouble:
            return wire.number;
        case kDate:
            return Variant(basic::Date{wire.number});
        case kText:
            return Text(FromWire(wire.text));
        default:
            ThrowTypeMismatch();
    }
}

}  // namespace quardele::automation::abi
