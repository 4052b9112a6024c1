// Files that are there whole or not at all.
#pragma once

#include <filesystem>
#include <functional>
#include <ostream>

#include <QString>

namespace quardele::forms {

/// Writes a file beside the one of that path and puts it in its place when all is written. Throws
/// RuntimeError with a description for the operator, in which the file has the name that is given: 70 when
/// another program has it open or it is read-only, 75 when the folder cannot be written to, 76 when there is
/// no such folder, 57 when writing fails; the file is then as it was.
void SaveFile(const std::filesystem::path& path, const QString& shownName,
              const std::function<void(std::ostream&)>& write);

}  // namespace quardele::forms
