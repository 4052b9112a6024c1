// Sections and their objects, as a report file describes them.
#pragma once

#include <memory>
#include <vector>

#include <QDir>

#include <engine/section.h>

#include "report_xml.h"

namespace quardele::engine {

/// Reads the sections inside the current element, to its end. Pictures lie in `folder` or below.
[[nodiscard]] std::vector<std::shared_ptr<Section>> ReadSections(ReportXml& xml, SectionKind kind,
                                                                 const QDir& folder);

}  // namespace quardele::engine
