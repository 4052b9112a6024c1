// Under which class and name the fake Word is registered: never under Word's own.
#pragma once

#include <guiddef.h>

namespace quardele::tests {

/// {6F2D8A51-7C0E-4B7B-9B2E-2D5D0C1A9E44}
inline constexpr GUID kFakeClass = {
    0x6f2d8a51, 0x7c0e, 0x4b7b, {0x9b, 0x2e, 0x2d, 0x5d, 0x0c, 0x1a, 0x9e, 0x44}};
inline constexpr wchar_t kFakeClassText[] = L"{6F2D8A51-7C0E-4B7B-9B2E-2D5D0C1A9E44}";
inline constexpr wchar_t kFakeName[] = L"Quardele.FakeWord";

}  // namespace quardele::tests
