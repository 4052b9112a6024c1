// The tabs of the vehicle form.
#pragma once

namespace quardele::vehicles {

inline constexpr int kListTab = 0;
inline constexpr int kRecordTab = 1;

}  // namespace quardele::vehicles
