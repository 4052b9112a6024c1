// Word's double as a COM server shows it.
#pragma once

#include <oaidl.h>

#include <atomic>
#include <map>
#include <string>
#include <vector>

#include <automation/object.h>

namespace quardele::tests {

class RecordingWord;

/// Hands every call on to an object of the double. Its one member of its own is RecordedLog, on any object:
/// the double's log so far, one line each. Counted references; starts with one.
class ServedObject final : public IDispatch {
 public:
    ServedObject(RecordingWord& word, automation::ObjectPtr object);
    ServedObject(const ServedObject&) = delete;
    ServedObject& operator=(const ServedObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* numbers) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrong) override;

    /// Objects that somebody holds.
    [[nodiscard]] static long Alive() { return alive_; }
    /// How many calls any of them has had.
    [[nodiscard]] static long Calls() { return calls_; }

 private:
    ~ServedObject() { --alive_; }

    DISPID NumberOf(const basic::Text& name);
    [[nodiscard]] const basic::Text& NameOf(DISPID number) const;
    automation::Value Perform(const basic::Text& member, WORD flags, const DISPPARAMS& parameters);
    [[nodiscard]] basic::Text Log() const;
    void Give(const automation::Value& value, VARIANT& result);

    static std::atomic<long> alive_;
    static std::atomic<long> calls_;

    RecordingWord& word_;
    automation::ObjectPtr object_;
    std::atomic<ULONG> references_ = 1;
    std::vector<basic::Text> names_;
};

}  // namespace quardele::tests
