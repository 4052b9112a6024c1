// A COM object that answers as a test tells it and remembers how it was called.
#pragma once

#include <oaidl.h>

#include <deque>
#include <string>
#include <vector>

namespace quardele::tests {

/// Lives on the stack of a test. Knows the members Known (1), and the named argument Named (2).
class ScriptedDispatch final : public IDispatch {
 public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* asked, UINT count, LCID,
                                            DISPID* numbers) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT*) override;

    /// What the next calls return, in their order; S_OK when it is empty.
    std::deque<HRESULT> results;
    /// What a call gives; not freed here.
    VARIANT answer{};
    EXCEPINFO thrown{};

    // The last call.
    int calls = 0;
    WORD kind = 0;
    std::vector<VARTYPE> kinds;
    std::vector<long> numbers;
    std::vector<DISPID> named;
    ULONG references = 1;
};

}  // namespace quardele::tests
