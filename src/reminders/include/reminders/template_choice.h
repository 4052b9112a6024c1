// From a folder and a prefix to one Word template.
#pragma once

#include <QString>

#include <basic/variant.h>

namespace quardele::reminders {

/// The Windows path, without extension, of the template whose name starts with `prefix`. Asks the operator
/// when there are several variants; empty when he gave up. With none it says so and answers folder + prefix
/// all the same. The third argument is accepted for callers that have one, and means nothing.
[[nodiscard]] QString Cherche_Modele_Word(const QString& folder, const QString& prefix,
                                          const basic::Variant& unused = {});

}  // namespace quardele::reminders
