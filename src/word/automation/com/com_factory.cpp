// The platform's factory on Windows: objects of the programs that are registered there, Word first of all.
#include <objbase.h>

#include <string>

#include "../platform_factory.h"
#include "com_error.h"
#include "com_object.h"

namespace quardele::automation {

namespace {

class ComFactory final : public Factory {
 public:
    ObjectPtr CreateObject(TextView name) override {
        InitialiseThread();
        CLSID classId{};
        const std::wstring registered(name.begin(), name.end());
        if (FAILED(CLSIDFromProgID(registered.c_str(), &classId))) {
            throw basic::RuntimeError(basic::error::kCannotCreateObject);
        }
        com::ComPointer<IDispatch> dispatch;
        const HRESULT result = CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_IDispatch,
                                                reinterpret_cast<void**>(dispatch.Out()));
        if (FAILED(result)) {
            throw basic::RuntimeError(basic::error::kCannotCreateObject);
        }
        return std::make_shared<com::ComObject>(std::move(dispatch));
    }

 private:
    /// Once for each thread that asks; one that works in another way already keeps that.
    static void InitialiseThread() {
        static thread_local const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        if (FAILED(result) && result != RPC_E_CHANGED_MODE) {
            com::ThrowResult(result);
        }
    }
};

}  // namespace

Factory& PlatformFactory() {
    static ComFactory factory;
    return factory;
}

}  // namespace quardele::automation
