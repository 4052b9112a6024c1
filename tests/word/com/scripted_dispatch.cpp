#include "scripted_dispatch.h"

#include <string_view>

namespace quardele::tests {

HRESULT ScriptedDispatch::GetIDsOfNames(REFIID, LPOLESTR* asked, UINT count, LCID, DISPID* found) {
    HRESULT result = S_OK;
    for (UINT i = 0; i < count; ++i) {
        const std::wstring_view name = asked[i];
        found[i] = name == L"Known" ? 1 : name == L"Named" ? 2 : DISPID_UNKNOWN;
        if (found[i] == DISPID_UNKNOWN) {
            result = DISP_E_UNKNOWNNAME;
        }
    }
    return result;
}

HRESULT ScriptedDispatch::Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                 EXCEPINFO* exception, UINT*) {
    ++calls;
    kind = flags;
    kinds.clear();
    numbers.clear();
    for (UINT i = 0; i < parameters->cArgs; ++i) {
        kinds.push_back(parameters->rgvarg[i].vt);
        numbers.push_back(parameters->rgvarg[i].vt == VT_I4 ? parameters->rgvarg[i].lVal : 0);
    }
    named.assign(parameters->rgdispidNamedArgs, parameters->rgdispidNamedArgs + parameters->cNamedArgs);
    if (!results.empty()) {
        const HRESULT told = results.front();
        results.pop_front();
        if (told == DISP_E_EXCEPTION) {
            *exception = thrown;
        }
        return told;
    }
    if (result != nullptr) {
        VariantCopy(result, &answer);
    }
    return S_OK;
}

}  // namespace quardele::tests
