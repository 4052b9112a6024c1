// The report engine.
#pragma once

#include <memory>

#include <engine/report.h>

namespace quardele::engine {

class Application {
 public:
    /// Opens a report file by its Windows path. Throws RuntimeError 53 when there is none, 75 when it cannot
    /// be read, 321 with the line and what is wrong there when it is no report file.
    [[nodiscard]] std::shared_ptr<Report> OpenReport(const QString& windowsPath) const;
};

}  // namespace quardele::engine
