#include "com_error.h"

#include <winerror.h>

#include <array>

#include "com_value.h"

namespace quardele::automation::com {

namespace {

using basic::RuntimeError;

struct KnownResult {
    HRESULT result;
    int number;
};

constexpr int kNotPossible = 445;
constexpr int kArgumentRequired = 449;
constexpr int kWrongArgumentCount = 450;

/// Results that the Basic runtime has a number for.
constexpr std::array kKnown = {
    KnownResult{DISP_E_UNKNOWNNAME, basic::error::kNoSuchMember},
    KnownResult{DISP_E_MEMBERNOTFOUND, basic::error::kNoSuchMember},
    KnownResult{DISP_E_TYPEMISMATCH, basic::error::kTypeMismatch},
    KnownResult{DISP_E_OVERFLOW, basic::error::kOverflow},
    KnownResult{DISP_E_BADINDEX, basic::error::kSubscript},
    KnownResult{DISP_E_NONAMEDARGS, kNoSuchNamedArgument},
    KnownResult{DISP_E_PARAMNOTFOUND, kNoSuchNamedArgument},
    KnownResult{DISP_E_PARAMNOTOPTIONAL, kArgumentRequired},
    KnownResult{DISP_E_BADPARAMCOUNT, kWrongArgumentCount},
    KnownResult{E_NOTIMPL, kNotPossible},
    KnownResult{E_OUTOFMEMORY, kOutOfMemory},
    KnownResult{CO_E_CLASSSTRING, basic::error::kCannotCreateObject},
    KnownResult{REGDB_E_CLASSNOTREG, basic::error::kCannotCreateObject},
    KnownResult{RPC_E_DISCONNECTED, basic::error::kServerGone},
    KnownResult{RPC_E_SERVER_DIED, basic::error::kServerGone},
    KnownResult{RPC_E_SERVER_DIED_DNE, basic::error::kServerGone},
    KnownResult{CO_E_OBJNOTCONNECTED, basic::error::kServerGone},
    KnownResult{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), basic::error::kServerGone},
    KnownResult{HRESULT_FROM_WIN32(RPC_S_CALL_FAILED), basic::error::kServerGone},
};

int NumberOf(HRESULT result) {
    for (const KnownResult& known : kKnown) {
        if (known.result == result) {
            return known.number;
        }
    }
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

}  // namespace

void ThrowResult(HRESULT result) {
    throw RuntimeError(NumberOf(result));
}

void ThrowException(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn != nullptr) {
        exception.pfnDeferredFillIn(&exception);
    }
    const Text description = FromBstr(exception.bstrDescription);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrHelpFile);
    const int number = exception.wCode != 0 ? exception.wCode : NumberOf(exception.scode);
    if (description.empty()) {
        throw RuntimeError(number);
    }
    throw RuntimeError(number, description);
}

}  // namespace quardele::automation::com
