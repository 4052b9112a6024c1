#include "served_object.h"

#include <algorithm>
#include <span>

#include <basic/conversion.h>

#include "recording_word.h"

namespace quardele::tests {

using automation::NamedArgument;
using automation::Value;
using basic::Text;

namespace {

constexpr basic::TextView kLogMember = u"RecordedLog";

Text TextOf(const OLECHAR* text, std::size_t length) {
    return Text(text, text + length);
}

BSTR BstrOf(const Text& text) {
    const std::wstring wide(text.begin(), text.end());
    return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

Value ValueOf(const VARIANT& variant) {
    switch (variant.vt) {
        case VT_BOOL:
            return variant.boolVal != VARIANT_FALSE;
        case VT_I4:
            return static_cast<int>(variant.lVal);
        case VT_R8:
            return variant.dblVal;
        case VT_BSTR:
            return TextOf(variant.bstrVal, SysStringLen(variant.bstrVal));
        case VT_ERROR:
            return automation::Missing{};
        default:
            return {};
    }
}

}  // namespace

std::atomic<long> ServedObject::alive_ = 0;
std::atomic<long> ServedObject::calls_ = 0;

ServedObject::ServedObject(RecordingWord& word, automation::ObjectPtr object)
    : word_(word), object_(std::move(object)) {
    ++alive_;
}

HRESULT ServedObject::QueryInterface(REFIID id, void** object) {
    if (id != IID_IUnknown && id != IID_IDispatch) {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG ServedObject::AddRef() {
    return ++references_;
}

ULONG ServedObject::Release() {
    const ULONG left = --references_;
    if (left == 0) {
        delete this;
    }
    return left;
}

HRESULT ServedObject::GetTypeInfoCount(UINT* count) {
    *count = 0;
    return S_OK;
}

HRESULT ServedObject::GetTypeInfo(UINT, LCID, ITypeInfo**) {
    return E_NOTIMPL;
}

DISPID ServedObject::NumberOf(const Text& name) {
    const auto known = std::ranges::find(names_, name);
    if (known != names_.end()) {
        return static_cast<DISPID>(known - names_.begin()) + 1;
    }
    names_.push_back(name);
    return static_cast<DISPID>(names_.size());
}

const Text& ServedObject::NameOf(DISPID number) const {
    return names_.at(static_cast<std::size_t>(number) - 1);
}

HRESULT ServedObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* numbers) {
    for (UINT i = 0; i < count; ++i) {
        numbers[i] = NumberOf(TextOf(names[i], std::wstring_view(names[i]).size()));
    }
    return S_OK;
}

Value ServedObject::Perform(const Text& member, WORD flags, const DISPPARAMS& parameters) {
    const std::span all(parameters.rgvarg, parameters.cArgs);
    if ((flags & DISPATCH_PROPERTYPUT) != 0) {
        object_->Set(member, ValueOf(all[0]));
        return {};
    }
    if (member == kLogMember) {
        return Log();
    }
    if (all.empty() && !RecordingWord::IsMethod(basic::ToUtf8(member))) {
        return object_->Get(member);
    }
    std::vector<NamedArgument> named;
    for (UINT i = 0; i < parameters.cNamedArgs; ++i) {
        named.emplace_back(NameOf(parameters.rgdispidNamedArgs[i]), ValueOf(all[i]));
    }
    std::vector<Value> positional;
    for (std::size_t i = all.size(); i > named.size(); --i) {
        positional.push_back(ValueOf(all[i - 1]));
    }
    return object_->Call(member, positional, named);
}

HRESULT ServedObject::Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT*) {
    ++calls_;
    try {
        const Value value = Perform(NameOf(member), flags, *parameters);
        if (result != nullptr) {
            Give(value, *result);
        }
        return S_OK;
    } catch (const basic::RuntimeError& error) {
        if (exception != nullptr) {
            *exception = {};
            exception->scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.Number());
            exception->bstrDescription = BstrOf(error.Description());
        }
        return DISP_E_EXCEPTION;
    }
}

Text ServedObject::Log() const {
    Text log;
    for (const std::string& line : word_.TakeLog()) {
        log += basic::FromUtf8(line) + u"\n";
    }
    return log;
}

void ServedObject::Give(const Value& value, VARIANT& result) {
    VariantInit(&result);
    if (value.IsObject()) {
        result.vt = VT_DISPATCH;
        result.pdispVal = new ServedObject(word_, value.Pointer());
        return;
    }
    const basic::Variant plain = value.Plain();
    if (plain.Is<bool>()) {
        result.vt = VT_BOOL;
        result.boolVal = plain.As<bool>() ? VARIANT_TRUE : VARIANT_FALSE;
    } else if (plain.IsText()) {
        result.vt = VT_BSTR;
        result.bstrVal = BstrOf(plain.As<Text>());
    } else if (!plain.IsEmpty()) {
        result.vt = VT_I4;
        result.lVal = basic::CLng(plain);
    }
}

}  // namespace quardele::tests
