// Failures of COM as run-time errors.
#pragma once

#include <oaidl.h>

#include <basic/runtime_error.h>

namespace quardele::automation::com {

/// Numbers of the Basic runtime that only automation needs.
inline constexpr int kOutOfMemory = 7;
inline constexpr int kNoSuchNamedArgument = 448;

/// Throws the run-time error of a failed result. Results of the facility of automation servers carry their
/// error's number; well-known ones have one of the Basic runtime's; of the rest the whole result is the
/// number, as Basic has it.
[[noreturn]] void ThrowResult(HRESULT result);

/// Throws the error that a server described; fills in what it left for later, and frees it.
[[noreturn]] void ThrowException(EXCEPINFO& exception);

}  // namespace quardele::automation::com
