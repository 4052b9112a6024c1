// Columns of the grid of visits.
#pragma once

namespace quardele::vehicles {

inline constexpr int kVisitTypeColumn = 1;
inline constexpr int kVisitPeriodColumn = 2;
inline constexpr int kVisitDateColumn = 3;
/// The registration of the vehicle; never seen.
inline constexpr int kVisitLinkColumn = 4;
inline constexpr int kNextVisitColumn = 5;

}  // namespace quardele::vehicles
