#include "com_value.h"

#include <cstring>
#include <limits>

#include <basic/conversion.h>

#include "com_error.h"
#include "com_object.h"

namespace quardele::automation::com {

namespace {

[[noreturn]] void ThrowTypeMismatch() {
    throw basic::RuntimeError(basic::error::kTypeMismatch);
}

BSTR ToBstr(const Text& text) {
    BSTR copy = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    if (copy == nullptr) {
        throw basic::RuntimeError(kOutOfMemory);
    }
    static_assert(sizeof(OLECHAR) == sizeof(char16_t));
    text.copy(reinterpret_cast<char16_t*>(copy), text.size());
    return copy;
}

void SetNumber(VARIANT& variant, double number) {
    variant.vt = VT_R8;
    variant.dblVal = number;
}

void SetPlain(VARIANT& variant, const Variant& value) {
    std::visit(
        [&variant](const auto& stored) {
            using T = std::decay_t<decltype(stored)>;
            if constexpr (std::is_same_v<T, basic::Empty>) {
                variant.vt = VT_EMPTY;
            } else if constexpr (std::is_same_v<T, basic::Null>) {
                variant.vt = VT_NULL;
            } else if constexpr (std::is_same_v<T, bool>) {
                variant.vt = VT_BOOL;
                variant.boolVal = stored ? VARIANT_TRUE : VARIANT_FALSE;
            } else if constexpr (std::is_integral_v<T>) {
                variant.vt = VT_I4;
                variant.lVal = stored;
            } else if constexpr (std::is_same_v<T, basic::Date>) {
                variant.vt = VT_DATE;
                variant.date = stored.days;
            } else if constexpr (std::is_same_v<T, Text>) {
                variant.bstrVal = ToBstr(stored);
                variant.vt = VT_BSTR;
            } else if constexpr (std::is_same_v<T, basic::Guid> || std::is_same_v<T, basic::Binary>) {
                ThrowTypeMismatch();
            } else {
                SetNumber(variant, *basic::NumberOf(Variant(stored)));
            }
        },
        value.Stored());
}

void SetObject(VARIANT& variant, const ObjectPtr& object) {
    const auto* ours = dynamic_cast<const ComObject*>(object.get());
    if (ours == nullptr) {
        ThrowTypeMismatch();
    }
    variant.vt = VT_DISPATCH;
    variant.pdispVal = ours->Dispatch();
    variant.pdispVal->AddRef();
}

/// A copy that is no reference, of the wanted kind if one is named.
ComVariant Plain(const VARIANT& variant, VARTYPE kind = VT_EMPTY) {
    ComVariant copy;
    // The headers want to be able to change what is only read.
    VARIANT source = variant;
    const HRESULT result = kind == VT_EMPTY ? VariantCopyInd(&copy.Raw(), &source)
                                            : VariantChangeType(&copy.Raw(), &source, 0, kind);
    if (FAILED(result)) {
        ThrowTypeMismatch();
    }
    return copy;
}

Value Whole(double number) {
    const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
    return fits ? Value(static_cast<std::int32_t>(number)) : Value(number);
}

Value ObjectFrom(IDispatch* dispatch) {
    if (dispatch == nullptr) {
        return ObjectPtr();
    }
    return ObjectPtr(std::make_shared<ComObject>(ComPointer<IDispatch>::Shared(dispatch)));
}

Value ObjectFromUnknown(IUnknown* unknown) {
    if (unknown == nullptr) {
        return ObjectPtr();
    }
    ComPointer<IDispatch> dispatch;
    if (FAILED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(dispatch.Out())))) {
        ThrowTypeMismatch();
    }
    return ObjectPtr(std::make_shared<ComObject>(std::move(dispatch)));
}

}  // namespace

ComVariant ToCom(const Value& value) {
    ComVariant variant;
    if (value.IsMissing()) {
        variant.Raw().vt = VT_ERROR;
        variant.Raw().scode = DISP_E_PARAMNOTFOUND;
    } else if (value.IsObject()) {
        SetObject(variant.Raw(), value.Pointer());
    } else {
        SetPlain(variant.Raw(), *value.PlainInPlace());
    }
    return variant;
}

Value FromCom(const VARIANT& variant) {
    switch (variant.vt) {
        case VT_EMPTY:
            return {};
        case VT_NULL:
            return Variant(basic::Null{});
        case VT_BOOL:
            return variant.boolVal != VARIANT_FALSE;
        case VT_I1:
        case VT_I2:
        case VT_I4:
        case VT_INT:
        case VT_UI1:
        case VT_UI2:
            return static_cast<int>(Plain(variant, VT_I4).Raw().lVal);
        case VT_UI4:
        case VT_UINT:
        case VT_I8:
        case VT_UI8:
            return Whole(Plain(variant, VT_R8).Raw().dblVal);
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return Plain(variant, VT_R8).Raw().dblVal;
        case VT_DATE:
            return Variant(basic::Date{variant.date});
        case VT_BSTR:
            return FromBstr(variant.bstrVal);
        case VT_DISPATCH:
            return ObjectFrom(variant.pdispVal);
        case VT_UNKNOWN:
            return ObjectFromUnknown(variant.punkVal);
        case VT_ERROR:
            return Missing{};
        default:
            break;
    }
    if ((variant.vt & VT_BYREF) != 0 && (variant.vt & VT_ARRAY) == 0) {
        return FromCom(Plain(variant).Raw());
    }
    ThrowTypeMismatch();
}

Text FromBstr(BSTR text) {
    Text copy(text == nullptr ? 0 : SysStringLen(text), u'\0');
    if (!copy.empty()) {
        std::memcpy(copy.data(), text, copy.size() * sizeof(char16_t));
    }
    return copy;
}

}  // namespace quardele::automation::com
