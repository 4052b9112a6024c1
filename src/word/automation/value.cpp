#include <automation/object.h>

namespace quardele::automation {

namespace {

constexpr int kObjectRequired = 424;

}  // namespace

Variant Value::Plain() const {
    if (IsObject()) {
        throw basic::RuntimeError(basic::error::kNoSuchMember);
    }
    const Variant* value = PlainInPlace();
    return value == nullptr ? Variant() : *value;
}

ObjectPtr Value::Pointer() const {
    const auto* object = std::get_if<ObjectPtr>(&storage_);
    if (object == nullptr) {
        throw basic::RuntimeError(kObjectRequired, u"Objet requis");
    }
    if (*object == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *object;
}

Object& Value::AsObject() const {
    return *Pointer();
}

}  // namespace quardele::automation
