// The platform's factory where Word itself does not exist: its objects are those of the bridge plug-in.
#include <vector>

#include <automation/wire.h>

#include "bridge_library.h"
#include "platform_factory.h"

namespace quardele::automation {

namespace {

using abi::FromWire;
using abi::ToWire;

[[noreturn]] void Throw(const abi::WireError& error) {
    throw basic::RuntimeError(error.number, Text(FromWire(error.description)));
}

/// An object on the other side of the border.
class BridgeObject final : public Object {
 public:
    BridgeObject(const abi::Bridge& bridge, void* handle) : bridge_(bridge), handle_(handle) {}
    BridgeObject(const BridgeObject&) = delete;
    BridgeObject& operator=(const BridgeObject&) = delete;
    ~BridgeObject() override { bridge_.release(handle_); }

    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) override {
        return Invoke(abi::kCall, member, arguments, named);
    }
    Value Get(TextView member) override { return Invoke(abi::kGet, member, {}, {}); }
    void Set(TextView member, const Value& value) override {
        Invoke(abi::kSet, member, std::span(&value, 1), {});
    }

 private:
    Value Invoke(abi::WireAction action, TextView member, std::span<const Value> arguments,
                 std::span<const NamedArgument> named) {
        std::vector<abi::WireValue> positional;
        positional.reserve(arguments.size());
        for (const Value& argument : arguments) {
            positional.push_back(Outgoing(argument));
        }
        std::vector<abi::WireNamedValue> byName;
        byName.reserve(named.size());
        for (const auto& [name, argument] : named) {
            byName.push_back({ToWire(TextView(name)), Outgoing(argument)});
        }
        const abi::WireCall call{action,        ToWire(member), positional.data(), positional.size(),
                                 byName.data(), byName.size()};
        abi::WireValue result{};
        abi::WireError error{};
        if (!bridge_.invoke(handle_, &call, &result, &error)) {
            Throw(error);
        }
        return Incoming(result);
    }

    [[nodiscard]] static abi::WireValue Outgoing(const Value& value) {
        if (!value.IsObject()) {
            return ToWire(value);
        }
        const auto* object = dynamic_cast<const BridgeObject*>(value.Pointer().get());
        if (object == nullptr) {
            throw basic::RuntimeError(basic::error::kTypeMismatch);
        }
        return {abi::kObject, 0, 0, {nullptr, 0}, object->handle_};
    }

    [[nodiscard]] Value Incoming(const abi::WireValue& wire) const {
        if (wire.kind != abi::kObject) {
            return FromWire(wire);
        }
        return wire.object == nullptr ? ObjectPtr() : std::make_shared<BridgeObject>(bridge_, wire.object);
    }

    const abi::Bridge& bridge_;
    void* handle_;
};

class BridgeFactory final : public Factory {
 public:
    ObjectPtr CreateObject(TextView name) override {
        const abi::Bridge& bridge = LoadBridge();
        void* handle = nullptr;
        abi::WireError error{};
        if (!bridge.createObject(ToWire(name), &handle, &error)) {
            Throw(error);
        }
        return std::make_shared<BridgeObject>(bridge, handle);
    }
};

}  // namespace

Factory& PlatformFactory() {
    static BridgeFactory factory;
    return factory;
}

}  // namespace quardele::automation
