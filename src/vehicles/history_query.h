// The jobs that were done on a vehicle, as SQL.
#pragma once

#include <QString>

namespace quardele::vehicles {

/// The date that the jobs are sorted by. A job that has not left falls back to another date than the one that
/// the list shows, so such rows can stand out of order.
[[nodiscard]] QString SortedDateOfJob();

/// All jobs of a vehicle, newest first: those of the registration themselves and those with a detail line of
/// it, one row per line. The registration goes into the text as it stands.
[[nodiscard]] QString HistoryOf(const QString& registration);

}  // namespace quardele::vehicles
