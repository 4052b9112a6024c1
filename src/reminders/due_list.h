// The statement behind the list of due visits.
#pragma once

#include <QString>

namespace quardele::reminders {

/// Visits whose next date lies strictly before a reference date, by customer, registration and type of work.
/// `referenceDate` is the text of a date in the workstation's order.
[[nodiscard]] QString DueVisitsQuery(const QString& referenceDate);

}  // namespace quardele::reminders
