// From a report to its pages.
#pragma once

#include <memory>

#include "content.h"
#include "definition.h"

namespace quardele::engine {

/// Throws what Report::Compose throws.
[[nodiscard]] std::unique_ptr<Content> ComposeContent(const ReportDefinition& report);

}  // namespace quardele::engine
