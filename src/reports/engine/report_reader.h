// Report files. The format is described in docs/report-format.md.
#pragma once

#include <memory>

#include <QDir>
#include <QIODevice>

#include "definition.h"

namespace quardele::engine {

/// Reads a report file to its end. Pictures lie in `folder` or below. Throws RuntimeError 321; `shownName` is
/// the file's name in its description.
[[nodiscard]] std::unique_ptr<ReportDefinition> ReadReport(QIODevice& file, const QString& shownName,
                                                           const QDir& folder);

}  // namespace quardele::engine
