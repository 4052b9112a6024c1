// A counted reference to a COM object.
#pragma once

#include <utility>

namespace quardele::automation::com {

/// Owns one reference of what it points to; empty when null.
template <class Interface>
class ComPointer {
 public:
    ComPointer() = default;
    /// Takes over the caller's reference.
    explicit ComPointer(Interface* owned) : pointer_(owned) {}
    ComPointer(ComPointer&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(pointer_, other.pointer_);
        return *this;
    }
    ComPointer(const ComPointer&) = delete;
    ComPointer& operator=(const ComPointer&) = delete;
    ~ComPointer() {
        if (pointer_ != nullptr) {
            pointer_->Release();
        }
    }

    /// Adds a reference of its own to a borrowed object.
    static ComPointer Shared(Interface* borrowed) {
        if (borrowed != nullptr) {
            borrowed->AddRef();
        }
        return ComPointer(borrowed);
    }

    [[nodiscard]] Interface* Get() const { return pointer_; }
    [[nodiscard]] Interface* operator->() const { return pointer_; }
    /// For a function that returns a reference through its argument.
    [[nodiscard]] Interface** Out() { return &pointer_; }

 private:
    Interface* pointer_ = nullptr;
};

}  // namespace quardele::automation::com
