// How large the installation of the tests is.
#pragma once

#include <workshop/installation.h>

namespace quardele::tests {

/// 20 November 2026: all dates of the installation are about it.
inline constexpr basic::Date kToday{46346};

inline constexpr workshop::Scale kScale{
    .vehicles = 1500, .customers = 420, .visits = 4500, .jobs = 4000, .seed = 1, .today = kToday};
inline constexpr workshop::Scale kFormerScale{
    .vehicles = 120, .customers = 54, .visits = 360, .jobs = 200, .seed = 2, .today = kToday};

}  // namespace quardele::tests
