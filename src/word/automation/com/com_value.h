// Values on their way to and from a COM automation server.
#pragma once

#include <oaidl.h>

#include <automation/object.h>

namespace quardele::automation::com {

/// A VARIANT that frees what it holds.
class ComVariant {
 public:
    ComVariant() { VariantInit(&variant_); }
    ComVariant(ComVariant&& other) noexcept : variant_(other.variant_) { VariantInit(&other.variant_); }
    ComVariant(const ComVariant&) = delete;
    ComVariant& operator=(const ComVariant&) = delete;
    ComVariant& operator=(ComVariant&&) = delete;
    ~ComVariant() { VariantClear(&variant_); }

    [[nodiscard]] VARIANT& Raw() { return variant_; }

 private:
    VARIANT variant_;
};

/// Whole numbers become VT_I4, other numbers VT_R8, truths -1 or 0, a left-out argument the error that
/// automation knows it by. An object must be one of COM's. Throws RuntimeError 13 for what COM has no kind
/// for, 7 without memory.
[[nodiscard]] ComVariant ToCom(const Value& value);
/// The other way; objects come back as ones of ours. Throws RuntimeError 13 for arrays and the like.
[[nodiscard]] Value FromCom(const VARIANT& variant);

/// A text of COM; an empty one may be null.
[[nodiscard]] Text FromBstr(BSTR text);

}  // namespace quardele::automation::com
