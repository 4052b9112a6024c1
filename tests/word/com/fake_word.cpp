// A local server of COM that Windows starts for a caller, as it starts Word: one process for one application,
// which is Word's double. It ends with its last object.
#include <objbase.h>

#include <utility>

#include "fake_class.h"
#include "recording_word.h"
#include "served_object.h"
#include "template_bookmarks.h"

namespace {

using quardele::tests::RecordingWord;
using quardele::tests::ServedObject;

constexpr UINT kLookMilliseconds = 100;
/// A server that nobody has called for a minute ends by itself: its caller may have died.
constexpr int kMostIdleLooks = 600;

class Class final : public IClassFactory {
 public:
    explicit Class(RecordingWord& word) : word_(word) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IClassFactory;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // It lives as long as the process.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        *object = nullptr;
        if (outer != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        auto* const served = new ServedObject(word_, word_.CreateObject(u"Word.Application"));
        const HRESULT result = served->QueryInterface(id, object);
        served->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
    RecordingWord& word_;
};

/// Answers calls until an application was made and all objects are released, or nobody calls any more.
void Serve() {
    const UINT_PTR timer = SetTimer(nullptr, 0, kLookMilliseconds, nullptr);
    bool used = false;
    int idleLooks = 0;
    long calls = 0;
    MSG message;
    while (GetMessage(&message, nullptr, 0, 0) > 0) {
        DispatchMessage(&message);
        used = used || ServedObject::Alive() > 0;
        idleLooks += message.message == WM_TIMER ? 1 : 0;
        if (std::exchange(calls, ServedObject::Calls()) != ServedObject::Calls()) {
            idleLooks = 0;
        }
        if ((used && ServedObject::Alive() == 0) || idleLooks == kMostIdleLooks) {
            break;
        }
    }
    KillTimer(nullptr, timer);
}

}  // namespace

int main() {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {
        return 1;
    }
    RecordingWord word;
    FillLikeTheTemplate(word);
    Class factory(word);
    DWORD registration = 0;
    if (FAILED(CoRegisterClassObject(quardele::tests::kFakeClass, &factory, CLSCTX_LOCAL_SERVER,
                                     REGCLS_SINGLEUSE, &registration))) {
        return 1;
    }
    Serve();
    CoRevokeClassObject(registration);
    CoUninitialize();
    return 0;
}
